// Shows numbers and times in figures of seven segments.
#include "qt/views/seven_segment_view.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/numbers.h"
#include "qt/style/drawing.h"
#include "qt/window/words.h"

namespace kestrel::qt {

namespace {

constexpr int MinutesOfDay = 24 * 60;
constexpr double Slant = -0.08;

/// Segments of the figures 0 to 9: bit 0 at the top, then clockwise round, bit 6 in the middle.
constexpr std::array<int, 10> Figures = {0x3f, 0x06, 0x5b, 0x4f, 0x66, 0x6d, 0x7d, 0x07, 0x7f, 0x6f};
constexpr int Middle = 0x40;

/// The colon of a clock, or whatever the system writes before decimals, which is shown as a point.
bool isMark(QChar letter) { return !letter.isDigit() && letter != u'-'; }

double cellHeight(const QWidget& widget) { return widget.fontMetrics().height() * 1.6; }
double cellWidth(double height) { return height * 0.62; }
double markWidth(double height) { return height * 0.26; }

double textWidth(const QString& text, double height) {
    double width = 0;
    for (const QChar letter : text) width += isMark(letter) ? markWidth(height) : cellWidth(height);
    return width;
}

QSize sizeFor(const QWidget& widget, const QString& widest) {
    const double height = cellHeight(widget);
    return {static_cast<int>(std::ceil(textWidth(widest, height))) + 2 * GridStep,
            std::max(rowHeight(widget), static_cast<int>(std::ceil(height)) + GridStep)};
}

void drawFigure(QPainter& painter, double x, double y, double height, int segments) {
    const double width = cellWidth(height) * 0.72;
    const double half = height / 2;
    const double in = height * 0.09;  // so that the ends of two segments do not touch
    const std::array<QLineF, 7> lines = {{{x + in, y, x + width - in, y},
                                          {x + width, y + in, x + width, y + half - in},
                                          {x + width, y + half + in, x + width, y + height - in},
                                          {x + in, y + height, x + width - in, y + height},
                                          {x, y + half + in, x, y + height - in},
                                          {x, y + in, x, y + half - in},
                                          {x + in, y + half, x + width - in, y + half}}};
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (segments & (1 << i)) painter.drawLine(lines[i]);
}

/// Draws the text at the right end of the widget.
void drawText(QWidget& widget, const QString& text, const QColor& color) {
    Brush brush(widget);
    drawShape(brush, QRectF(widget.rect()).adjusted(0, 2, 0, -2), CornerRadius,
              widget.isEnabled() ? colors().field : colors().panel, colors().line);
    const double height = cellHeight(widget);
    const double stroke = std::max(2.0, height * 0.11);
    const double tall = height - stroke;
    const double top = (widget.height() - tall) / 2;
    double x = widget.width() - GridStep - textWidth(text, height) + height * 0.1;
    brush.translate(-Slant * tall / 2, 0);
    brush.shear(Slant, 0);
    brush.translate(-Slant * top, 0);
    for (const QChar letter : text) {
        brush.setPen(QPen(color, stroke, Qt::SolidLine, Qt::RoundCap));
        if (isMark(letter)) {
            const double middle = x + markWidth(height) / 2 - stroke / 2;
            if (letter != u':') brush.drawPoint(QPointF(middle, top + tall));
            if (letter == u':') brush.drawPoint(QPointF(middle, top + tall * 0.3));
            if (letter == u':') brush.drawPoint(QPointF(middle, top + tall * 0.7));
            x += markWidth(height);
        } else {
            const int figure = letter.digitValue();
            drawFigure(brush, x, top, tall, figure >= 0 ? Figures[static_cast<std::size_t>(figure)] : Middle);
            x += cellWidth(height);
        }
    }
}

}  // namespace

SevenSegmentView::SevenSegmentView(SevenSegment& display) : View(display) {
    setPolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SevenSegmentView::showState() {
    const QString text = toQt(FormatDecimals(model().Value, model().decimals));
    const auto room = text.size() - std::count_if(text.begin(), text.end(), isMark);
    const bool overflow = !std::isfinite(model().Value.get()) || room > model().digits;
    if (text == text_ && overflow == overflow_) return;
    text_ = text;
    overflow_ = overflow;
    valueShown();
}

QSize SevenSegmentView::sizeHint() const {
    return sizeFor(*this, QString(model().digits, u'8') + (model().decimals > 0 ? QStringLiteral(".") : QString()));
}

void SevenSegmentView::paintEvent(QPaintEvent* /*event*/) {
    if (unread()) return drawText(*this, QString(model().digits, u'-'), colors().outline);
    if (overflow_) return drawText(*this, QString(model().digits, u'-'), colors().alarm);
    drawText(*this, text_, textColor(*this));
}

QString SevenSegmentView::valueInWords() const { return overflow_ ? outOfRange(text_) : text_; }

ClockView::ClockView(ClockDisplay& clock) : View(clock) { setPolicy(QSizePolicy::Fixed, QSizePolicy::Fixed); }

void ClockView::showState() {
    if (minutes_ == model().Minutes) return;
    minutes_ = model().Minutes;
    valueShown();
}

bool ClockView::known() const { return minutes_ >= 0 && minutes_ < MinutesOfDay; }

QString ClockView::valueInWords() const {
    if (!known()) return word(Word::NoTime);
    return QStringLiteral("%1:%2").arg(minutes_ / 60, 2, 10, QChar(u'0')).arg(minutes_ % 60, 2, 10, QChar(u'0'));
}

QSize ClockView::sizeHint() const { return sizeFor(*this, QStringLiteral("00:00")); }

void ClockView::paintEvent(QPaintEvent* /*event*/) {
    const bool isShown = known() && !unread();
    drawText(*this, isShown ? valueInWords() : QStringLiteral("--:--"), unread() ? colors().outline : textColor(*this));
}

}  // namespace kestrel::qt
