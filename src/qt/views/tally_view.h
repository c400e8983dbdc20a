// Shows a figure that is one of many, with a bar behind it.
#pragma once

#include "platform/tally.h"
#include "qt/views/label_view.h"

namespace kestrel::qt {

class TallyView : public LabelView {
  public:
    explicit TallyView(Tally& tally) : LabelView(tally) {}

  protected:
    void showState() override;
    void paintEvent(QPaintEvent* event) override;

  private:
    double share_ = 0;
};

}  // namespace kestrel::qt
