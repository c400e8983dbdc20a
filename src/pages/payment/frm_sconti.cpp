// Discounts: one for each price and preselection.
#include "pages/payment/frm_sconti.h"

#include <array>

#include "language/language_files.h"
#include "link/money.h"
#include "link/value_helpers.h"

namespace kestrel {

namespace {

constexpr int OwnCupRow = 34;

/// In the order in which they are drawn anew.
constexpr std::array Runs = {AmountRun{0, master::Discount}, AmountRun{30, master::PreselectionDiscount},
                             AmountRun{OwnCupRow, master::OwnCupDiscount}};

constexpr std::array<ParamRun, 7> Subscriptions = {{
    master::MoneyDecimals,
    CopyOf(master::PreselectionDiscount),
    CopyOf(master::OwnCupDiscount),
    CopyOf(master::Discount),
    master::PreselectionDiscount,
    master::OwnCupDiscount,
    master::Discount,
}};

constexpr int TitleLine = 10;
constexpr int DiscountLine = 185;
constexpr int PreselectionLine = 186;  ///< of row 30; the other rows follow

}  // namespace

FrmSconti::FrmSconti() : TablePage("FrmSconti", TitleLine, {Subscriptions}), amounts_(Runs, HScroll1, Label1) {
    isSheet = true;
    HScroll1.OnChange([this](int Index) { HScroll1_Change(Index); });
}

Layout FrmSconti::Arrange() {
    return Column{
        Group(Frame1,
              Row{Rows(Indexes(0, 9), Label11, HScroll1, Label1), Rows(Indexes(10, 19), Label11, HScroll1, Label1),
                  Rows(Indexes(20, 29), Label11, HScroll1, Label1)}),
        Group(Frame2, Row{Rows(Indexes(30, 33), Label11, HScroll1, Label1),
                          Column{Rows({OwnCupRow}, Label11, HScroll1, Label1), Gap()}}),
    };
}

void FrmSconti::PageSubscribe() {
    TablePage::PageSubscribe();
    DisableDiscountBars();
}

void FrmSconti::PageCaptions() {
    TablePage::PageCaptions();
    for (int k = 0; k < Discounts; ++k) Label11[k].Caption = LanguageTable(DiscountLine) + " " + std::to_string(k + 1);
    for (int k = Discounts; k < Amounts; ++k) Label11[k].Caption = LanguageTable(PreselectionLine + k - Discounts);
}

void FrmSconti::setDiscountBars(bool open) {
    for (int k = 0; k < Discounts; ++k) HScroll1[k].Enabled = open;
}

void FrmSconti::HScroll1_Change(int Index) {
    if (!Updating) amounts_.write(Index);
}

void FrmSconti::valueShown() {
    if (AllAreFresh(master::Discount) && ParamIsFresh(master::MoneyDecimals)) EnableDiscountBars();
}

void FrmSconti::valueCame(int n, ParamValue value) {
    if (!IsCurrent(Board::Master)) return;
    if (n == master::MoneyDecimals.number && DecimalsOf(value) != decimals_) {
        decimals_ = DecimalsOf(value);
        amounts_.redraw(decimals_);
    }
    amounts_.arrived(n, value, decimals_);
}

}  // namespace kestrel
