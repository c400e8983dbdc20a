// MDB audit: six running amounts of the MDB payment system, and a button that clears them.
// Amounts are shown raw, whatever the decimals of money.
#pragma once

#include "link/page.h"

namespace kestrel {

class FrmMDBaudit : public Page {
  public:
    static constexpr int Amounts = 6;

    FrmMDBaudit();

    ControlArray<Label, Amounts> Label1;  ///< captions
    ControlArray<Label, Amounts> Label2;  ///< raw amounts
    CommandButton Command1;               ///< clears them
    Timer Timer1{15000};                  ///< milliseconds; has the amounts read again

    Layout Arrange() override;
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;
    void SLabel_Change(int n, ParamValue value) override;

  private:
    void PageSubscribe();
    void PageRelease();
    void PageCaptions();
    void Timer1_Timer();
    void Command1_Click();
};

}  // namespace kestrel
