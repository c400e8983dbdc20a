// Passwords: the three numeric access codes that the master keeps for the machine's own keypad.
// The codes live on the board: the program stores none and compares none.
#pragma once

#include "pages/common/table_page.h"
#include "platform/switches.h"

namespace kestrel {

class FrmPassword : public TablePage {
  public:
    static constexpr int Codes = 3;

    FrmPassword();

    ControlArray<Label, Codes> Label1;         ///< captions
    ControlArray<TextBox, Codes> Text1;        ///< service, sales data, clearing of data
    ControlArray<RevealSwitch, Codes> reveal;  ///< customers can see the screen too: a code is shown on demand

    Layout Arrange() override;

  private:
    void PageCaptions() override;
    void Text1_KeyPress(int Index, int KeyAscii);
    void Text1_LostFocus(int Index);
};

}  // namespace kestrel
