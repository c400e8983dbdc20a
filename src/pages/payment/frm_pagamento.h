// Payment system: all that belongs to the way in which the machine takes money.
// Which frames are open follows from the system that the master reports: token, G13, Executive or MDB.
#pragma once

#include <initializer_list>

#include "pages/common/table_page.h"
#include "pages/payment/amount_rows.h"
#include "platform/folding_frame.h"
#include "platform/switches.h"

namespace kestrel {

class FrmPagamento : public TablePage {
  public:
    static constexpr int Coins = 8;
    static constexpr int Tokens = 3;

    FrmPagamento();

    FoldingFrame Frame1;                       ///< G13: values of the coins; the token system uses the seventh alone
    ControlArray<Label, Coins> Label1;         ///< captions
    ControlArray<ScrollBar, Coins> HScroll10;  ///< raw amounts, less 32768
    ControlArray<Label, Coins> Label10;        ///< amounts as the board holds them

    FoldingFrame Frame4;           ///< Executive
    SliderSwitch SliderX5;         ///< normal, differentiated ECS, price holding
    Label Label8;                  ///< caption of scrTP
    ScrollBar scrTP;               ///< price time-out, tenths
    Label Label8v;                 ///< its value
    Label Label13;                 ///< caption of SwitchX5(0)
    FoldingFrame Frame2;           ///< MDB
    Frame Frame3;                  ///< coins
    Frame Frame6;                  ///< banknotes
    Frame Frame5;                  ///< tokens
    Label Label2;                  ///< caption of iSwitchSliderX2
    SliderSwitch iSwitchSliderX2;  ///< coin changer: off, on
    Label Label12;                 ///< caption of SliderX1
    SliderSwitch SliderX1;         ///< chooses the coin whose bit SliderX4 shows
    Label Label5;                  ///< caption of SliderX4
    SliderSwitch SliderX4;         ///< chosen coin accepted: off, on
    Label Label9;                  ///< caption of SliderX7
    SliderSwitch SliderX7;         ///< chooses the banknote whose bit SliderX6 shows
    Label Label7;                  ///< caption of SliderX6
    SliderSwitch SliderX6;         ///< chosen banknote accepted: off, on

    // Largest change in row 0, largest credit of a key in row 2 and in coins in row 3; there is no row 1.
    ControlArray<Label, 4> Label4;         ///< captions
    ControlArray<ScrollBar, 4> HScroll11;  ///< row 0 raw, the others raw less 32768
    ControlArray<Label, 4> Label11;        ///< amounts as the board holds them

    ControlArray<Label, Tokens> Label6;              ///< captions
    ControlArray<ScrollBar, Tokens> HScroll6;        ///< values of tokens: raw amounts, less 32768
    ControlArray<Label, Tokens> Label6s;             ///< amounts as the board holds them
    ControlArray<Label, 4> Label3;                   ///< captions of iSwSliderX3, and of SwitchX5(1)
    ControlArray<SliderSwitch, Tokens> iSwSliderX3;  ///< change for tokens, reload, exact change: off, on
    ControlArray<SliderSwitch, 2> SwitchX5;          ///< change at once; ignore exact change: no, yes

    Layout Arrange() override;

  private:
    void designControls();
    void setHandlers();
    void PageCaptions() override;

    void DisableCoinFrame() { setCoinFrame(false); }
    void EnableCoinFrame() { setCoinFrame(true); }
    void DisableCoinSeven() { setCoinSeven(false); }
    void EnableCoinSeven() { setCoinSeven(true); }
    void DisableMdbFrame();
    void EnableMdbFrame();
    void DisableExecutiveFrame();
    void EnableExecutiveFrame();
    void setCoinFrame(bool open);
    void setCoinSeven(bool open);
    void setCoinRow(int row, bool open);
    void setMdbFrame(bool open);
    void setCreditRows(bool open);
    void setTimeoutRow(bool open);

    void valueCame(int n, ParamValue value) override;
    void showDecimals(int decimals);
    void showPaymentOptions(unsigned options);
    void openFramesOfSystem();
    void showSystem(const FoldingFrame& inUse);
    void showSaleOptions(unsigned options);
    void showCoinBit();
    void showBanknoteBit();

    void HScroll11_Change(int Index);
    void scrTP_Change();
    void iSwitchSliderX2_Change();
    void iSwSliderX3_Change(int Index);
    void SliderX4_Change();
    void SliderX5_Change();
    void SliderX6_Change();
    void SwitchX5_Change(int Index);

    Frame creditLimits_;
    AmountRows coins_;
    AmountRows tokens_;
    AmountRows credits_;
    int decimals_ = DecimalsUnknown;
    // Parameters as they last came, or as the page last wrote them.
    unsigned saleOptions_ = 0;
    unsigned paymentOptions_ = 0;
    unsigned coinMask_ = 0;
    unsigned banknoteMask_ = 0;
    unsigned changeOptions_ = 0;
    unsigned exactChangeOptions_ = 0;
};

}  // namespace kestrel
