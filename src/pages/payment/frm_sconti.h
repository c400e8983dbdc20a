// Discounts: one for each of the thirty prices, one for each preselection, one for a customer's own cup.
// The thirty bars open only when every discount and the decimals have come from the board.
#pragma once

#include "pages/common/table_page.h"
#include "pages/payment/amount_rows.h"

namespace kestrel {

class FrmSconti : public TablePage {
  public:
    static constexpr int Discounts = 30;
    static constexpr int Amounts = 35;  ///< the discounts, then preselections and own cup

    FrmSconti();

    Frame Frame1;                               ///< the thirty discounts
    Frame Frame2;                               ///< the others
    ControlArray<Label, Amounts> Label11;       ///< captions
    ControlArray<ScrollBar, Amounts> HScroll1;  ///< raw amounts, less 32768
    ControlArray<Label, Amounts> Label1;        ///< amounts as the board holds them

    Layout Arrange() override;

  private:
    void PageSubscribe() override;
    void PageCaptions() override;
    void EnableDiscountBars() { setDiscountBars(true); }
    void DisableDiscountBars() { setDiscountBars(false); }
    void setDiscountBars(bool open);
    void HScroll1_Change(int Index);
    void valueCame(int n, ParamValue value) override;
    void valueShown() override;

    AmountRows amounts_;
    int decimals_ = DecimalsUnknown;
};

}  // namespace kestrel
