// Shows a lamp.
// On a drawing it is as large as the element that it stands on.
#pragma once

#include "platform/displays.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class LampView : public View<Led> {
  public:
    explicit LampView(Led& led);

    QAccessible::Role spokenRole() const override { return QAccessible::Indicator; }
    QString valueInWords() const override;
    QSize sizeHint() const override;

  protected:
    void showState() override;
    void paintEvent(QPaintEvent* event) override;

  private:
    bool lit_ = false;
};

}  // namespace kestrel::qt
