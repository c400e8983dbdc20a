// Shows the switches with two states.
#include "qt/views/two_state_view.h"

#include <QKeyEvent>

#include "qt/style/drawing.h"
#include "qt/views/lamp.h"
#include "qt/window/words.h"

namespace kestrel::qt {

TwoStateView::TwoStateView(ToggleSwitch& toggle) : View(toggle) {
    setFocusPolicy(Qt::StrongFocus);
    setPolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QAbstractButton::clicked, this, [this] { press(); });
}

void TwoStateView::showState() {
    if (active_ == model().Active) return;
    active_ = model().Active;
    valueShown();
}

QString TwoStateView::valueInWords() const { return word(active_ ? Word::On : Word::Off); }

QString TwoStateView::inWords(const std::string& text) const { return word(text == "1" ? Word::On : Word::Off); }

std::optional<bool> TwoStateView::checked() const {
    if (unread()) return std::nullopt;
    return active_;
}

void TwoStateView::press() {
    act([](ToggleSwitch& toggle) { toggle.UserClick(); });
}

void TwoStateView::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter || event->isAutoRepeat()) return View::keyPressEvent(event);
    click();
}

QSize ToggleView::sizeHint() const { return {rowHeight(*this) * 3 / 2, rowHeight(*this)}; }

void ToggleView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    const double tall = rowHeight(*this) - 12.0;
    const QRectF track(3, (height() - tall) / 2, width() - 6.0, tall);
    if (unread()) {
        drawUnread(brush, track, tall / 2);
        return drawMarks(brush, *this, track, tall / 2);
    }
    const QColor strength = isEnabled() ? colors().accent : colors().disabledText;
    drawShape(brush, track, tall / 2, active() ? (isEnabled() ? strength : colors().panel) : colors().field,
              active() ? strength : colors().outline, active() && !isEnabled() ? 2 : 1.5);
    QRectF knob(0, 0, tall - 8, tall - 8);
    knob.moveCenter(QPointF(active() ? track.right() - tall / 2 : track.left() + tall / 2, track.center().y()));
    const QColor fill = active() ? (isEnabled() ? colors().onAccent : strength) : colors().outline;
    drawShape(brush, knob, knob.width() / 2, fill, fill, 0);
    if (active()) {
        // A stroke beside the knob: on is told by shape too.
        const double x = track.left() + tall / 2 + 1;
        brush.fillRect(QRectF(x, track.center().y() - 4, 2, 8), fill);
    }
    drawMarks(brush, *this, track, tall / 2);
}

namespace {

void drawEye(QPainter& painter, const QPointF& centre, bool open, const QColor& color) {
    QPainterPath lids(centre + QPointF(-8, 0));
    lids.quadTo(centre + QPointF(0, -9), centre + QPointF(8, 0));
    lids.quadTo(centre + QPointF(0, 9), centre + QPointF(-8, 0));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(lids);
    if (!open) painter.drawLine(centre + QPointF(-7, 7), centre + QPointF(7, -7));
    painter.setBrush(color);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(centre, 2.5, 2.5);
}

void drawLock(QPainter& painter, const QPointF& centre) {
    const QColor color = colors().disabledText;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 1.5));
    painter.drawArc(QRectF(centre.x() - 3, centre.y() - 6, 6, 8), 0, 180 * 16);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(centre.x() - 5, centre.y() - 2, 10, 7.5), 1.5, 1.5);
}

}  // namespace

QSize LedSwitchView::sizeHint() const { return {rowHeight(*this) * 5 / 4, rowHeight(*this)}; }

void LedSwitchView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    const QRectF shape = QRectF(rect()).adjusted(3, 4, -3, -4);
    const QRectF lamp = shape.adjusted(7, 5, -7, -5);
    // What is locked is no key: only its lamp stands there, and a lock in it that one cannot take for an unlit lamp.
    if (isEnabled())
        drawShape(brush, shape, CornerRadius, isDown() ? colors().line : colors().button, colors().outline);
    if (unread())
        drawUnreadLamp(brush, lamp, false);
    else if (isEnabled() || active())
        drawLamp(brush, lamp, false, active(), isEnabled());
    else
        drawLock(brush, lamp.center());
    drawMarks(brush, *this, shape);
}

QSize RevealView::sizeHint() const { return {rowHeight(*this), rowHeight(*this)}; }

void RevealView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    const QRectF shape = QRectF(rect()).adjusted(3, 3, -3, -3);
    drawShape(brush, shape, CornerRadius, isDown() ? colors().line : colors().button, colors().outline);
    drawEye(brush, shape.center(), active(), textColor(*this));
    drawMarks(brush, *this, shape);
}

}  // namespace kestrel::qt
