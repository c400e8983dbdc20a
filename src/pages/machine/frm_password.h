// Passwords: the three numeric access codes that the master keeps for the machine's own keypad.
// The codes live on the board: the program stores none and compares none.
#pragma once

#include "link/page.h"

namespace kestrel {

class FrmPassword : public Page {
  public:
    static constexpr int Codes = 3;

    FrmPassword();

    ControlArray<Label, Codes> Label1;   ///< captions
    ControlArray<TextBox, Codes> Text1;  ///< service, sales data, clearing of data

    Layout Arrange() override;
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;
    void SLabel_Change(int n, ParamValue value) override;

  private:
    void PageSubscribe();
    void PageRelease();
    void PageCaptions();
    void Text1_KeyPress(int Index, int KeyAscii);
    void Text1_LostFocus(int Index);
};

}  // namespace kestrel
