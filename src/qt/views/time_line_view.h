// Shows what runs when: a lane each, with a hollow block for the wait and a filled one for the time, to scale.
#pragma once

#include "platform/time_line.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class Brush;

class TimeLineView : public View<TimeLine> {
  public:
    explicit TimeLineView(TimeLine& line);

    QAccessible::Role spokenRole() const override { return QAccessible::Chart; }
    QString valueInWords() const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void showState() override;
    void paintEvent(QPaintEvent* event) override;

  private:
    /// Where the blocks stand, right of the names.
    QRectF plot() const;
    void paintScale(Brush& brush, const QRectF& place) const;
    void paintLane(Brush& brush, const TimeLine::Lane& lane, const QRectF& place) const;

    std::vector<TimeLine::Lane> lanes_;
    int end_ = 0;
};

}  // namespace kestrel::qt
