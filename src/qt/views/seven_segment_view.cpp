// Shows numbers and times in figures of seven segments.
#include "qt/views/seven_segment_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/numbers.h"
#include "platform/platform.h"
#include "qt/style/drawing.h"
#include "qt/window/words.h"

namespace kestrel::qt {

namespace {

constexpr int MinutesOfDay = 24 * 60;
constexpr int Colon = 5;  ///< of "00:00", of which it takes a place

void design(QLCDNumber& figures, int places) {
    figures.setDigitCount(places);
    figures.setSegmentStyle(QLCDNumber::Flat);
    figures.setSmallDecimalPoint(true);
    figures.setFrameShape(QFrame::NoFrame);
}

QSize sizeFor(const QWidget& widget, int places) {
    return {widget.fontMetrics().height() * places + 2 * GridStep, rowHeight(widget) + GridStep};
}

/// In the colour of where it stands.
void showFigures(QLCDNumber& figures, const QString& text, const QColor& ink) {
    figures.display(text);
    QPalette palette = figures.palette();
    if (palette.color(QPalette::WindowText) == ink) return;
    palette.setColor(QPalette::WindowText, ink);
    figures.setPalette(palette);
}

QString dashes(int count) { return QString(count, u'-'); }

}  // namespace

SevenSegmentView::SevenSegmentView(SevenSegment& display) : View(display) {
    design(*this, display.digits);
    setPolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SevenSegmentView::showState() {
    const QString text = toQt(FormatDecimals(model().Value, model().decimals));
    const auto figures = std::count_if(text.begin(), text.end(), [](QChar c) { return c.isDigit() || c == u'-'; });
    overflow_ = !std::isfinite(model().Value.get()) || figures > model().digits;
    const bool isNews = std::exchange(text_, text) != text;
    const bool isShown = !unread() && !overflow_;
    // The toolkit knows the point alone.
    const QString shown = QString(text).replace(toQt(platform().decimalSeparator()), QStringLiteral("."));
    showFigures(*this, isShown ? shown : dashes(model().digits), overflow_ ? colors().alarm : standingColor(*this));
    if (isNews) valueShown();
}

QSize SevenSegmentView::sizeHint() const { return sizeFor(*this, model().digits); }

QString SevenSegmentView::valueInWords() const { return overflow_ ? outOfRange(text_) : text_; }

ClockView::ClockView(ClockDisplay& clock) : View(clock) {
    design(*this, Colon);
    setPolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ClockView::showState() {
    const int minutes = model().Minutes;
    const bool isTime = minutes >= 0 && minutes < MinutesOfDay;
    const QString text = isTime ? toQt(TimeOfDayText({.hour = minutes / 60, .minute = minutes % 60})) : QString();
    const bool isNews = std::exchange(text_, text) != text;
    showFigures(*this, isTime && !unread() ? text : QStringLiteral("--:--"), standingColor(*this));
    if (isNews) valueShown();
}

QString ClockView::valueInWords() const { return text_.isEmpty() ? word(Word::NoTime) : text_; }

QSize ClockView::sizeHint() const { return sizeFor(*this, Colon); }

}  // namespace kestrel::qt
