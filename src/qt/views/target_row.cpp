// A row that is pressed as a whole.
#include "qt/views/target_row.h"

#include <QLayout>
#include <QMouseEvent>

#include "qt/style/drawing.h"

namespace kestrel::qt {

bool TargetRow::takesClicks() const {
    return pressed_ && pressed_->bound() && !pressed_->unread() && pressed_->widget().isEnabled();
}

QSize TargetRow::minimumSizeHint() const { return layout()->totalMinimumSize().expandedTo({0, rowHeight(*this)}); }

bool TargetRow::event(QEvent* event) {
    // The row shows that it can be pressed while the pointer is on it.
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave) update();
    return QWidget::event(event);
}

void TargetRow::paintEvent(QPaintEvent* /*event*/) {
    if (!takesClicks() || !underMouse()) return;
    Brush brush(*this);
    drawShape(brush, QRectF(rect()).adjusted(0, 1, 0, -1), CornerRadius,
              down_ ? colors().line : QColor(Qt::transparent), colors().outline);
}

void TargetRow::mousePressEvent(QMouseEvent* event) {
    down_ = takesClicks() && event->button() == Qt::LeftButton;
    event->setAccepted(down_);
    if (!down_) return;
    pressed_->widget().setFocus(Qt::MouseFocusReason);
    update();
}

void TargetRow::mouseReleaseEvent(QMouseEvent* event) {
    const bool clicked = down_ && event->button() == Qt::LeftButton && rect().contains(event->pos());
    down_ = false;
    update();
    if (clicked && takesClicks()) pressed_->press();
}

}  // namespace kestrel::qt
