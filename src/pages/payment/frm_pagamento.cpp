// Payment system: what the page shows and what its frames follow.
// See frm_pagamento.h; its captions and layout stand in frm_pagamento_layout.cpp.
#include "pages/payment/frm_pagamento.h"

#include <algorithm>
#include <array>

#include "link/identification.h"
#include "link/money.h"
#include "link/value_helpers.h"
#include "pages/common/bits.h"
#include "pages/common/show_mirror.h"
#include "pages/payment/sale_options.h"

namespace kestrel {

namespace {

constexpr std::array CoinRuns = {AmountRun{0, master::CoinValue}};
constexpr std::array TokenRuns = {AmountRun{0, master::TokenValue}};
constexpr std::array CreditRuns = {AmountRun{2, master::KeyLargestCredit}, AmountRun{3, master::CoinLargestCredit}};

constexpr std::array<ParamRun, 19> Subscriptions = {{
    master::MoneyDecimals,
    CopyOf(master::ChangeOptions),
    CopyOf(master::ExactChangeOptions),
    CopyOf(master::CoinLargestCredit),
    CopyOf(master::KeyLargestCredit),
    CopyOf(master::PriceTimeout),
    CopyOf(master::BanknoteMask),
    master::CoinValue,
    master::ChangeLargest,
    master::BanknoteMask,
    master::CoinMask,
    master::TokenValue,
    master::SaleOptions,
    master::PaymentOptions,
    master::PriceTimeout,
    master::CoinLargestCredit,
    master::KeyLargestCredit,
    master::ChangeOptions,
    master::ExactChangeOptions,
}};

/// Not the same list: some copies are given back that were never watched, and three parameters are given back twice.
constexpr std::array<ParamRun, 27> Releases = {{
    CopyOf(master::ChangeOptions),
    CopyOf(master::ExactChangeOptions),
    CopyOf(master::CoinValue),
    master::MoneyDecimals,
    CopyOf(master::ChangeLargest),
    CopyOf(master::CoinMask),
    CopyOf(master::SaleOptions),
    CopyOf(master::PaymentOptions),
    CopyOf(master::CoinLargestCredit),
    CopyOf(master::KeyLargestCredit),
    CopyOf(master::PriceTimeout),
    CopyOf(master::BanknoteMask),
    master::CoinValue,
    master::ChangeLargest,
    master::CoinMask,
    master::SaleOptions,
    master::PaymentOptions,
    master::CoinMask,
    master::TokenValue,
    master::SaleOptions,
    master::PaymentOptions,
    master::BanknoteMask,
    master::CoinLargestCredit,
    master::KeyLargestCredit,
    master::PriceTimeout,
    master::ChangeOptions,
    master::ExactChangeOptions,
}};

// Bits of the payment options.
constexpr unsigned G13System = 1;
constexpr unsigned ExecutiveSystem = 2;
constexpr unsigned MdbSystem = 4;
constexpr unsigned DifferentiatedEcs = 64;
constexpr unsigned PriceHolding = 128;

constexpr unsigned ChangeAtOnce = 1;
constexpr unsigned IgnoreExactChange = 2;

/// By index of iSwSliderX3.
constexpr std::array<unsigned, FrmPagamento::Tokens> TokenOptions = {ChangeForTokens, ReloadForTokens,
                                                                     ExactChangeAndTokens};

constexpr int SeventhCoin = 6;
/// With boards up to this revision the rows of the largest credits stay open when MDB is left.
constexpr int LastRevisionWithFreeCredits = 23;

void setEnabled(std::initializer_list<Control*> controls, bool on) {
    for (Control* control : controls) control->Enabled = on;
}

bool isOn(const SliderSwitch& control) { return control.Position == 1; }

unsigned bitAt(const SliderSwitch& selector) { return 1U << selector.Position.get(); }

}  // namespace

FrmPagamento::FrmPagamento()
    : TablePage("FrmPagamento", 0, {Subscriptions, Releases}),
      coins_(CoinRuns, HScroll10, Label10),
      tokens_(TokenRuns, HScroll6, Label6s),
      credits_(CreditRuns, HScroll11, Label11) {
    designControls();
    setHandlers();
}

void FrmPagamento::setHandlers() {
    HScroll10.OnChange([this](int Index) {
        if (!Updating) coins_.write(Index);
    });
    HScroll6.OnChange([this](int Index) {
        if (!Updating) tokens_.write(Index);
    });
    HScroll11.OnChange([this](int Index) { HScroll11_Change(Index); });
    scrTP.OnChange([this] { scrTP_Change(); });
    iSwitchSliderX2.OnPositionChange([this] { iSwitchSliderX2_Change(); });
    iSwSliderX3.OnPositionChange([this](int Index) { iSwSliderX3_Change(Index); });
    // Whatever choice is made, the bit that it shows may differ from the one before: the mask is then written as it is.
    SliderX1.OnPositionChange([this] { showCoinBit(); });
    SliderX7.OnPositionChange([this] { showBanknoteBit(); });
    SliderX4.OnPositionChange([this] { SliderX4_Change(); });
    SliderX5.OnPositionChange([this] { SliderX5_Change(); });
    SliderX6.OnPositionChange([this] { SliderX6_Change(); });
    SwitchX5.OnPositionChange([this](int Index) { SwitchX5_Change(Index); });
}

void FrmPagamento::setCoinRow(int row, bool open) { setEnabled({&HScroll10[row], &Label10[row], &Label1[row]}, open); }

void FrmPagamento::setCoinFrame(bool open) {
    Frame1.Enabled = open;
    for (int row = 0; row < Coins; ++row) setCoinRow(row, open);
}

void FrmPagamento::setCoinSeven(bool open) {
    Frame1.Enabled = open;
    setCoinRow(SeventhCoin, open);
}

void FrmPagamento::setMdbFrame(bool open) {
    setEnabled({&Frame2, &Frame3, &Frame6, &Frame5, &Label2, &Label12, &Label5, &Label9, &Label7}, open);
    setEnabled({&Label4[0], &Label11[0], &HScroll11[0]}, open);
    setEnabled({&SliderX1, &SliderX7, &iSwitchSliderX2, &SliderX4, &SliderX6}, open);
    for (int i = 0; i < Tokens; ++i)
        setEnabled({&Label6[i], &Label6s[i], &HScroll6[i], &Label3[i], &iSwSliderX3[i]}, open);
    setEnabled({&Label3[3], &SwitchX5[1]}, open);
}

void FrmPagamento::setCreditRows(bool open) {
    for (const int row : {2, 3}) setEnabled({&Label4[row], &Label11[row], &HScroll11[row]}, open);
}

void FrmPagamento::DisableMdbFrame() {
    setMdbFrame(false);
    if (BoardRevision() > LastRevisionWithFreeCredits) setCreditRows(false);
}

void FrmPagamento::EnableMdbFrame() {
    setMdbFrame(true);
    setCreditRows(true);
}

void FrmPagamento::setTimeoutRow(bool open) { setEnabled({&Label8, &Label8v, &scrTP}, open); }

void FrmPagamento::DisableExecutiveFrame() {
    setEnabled({&Frame4, &SliderX5, &Label13, &SwitchX5[0]}, false);
    setTimeoutRow(false);
}

void FrmPagamento::EnableExecutiveFrame() {
    setEnabled({&Frame4, &SliderX5, &Label13, &SwitchX5[0]}, true);
    if ((paymentOptions_ & (DifferentiatedEcs | PriceHolding)) != 0) setTimeoutRow(true);
}

void FrmPagamento::valueCame(int n, ParamValue value) {
    if (!IsCurrent(Board::Master)) return;
    for (AmountRows* amounts : {&coins_, &tokens_, &credits_}) amounts->arrived(n, value, decimals_);
    const auto bits = static_cast<unsigned>(value);
    switch (n) {
        case master::MoneyDecimals.number:
            if (DecimalsOf(value) != decimals_) showDecimals(DecimalsOf(value));
            break;
        case master::ChangeLargest.number:
            if (ParamIsFresh(master::MoneyDecimals)) {
                HScroll11[0].Value = static_cast<int>(std::min<ParamValue>(value, HScroll11[0].Max));
                Label11[0].Caption = FormatAmount(HScroll11[0].Value, decimals_);
            }
            break;
        case master::SaleOptions.number:
            showSaleOptions(bits);
            break;
        case master::PaymentOptions.number:
            showPaymentOptions(bits);
            break;
        case master::CoinMask.number:
            coinMask_ = bits;
            showCoinBit();
            break;
        case master::BanknoteMask.number:
            banknoteMask_ = bits;
            showBanknoteBit();
            break;
        case master::PriceTimeout.number:
            SetBarTenths(Label8v, scrTP, value);
            break;
        case master::ChangeOptions.number:
            changeOptions_ = bits;
            SwitchX5[0].Position = PositionOf(changeOptions_, ChangeAtOnce);
            break;
        case master::ExactChangeOptions.number:
            exactChangeOptions_ = bits & 255;
            SwitchX5[1].Position = PositionOf(exactChangeOptions_, IgnoreExactChange);
            break;
        default:
            break;
    }
}

void FrmPagamento::showDecimals(int decimals) {
    decimals_ = decimals;
    coins_.redraw(decimals_);
    HScroll11[0].scale.decimals = decimals_;
    {
        const ShowMirror shown(master::ChangeLargest);
        SetBarDecimals(Label11[0], HScroll11[0], ParamRead(master::ChangeLargest), decimals_);
    }
    tokens_.redraw(decimals_);
    // The labels of the two credits keep the old decimals until their own values come again.
    credits_.rescale(decimals_);
}

void FrmPagamento::showPaymentOptions(unsigned options) {
    paymentOptions_ = options;
    const bool differentiated = (options & DifferentiatedEcs) != 0;
    const bool holding = (options & PriceHolding) != 0;
    SliderX5.Position = differentiated ? 1 : holding ? 2 : 0;
    setTimeoutRow(differentiated || holding);
    openFramesOfSystem();
}

void FrmPagamento::openFramesOfSystem() {
    if ((paymentOptions_ & MdbSystem) != 0) {
        DisableExecutiveFrame();
        DisableCoinFrame();
        DisableCoinSeven();
        EnableMdbFrame();
        showSystem(Frame2);
    } else if ((paymentOptions_ & ExecutiveSystem) != 0) {
        DisableMdbFrame();
        DisableCoinFrame();
        DisableCoinSeven();
        EnableExecutiveFrame();
        showSystem(Frame4);
    } else if ((paymentOptions_ & G13System) != 0) {
        DisableMdbFrame();
        DisableExecutiveFrame();
        DisableCoinSeven();
        EnableCoinFrame();
        showSystem(Frame1);
    } else {
        DisableMdbFrame();
        DisableExecutiveFrame();
        DisableCoinFrame();
        EnableCoinSeven();
        showSystem(Frame1);
    }
}

void FrmPagamento::showSystem(const FoldingFrame& inUse) {
    for (FoldingFrame* frame : {&Frame1, &Frame2, &Frame4}) frame->setInUse(frame == &inUse);
}

void FrmPagamento::showSaleOptions(unsigned options) {
    saleOptions_ = options;
    iSwitchSliderX2.Position = PositionOf(saleOptions_, CoinChanger);
    for (int i = 0; i < Tokens; ++i)
        iSwSliderX3[i].Position = PositionOf(saleOptions_, TokenOptions[static_cast<std::size_t>(i)]);
}

void FrmPagamento::showCoinBit() { SliderX4.Position = PositionOf(coinMask_, bitAt(SliderX1)); }

void FrmPagamento::showBanknoteBit() { SliderX6.Position = PositionOf(banknoteMask_, bitAt(SliderX7)); }

void FrmPagamento::HScroll11_Change(int Index) {
    if (Updating) return;
    if (Index == 0)
        WriteTwice(master::ChangeLargest, static_cast<unsigned>(HScroll11[0].Value.get()));
    else
        credits_.write(Index);
}

void FrmPagamento::scrTP_Change() {
    if (!Updating) WriteTwice(master::PriceTimeout, static_cast<unsigned>(scrTP.Value.get()));
}

void FrmPagamento::iSwitchSliderX2_Change() {
    if (!Updating) WriteTwice(master::SaleOptions, WithBits(saleOptions_, CoinChanger, isOn(iSwitchSliderX2)));
}

void FrmPagamento::iSwSliderX3_Change(int Index) {
    if (Updating) return;
    WriteTwice(master::SaleOptions,
               WithBits(saleOptions_, TokenOptions[static_cast<std::size_t>(Index)], isOn(iSwSliderX3[Index])));
}

void FrmPagamento::SliderX4_Change() {
    if (!Updating) WriteTwice(master::CoinMask, WithBits(coinMask_, bitAt(SliderX1), isOn(SliderX4)));
}

void FrmPagamento::SliderX5_Change() {
    if (Updating) return;
    paymentOptions_ = WithBits(paymentOptions_, DifferentiatedEcs | PriceHolding, false);
    const unsigned option = SliderX5.Position == 1 ? DifferentiatedEcs : SliderX5.Position == 2 ? PriceHolding : 0;
    WriteTwice(master::PaymentOptions, paymentOptions_ | option);
}

void FrmPagamento::SliderX6_Change() {
    if (!Updating) WriteTwice(master::BanknoteMask, WithBits(banknoteMask_, bitAt(SliderX7), isOn(SliderX6)));
}

void FrmPagamento::SwitchX5_Change(int Index) {
    if (Updating) return;
    const bool on = isOn(SwitchX5[Index]);
    if (Index == 0) {
        changeOptions_ = WithBits(changeOptions_, ChangeAtOnce, on);
        WriteTwice(master::ChangeOptions, changeOptions_);
    } else {
        exactChangeOptions_ = WithBits(exactChangeOptions_, IgnoreExactChange, on) & 255;
        WriteTwice(master::ExactChangeOptions, exactChangeOptions_);
    }
}

}  // namespace kestrel
