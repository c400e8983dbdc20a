// Shows a rotary switch.
#include "qt/views/rotary_view.h"

#include <QMouseEvent>
#include <cmath>
#include <functional>
#include <numbers>

#include "qt/style/drawing.h"

namespace kestrel::qt {

namespace {

constexpr double Sweep = 1.5 * std::numbers::pi;  // from the first position to the last, open at the foot
constexpr int Inset = 3;

QPointF towards(const QPointF& centre, double angle, double distance) {
    return centre + QPointF(std::sin(angle), -std::cos(angle)) * distance;
}

}  // namespace

QSize RotarySwitchView::sizeHint() const {
    return {rowHeight(*this) + GridStep + widestLabel() + 2 * GridStep, rowHeight(*this)};
}

QRectF RotarySwitchView::knob() const {
    const double side = rowHeight(*this) - 2.0 * Inset;
    return {static_cast<double>(Inset) + 1, (height() - side) / 2, side, side};
}

double RotarySwitchView::angleOf(int position) const {
    return top() > 0 ? (static_cast<double>(position) / top() - 0.5) * Sweep : 0;
}

int RotarySwitchView::positionAt(const QPointF& point) const {
    const QPointF away = point - knob().center();
    const double angle = std::atan2(away.x(), -away.y());
    const double part = std::clamp(angle / Sweep + 0.5, 0.0, 1.0);
    return static_cast<int>(std::lround(part * std::max(0, top())));
}

void RotarySwitchView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    const QRectF place = knob();
    const QPointF centre = place.center();
    const double radius = place.width() / 2;
    const QColor strength = isEnabled() ? colors().accent : colors().disabledText;
    brush.setPen(Qt::NoPen);
    for (int i = 0; i <= top() && !unread(); ++i) {
        brush.setBrush(isChosen(i) ? strength : colors().outline);
        const double dot = isChosen(i) ? 2.0 : 1.3;
        brush.drawEllipse(towards(centre, angleOf(i), radius - 1.5), dot, dot);
    }
    const QRectF cap = place.adjusted(5, 5, -5, -5);
    if (unread())
        drawUnread(brush, place.adjusted(3, 3, -3, -3), place.width() / 2 - 3);
    else
        drawShape(brush, cap, cap.width() / 2, isEnabled() ? colors().button : colors().panel, colors().outline);
    if (!outOfRange() && !unread()) {
        brush.setPen(QPen(strength, 2.4, Qt::SolidLine, Qt::RoundCap));
        brush.drawLine(towards(centre, angleOf(position()), radius - 12),
                       towards(centre, angleOf(position()), radius - 7));
    }
    brush.setPen(outOfRange() ? colors().alarm : textColor(*this));
    const QRectF text(place.right() + GridStep, 0, width() - place.right() - GridStep, height());
    brush.drawText(text, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), positionText());
    drawMarks(brush, *this, QRectF(rect()).adjusted(3, 3, -3, -3));
}

void RotarySwitchView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return event->ignore();
    turning_ = event->position().x() < knob().right() + Inset;
    if (!turning_) return openMenu();
    turnTo(event->position());
}

void RotarySwitchView::mouseMoveEvent(QMouseEvent* event) {
    if (turning_ && bound() && model().isMoving()) turnTo(event->position());
}

void RotarySwitchView::turnTo(const QPointF& point) {
    act([this, &point](SteppedSwitch& stepped) { stepped.UserHold(positionAt(point)); });
}

void RotarySwitchView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !turning_) return event->ignore();
    turning_ = false;
    act(std::mem_fn(&SteppedSwitch::UserCommit));
}

}  // namespace kestrel::qt
