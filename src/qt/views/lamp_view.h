// Shows a lamp.
// On a drawing it is as large as the element that it stands on.
#pragma once

#include <functional>

#include "platform/displays.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class LampView : public View<Led> {
  public:
    explicit LampView(Led& led);

    QAccessible::Role spokenRole() const override { return QAccessible::Indicator; }
    QString valueInWords() const override;
    QSize sizeHint() const override;
    bool lit() const { return lit_; }
    /// To be called when it is lit or put out.
    void whenSwitched(const std::function<void()>& switched) { switched_ = switched; }

  protected:
    void showState() override;
    void paintEvent(QPaintEvent* event) override;

  private:
    bool lit_ = false;
    std::function<void()> switched_;
};

}  // namespace kestrel::qt
