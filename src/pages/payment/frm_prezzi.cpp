// Prices: the machine's price list.
#include "pages/payment/frm_prezzi.h"

#include <array>

#include "language/language_files.h"
#include "link/money.h"
#include "link/value_helpers.h"
#include "pages/common/bits.h"
#include "pages/payment/sale_options.h"

namespace kestrel {

namespace {

/// In the order in which they are drawn anew.
constexpr std::array Runs = {AmountRun{0, master::Price}, AmountRun{30, master::PreselectionPrice},
                             AmountRun{34, master::PreselectionPlusPrice}};

constexpr std::array<ParamRun, 9> Subscriptions = {{
    CopyOf(master::SaleOptions),
    master::MoneyDecimals,
    CopyOf(master::PreselectionPrice),
    CopyOf(master::PreselectionPlusPrice),
    CopyOf(master::Price),
    master::PreselectionPrice,
    master::PreselectionPlusPrice,
    master::SaleOptions,
    master::Price,
}};

constexpr int TitleLine = 9;
constexpr int PriceLine = 174;
constexpr int Switch1Line = 175;
constexpr int PreselectionLine = 176;  ///< of row 30; the other rows follow

}  // namespace

FrmPrezzi::FrmPrezzi() : TablePage("FrmPrezzi", TitleLine, {Subscriptions}), amounts_(Runs, HScroll1, Label1) {
    Switch1.PositionLabels = "Off, On";
    isSheet = true;
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

void FrmPrezzi::PageSubscribe() {
    TablePage::PageSubscribe();
    DisablePriceBars();
}

void FrmPrezzi::PageCaptions() {
    TablePage::PageCaptions();
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
    if (!Updating) WriteTwice(master::SaleOptions, WithBits(saleOptions_, AllAtPriceOne, Switch1.Position == 1));
}

void FrmPrezzi::valueShown() {
    if (AllAreFresh(master::Price)) EnablePriceBars();
}

void FrmPrezzi::valueCame(int n, ParamValue value) {
    if (!IsCurrent(Board::Master)) return;
    if (n == master::MoneyDecimals.number && DecimalsOf(value) != decimals_) {
        decimals_ = DecimalsOf(value);
        amounts_.redraw(decimals_);
    }
    amounts_.arrived(n, value, decimals_);
    if (n == master::SaleOptions.number) {
        saleOptions_ = static_cast<unsigned>(value & 255);
        Switch1.Position = PositionOf(saleOptions_, AllAtPriceOne);
    }
}

}  // namespace kestrel
