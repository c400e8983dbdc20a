// Shows a command button.
// Its caption is plain text: a mnemonic mark in it is shown as it stands.
#pragma once

#include <QPushButton>

#include "platform/basic_controls.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class ButtonView : public View<CommandButton, QPushButton> {
  public:
    explicit ButtonView(CommandButton& button);

    QAccessible::Role spokenRole() const override { return QAccessible::Button; }
    bool canPress() const override { return true; }
    void press() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void showState() override;
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace kestrel::qt
