// Shows a slider or rotary switch: its labels side by side, or, where they are many or long, one label between two
// arrows. The arrows step; the label opens a menu of all positions.
#pragma once

#include <vector>

#include "qt/views/stepped_view.h"

namespace kestrel::qt {

class SliderSwitchView : public SteppedView {
  public:
    using SteppedView::SteppedView;

    QAccessible::Role spokenRole() const override { return QAccessible::Slider; }
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    /// Widths of the segments, or none when they do not fit side by side.
    std::vector<int> segments() const;
    QRectF body() const;
    double arrowWidth() const;
    void paintSegments(class Brush& brush, const std::vector<int>& widths) const;
    void paintCompact(class Brush& brush) const;
};

}  // namespace kestrel::qt
