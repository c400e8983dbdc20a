// Shows a rotary switch: a knob with a mark for every position, and the label of the one it points at.
// The knob is turned by dragging; the label opens a menu of all positions.
#pragma once

#include "qt/views/stepped_view.h"

namespace kestrel::qt {

class RotarySwitchView : public SteppedView {
  public:
    using SteppedView::SteppedView;

    QAccessible::Role spokenRole() const override { return QAccessible::Dial; }
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    QRectF knob() const;
    /// Direction of a position in radians, clockwise from the top.
    double angleOf(int position) const;
    int positionAt(const QPointF& point) const;
    void turnTo(const QPointF& point);

    bool turning_ = false;
};

}  // namespace kestrel::qt
