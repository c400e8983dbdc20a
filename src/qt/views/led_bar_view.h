// Shows a bar of segments, lit from the left up to its position.
// A short range has a segment for each step; a position beyond the range is marked at the end.
#pragma once

#include "platform/displays.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class LedBarView : public View<LedBar> {
  public:
    explicit LedBarView(LedBar& bar);

    QAccessible::Role spokenRole() const override { return QAccessible::ProgressBar; }
    QString valueInWords() const override;
    QSize sizeHint() const override;

  protected:
    void showState() override;
    void paintEvent(QPaintEvent* event) override;

  private:
    int segments() const;

    int position_ = 0;
    int highest_ = 0;
};

}  // namespace kestrel::qt
