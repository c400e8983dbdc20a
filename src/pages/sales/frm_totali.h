// Totals: the machine's sales totals, those that can be cleared and those that cannot.
// The page only reads; money is shown with the decimals that the master reports.
#pragma once

#include "link/page.h"

namespace kestrel {

class FrmTotali : public Page {
  public:
    FrmTotali();

    Frame Frame2;                   ///< totals that can be cleared
    Frame Frame1;                   ///< totals that cannot
    ControlArray<Label, 9> Label2;  ///< captions in Frame2
    ControlArray<Label, 9> Label3;  ///< values in Frame2
    ControlArray<Label, 2> Label1;  ///< captions in Frame1
    ControlArray<Label, 2> Label4;  ///< values in Frame1
    Timer Timer1{15000};            ///< milliseconds; has the totals read again

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
    Label& valueLabel(std::size_t row);

    int decimals_ = 0;
};

}  // namespace kestrel
