// Shows a label.
#include "qt/views/label_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStringList>
#include <algorithm>

#include "qt/style/drawing.h"
#include "qt/window/words.h"

namespace kestrel::qt {

namespace {

constexpr int PureRed = 0x0000ff;
constexpr int PureGreen = 0x00ff00;

}  // namespace

LabelView::LabelView(Label& label) : View(label) {
    if (label.isClickable()) {
        setFocusPolicy(Qt::StrongFocus);
        setCursor(Qt::PointingHandCursor);
        setAttribute(Qt::WA_Hover);
        setPolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    } else {
        setPolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }
    if (label.role != Label::Role::Heading) return;
    QFont strong;
    strong.setWeight(QFont::DemiBold);
    setFont(strong);
}

void LabelView::showState() {
    const bool renamed = shownCaption_ != model().Caption.get();
    const bool resized = shownWidest_ != model().widest;
    if (isFigure() ? resized : renamed) updateGeometry();
    if (resized) shownWidest_ = model().widest;
    if (renamed) {
        shownCaption_ = model().Caption;
        text_ = toQt(shownCaption_);
        valueShown();
    }
    if (foreColor_ != model().ForeColor) {
        foreColor_ = model().ForeColor;
        update();
    }
    if (chosen_ != model().Chosen) {
        chosen_ = model().Chosen;
        valueShown();
    }
}

/// A value that no board should have may be too long for its place, where it is drawn cut off.
QString LabelView::ownTip() const {
    const bool isCutOff = isFigure() && !unread() && figuresWidth(fontMetrics(), text_) > widestFigures();
    return isCutOff ? text_ : ViewBase::ownTip();
}

int LabelView::widestFigures() const {
    return figuresWidth(fontMetrics(), shownWidest_.empty() ? QStringLiteral("00000") : toQt(shownWidest_));
}

QSize LabelView::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    const int height = canPress() ? rowHeight(*this) : textHeight(*this);
    if (isFigure()) return {widestFigures() + 2, height};
    int width = 0;
    const QStringList lines = text_.split(u'\n');
    for (const QString& line : lines) width = std::max(width, metrics.horizontalAdvance(line));
    if (isKey()) width = std::max(width, height);
    const int margin = canPress() ? 2 * GridStep : 0;
    return {width + margin, height + static_cast<int>(lines.size() - 1) * metrics.lineSpacing()};
}

void LabelView::lookLocked(bool locked) {
    if (locked == looksLocked_) return;
    looksLocked_ = locked;
    update();
}

QColor LabelView::ink() const {
    if (looksLocked_) return colors().disabledText;
    if (isFigure() && standing() != Standing::Confirmed) return standingColor(*this);
    if (chosen_ && isEnabled()) return colors().onAccent;
    if (!isEnabled() || foreColor_ == Label::DefaultColor) return textColor(*this);
    // The pure colours of lamps and warnings are the look's own ones.
    if (foreColor_ == PureRed) return readableText(colors().alarm);
    if (foreColor_ == PureGreen) return readableText(colors().lit);
    const QColor asked(foreColor_ & 0xff, (foreColor_ >> 8) & 0xff, (foreColor_ >> 16) & 0xff);
    return readableText(asked);
}

QRectF LabelView::keyShape() const { return QRectF(rect()).adjusted(3, 3, -3, -3); }

void LabelView::drawKey(Brush& brush) const {
    const QColor face = isEnabled() ? (underMouse() ? colors().line : colors().button) : colors().panel;
    const QColor edge = isEnabled() ? colors().outline : colors().line;
    if (!chosen_) return drawShape(brush, keyShape(), CornerRadius, face, edge);
    const QColor strength = isEnabled() ? colors().accent : colors().disabledText;
    drawShape(brush, keyShape(), CornerRadius, isEnabled() ? strength : face, strength, 2);
}

void LabelView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    if (isKey())
        drawKey(brush);
    else if (canPress() && isEnabled() && underMouse())
        drawShape(brush, rect(), CornerRadius, Qt::transparent, colors().outline);
    brush.setPen(ink());
    if (canPress() && !isKey() && !text_.isEmpty()) {
        QFont underlined = font();
        underlined.setUnderline(true);
        brush.setFont(underlined);
    }
    if (isFigure()) {
        if (old()) brush.setFont(oldFont(font()));
        drawFigures(brush, rect(), unread() ? dash() : fontMetrics().elidedText(text_, Qt::ElideLeft, width()));
    } else {
        brush.drawText(rect(), static_cast<int>(canPress() ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter),
                       text_);
    }
    if (canPress()) drawMarks(brush, *this, keyShape());
}

QString LabelView::spokenName() const { return isFigure() || text_.isEmpty() ? ViewBase::spokenName() : text_; }

QString LabelView::valueInWords() const {
    if (chosen_) return word(Word::On);
    return isFigure() ? text_ : QString();
}

QAccessible::Role LabelView::spokenRole() const { return canPress() ? QAccessible::Button : QAccessible::StaticText; }

void LabelView::press() {
    act([](Label& label) { label.UserClick(); });
}

void LabelView::mousePressEvent(QMouseEvent* event) {
    pressed_ = canPress() && event->button() == Qt::LeftButton;
    event->setAccepted(pressed_);
}

void LabelView::mouseReleaseEvent(QMouseEvent* event) {
    const bool clicked = pressed_ && event->button() == Qt::LeftButton && rect().contains(event->pos());
    event->setAccepted(pressed_);
    pressed_ = false;
    if (clicked) press();
}

void LabelView::keyPressEvent(QKeyEvent* event) {
    const bool presses =
        event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!canPress() || !presses || event->isAutoRepeat()) return View::keyPressEvent(event);
    press();
}

}  // namespace kestrel::qt
