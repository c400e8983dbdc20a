// Prices: the machine's list of thirty prices, eight prices of preselections, and "all at price 1".
// The thirty bars open only when every price has come from the board.
#pragma once

#include "link/page.h"
#include "pages/payment/amount_rows.h"
#include "platform/switches.h"

namespace kestrel {

class FrmPrezzi : public Page {
  public:
    static constexpr int Prices = 30;
    static constexpr int Amounts = 38;  ///< the prices, then the preselections

    FrmPrezzi();

    Frame Frame1;                               ///< the thirty prices
    Frame Frame2;                               ///< the odd preselections
    Frame Frame3;                               ///< the even ones
    ControlArray<Label, Amounts> Label11;       ///< captions
    ControlArray<ScrollBar, Amounts> HScroll1;  ///< raw amounts, less 32768
    ControlArray<Label, Amounts> Label1;        ///< amounts as the board holds them
    Label Label2;                               ///< caption of Switch1
    SliderSwitch Switch1;                       ///< everything at price 1: off, on

    Layout Arrange() override;
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;
    void SLabel_Change(int n, ParamValue value) override;

  private:
    void PageSubscribe();
    void PageRelease();
    void PageCaptions();
    void EnablePriceBars() { setPriceBars(true); }
    void DisablePriceBars() { setPriceBars(false); }
    void setPriceBars(bool open);
    void HScroll1_Change(int Index);
    void Switch1_Change();
    void show(int n, ParamValue value);

    AmountRows amounts_;
    int decimals_ = DecimalsUnknown;
    unsigned saleOptions_ = 0;  ///< as they last came
};

}  // namespace kestrel
