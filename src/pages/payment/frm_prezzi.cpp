// Prices: the machine's price list.
#include "pages/payment/frm_prezzi.h"

#include <array>

#include "language/language_files.h"
#include "link/money.h"
#include "link/value_helpers.h"
#include "pages/common/bits.h"
#include "pages/payment/master_settings.h"

namespace kestrel {

namespace {

constexpr AmountRun PriceRun = {0, FrmPrezzi::Prices, 16, 46};
constexpr AmountRun PreselectionRun = {30, 4, 8, 12};
constexpr AmountRun PlusPreselectionRun = {34, 4, 76, 80};

/// In the order in which they are drawn anew.
constexpr std::array Runs = {PriceRun, PreselectionRun, PlusPreselectionRun};

constexpr std::array<ParamRun, 9> Subscriptions = {{
    {0, SaleOptions.shadow},
    {0, DecimalsParameter},
    ShadowsOf(PreselectionRun),
    ShadowsOf(PlusPreselectionRun),
    ShadowsOf(PriceRun),
    ParametersOf(PreselectionRun),
    ParametersOf(PlusPreselectionRun),
    {0, SaleOptions.parameter},
    ParametersOf(PriceRun),
}};

constexpr int TitleLine = 9;
constexpr int PriceLine = 174;
constexpr int Switch1Line = 175;
constexpr int PreselectionLine = 176;  ///< of row 30; the other rows follow

}  // namespace

FrmPrezzi::FrmPrezzi() : Page("FrmPrezzi"), amounts_(Runs, HScroll1, Label1) {
    Switch1.PositionLabels = "Off, On";
    HScroll1.OnChange([this](int Index) { HScroll1_Change(Index); });
    Switch1.OnPositionChange([this] { Switch1_Change(); });
}

Layout FrmPrezzi::Arrange() {
    return Column{
        Group(Frame1,
              Row{Rows(Indexes(0, 9), Label11, HScroll1, Label1), Rows(Indexes(10, 19), Label11, HScroll1, Label1),
                  Rows(Indexes(20, 29), Label11, HScroll1, Label1)}),
        Row{Group(Frame2, Rows({30, 32, 34, 36}, Label11, HScroll1, Label1)),
            Group(Frame3, Rows({31, 33, 35, 37}, Label11, HScroll1, Label1))},
        Row{Label2, Switch1, Gap()},
    };
}

void FrmPrezzi::Form_Load() {
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
}

void FrmPrezzi::Form_Activate() { PageCaptions(); }

void FrmPrezzi::Form_Unload() { PageRelease(); }

void FrmPrezzi::PageSubscribe() {
    WatchAll(Subscriptions);
    DisablePriceBars();
}

void FrmPrezzi::PageRelease() { ReleaseAll(Subscriptions); }

void FrmPrezzi::PageCaptions() {
    Caption = LanguageTable(TitleLine);
    Label2.Caption = LanguageTable(Switch1Line);
    for (int k = 0; k < Prices; ++k) Label11[k].Caption = LanguageTable(PriceLine) + " " + std::to_string(k + 1);
    for (int k = Prices; k < Amounts; ++k) Label11[k].Caption = LanguageTable(PreselectionLine + k - Prices);
}

void FrmPrezzi::setPriceBars(bool open) {
    for (int k = 0; k < Prices; ++k) HScroll1[k].Enabled = open;
}

void FrmPrezzi::HScroll1_Change(int Index) {
    if (!Updating) amounts_.write(Index);
}

void FrmPrezzi::Switch1_Change() {
    if (!Updating) WriteSetting(SaleOptions, WithBits(saleOptions_, AllAtPriceOne, Switch1.Position == 1));
}

void FrmPrezzi::SLabel_Change(int n, ParamValue value) {
    Updating = true;
    if (CurrentBank == 0) show(n, value);
    Updating = false;
    if (AllAreFresh(PriceRun)) EnablePriceBars();
}

void FrmPrezzi::show(int n, ParamValue value) {
    if (n == DecimalsParameter && DecimalsOf(value) != decimals_) {
        decimals_ = DecimalsOf(value);
        amounts_.redraw(decimals_);
    }
    amounts_.arrived(n, value, decimals_);
    if (n == SaleOptions.parameter) {
        saleOptions_ = static_cast<unsigned>(value & 255);
        Switch1.Position = PositionOf(saleOptions_, AllAtPriceOne);
    }
}

}  // namespace kestrel
