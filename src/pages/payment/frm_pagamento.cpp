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
#include "pages/payment/master_settings.h"

namespace kestrel {

namespace {

constexpr MasterSetting PaymentOptions = {85, 87};
constexpr MasterSetting LargestChange = {328, 329};
constexpr MasterSetting CoinMask = {330, 331};
constexpr MasterSetting PriceTimeout = {342, 343};
constexpr MasterSetting BanknoteMask = {344, 345};
constexpr MasterSetting ChangeOptions = {346, 347};
constexpr MasterSetting ExactChangeOptions = {348, 349};

constexpr AmountRun CoinRun = {0, FrmPagamento::Coins, 312, 320};
constexpr AmountRun TokenRun = {0, FrmPagamento::Tokens, 336, 339};
constexpr AmountRun KeyCreditRun = {2, 1, 332, 333};
constexpr AmountRun CoinCreditRun = {3, 1, 334, 335};
constexpr std::array CoinRuns = {CoinRun};
constexpr std::array TokenRuns = {TokenRun};
constexpr std::array CreditRuns = {KeyCreditRun, CoinCreditRun};

constexpr std::array<ParamRun, 19> Subscriptions = {{
    {0, DecimalsParameter},
    {0, ChangeOptions.shadow},
    {0, ExactChangeOptions.shadow},
    ShadowsOf(CoinCreditRun),
    ShadowsOf(KeyCreditRun),
    {0, PriceTimeout.shadow},
    {0, BanknoteMask.shadow},
    ParametersOf(CoinRun),
    {0, LargestChange.parameter},
    {0, BanknoteMask.parameter},
    {0, CoinMask.parameter},
    ParametersOf(TokenRun),
    {0, SaleOptions.parameter},
    {0, PaymentOptions.parameter},
    {0, PriceTimeout.parameter},
    ParametersOf(CoinCreditRun),
    ParametersOf(KeyCreditRun),
    {0, ChangeOptions.parameter},
    {0, ExactChangeOptions.parameter},
}};

/// Not the same list: some copies are given back that were never watched, and three parameters are given back twice.
constexpr std::array<ParamRun, 27> Releases = {{
    {0, ChangeOptions.shadow},   {0, ExactChangeOptions.shadow}, ShadowsOf(CoinRun),
    {0, DecimalsParameter},      {0, LargestChange.shadow},      {0, CoinMask.shadow},
    {0, SaleOptions.shadow},     {0, PaymentOptions.shadow},     ShadowsOf(CoinCreditRun),
    ShadowsOf(KeyCreditRun),     {0, PriceTimeout.shadow},       {0, BanknoteMask.shadow},
    ParametersOf(CoinRun),       {0, LargestChange.parameter},   {0, CoinMask.parameter},
    {0, SaleOptions.parameter},  {0, PaymentOptions.parameter},  {0, CoinMask.parameter},
    ParametersOf(TokenRun),      {0, SaleOptions.parameter},     {0, PaymentOptions.parameter},
    {0, BanknoteMask.parameter}, ParametersOf(CoinCreditRun),    ParametersOf(KeyCreditRun),
    {0, PriceTimeout.parameter}, {0, ChangeOptions.parameter},   {0, ExactChangeOptions.parameter},
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
    : Page("FrmPagamento"),
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

void FrmPagamento::Form_Load() {
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
}

void FrmPagamento::Form_Activate() { PageCaptions(); }

void FrmPagamento::Form_Unload() { PageRelease(); }

void FrmPagamento::PageSubscribe() { WatchAll(Subscriptions); }

void FrmPagamento::PageRelease() { ReleaseAll(Releases); }

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

void FrmPagamento::SLabel_Change(int n, ParamValue value) {
    Updating = true;
    if (CurrentBank == 0) show(n, value);
    Updating = false;
}

void FrmPagamento::show(int n, ParamValue value) {
    for (AmountRows* amounts : {&coins_, &tokens_, &credits_}) amounts->arrived(n, value, decimals_);
    const auto bits = static_cast<unsigned>(value);
    switch (n) {
        case DecimalsParameter:
            if (DecimalsOf(value) != decimals_) showDecimals(DecimalsOf(value));
            break;
        case LargestChange.parameter:
            if (ParamIsFresh(DecimalsParameter, 0)) {
                HScroll11[0].Value = static_cast<int>(std::min<ParamValue>(value, HScroll11[0].Max));
                Label11[0].Caption = FormatAmount(HScroll11[0].Value, decimals_);
            }
            break;
        case SaleOptions.parameter:
            showSaleOptions(bits);
            break;
        case PaymentOptions.parameter:
            showPaymentOptions(bits);
            break;
        case CoinMask.parameter:
            coinMask_ = bits;
            showCoinBit();
            break;
        case BanknoteMask.parameter:
            banknoteMask_ = bits;
            showBanknoteBit();
            break;
        case PriceTimeout.parameter:
            SetBarTenths(Label8v, scrTP, value);
            break;
        case ChangeOptions.parameter:
            changeOptions_ = bits;
            SwitchX5[0].Position = PositionOf(changeOptions_, ChangeAtOnce);
            break;
        case ExactChangeOptions.parameter:
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
        const ShowMirror shown(LargestChange.parameter, 0);
        SetBarDecimals(Label11[0], HScroll11[0], ParamRead(LargestChange.parameter, 0), decimals_);
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
    } else if ((paymentOptions_ & ExecutiveSystem) != 0) {
        DisableMdbFrame();
        DisableCoinFrame();
        DisableCoinSeven();
        EnableExecutiveFrame();
    } else if ((paymentOptions_ & G13System) != 0) {
        DisableMdbFrame();
        DisableExecutiveFrame();
        DisableCoinSeven();
        EnableCoinFrame();
    } else {
        DisableMdbFrame();
        DisableExecutiveFrame();
        DisableCoinFrame();
        EnableCoinSeven();
    }
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
        WriteSetting(LargestChange, static_cast<unsigned>(HScroll11[0].Value.get()));
    else
        credits_.write(Index);
}

void FrmPagamento::scrTP_Change() {
    if (!Updating) WriteSetting(PriceTimeout, static_cast<unsigned>(scrTP.Value.get()));
}

void FrmPagamento::iSwitchSliderX2_Change() {
    if (!Updating) WriteSetting(SaleOptions, WithBits(saleOptions_, CoinChanger, isOn(iSwitchSliderX2)));
}

void FrmPagamento::iSwSliderX3_Change(int Index) {
    if (Updating) return;
    WriteSetting(SaleOptions,
                 WithBits(saleOptions_, TokenOptions[static_cast<std::size_t>(Index)], isOn(iSwSliderX3[Index])));
}

void FrmPagamento::SliderX4_Change() {
    if (!Updating) WriteSetting(CoinMask, WithBits(coinMask_, bitAt(SliderX1), isOn(SliderX4)));
}

void FrmPagamento::SliderX5_Change() {
    if (Updating) return;
    paymentOptions_ = WithBits(paymentOptions_, DifferentiatedEcs | PriceHolding, false);
    const unsigned option = SliderX5.Position == 1 ? DifferentiatedEcs : SliderX5.Position == 2 ? PriceHolding : 0;
    WriteSetting(PaymentOptions, paymentOptions_ | option);
}

void FrmPagamento::SliderX6_Change() {
    if (!Updating) WriteSetting(BanknoteMask, WithBits(banknoteMask_, bitAt(SliderX7), isOn(SliderX6)));
}

void FrmPagamento::SwitchX5_Change(int Index) {
    if (Updating) return;
    const bool on = isOn(SwitchX5[Index]);
    if (Index == 0) {
        changeOptions_ = WithBits(changeOptions_, ChangeAtOnce, on);
        WriteSetting(ChangeOptions, changeOptions_);
    } else {
        exactChangeOptions_ = WithBits(exactChangeOptions_, IgnoreExactChange, on) & 255;
        WriteSetting(ExactChangeOptions, exactChangeOptions_);
    }
}

}  // namespace kestrel
