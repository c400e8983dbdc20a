// Assignment of prices to selections and sectors.
#include "pages/payment/price_assignment.h"

#include <array>

#include "language/language_files.h"
#include "link/money.h"
#include "link/presence.h"
#include "link/value_helpers.h"
#include "pages/common/sector_names.h"
#include "pages/payment/sale_options.h"

namespace kestrel {

namespace {

constexpr std::array<ParamRun, 4> SelectionSubscriptions = {{
    hot_drink::SelectionPrice,
    CopyOf(hot_drink::SelectionPrice),
    master::HotDrinkPresence,
    master::SaleOptions,
}};

constexpr std::array<ParamRun, 3> SectorSubscriptions = {{
    sector::SectorPrice,
    master::SaleOptions,
    master::SectorPresence,
}};

constexpr int LowestPrice = 1;
constexpr int HighestPrice = 30;
constexpr int LargeStep = 3;

}  // namespace

constexpr AssignmentDesign FrmAssSel = {.name = "FrmAssSel",
                                        .titleLine = 11,
                                        .captionLine = 192,
                                        .numbering = AssignmentDesign::Numbering::Running,
                                        .rows = hot_drink::SelectionPrice,
                                        .columns = 2,
                                        .gate = master::HotDrinkPresence,
                                        .rowsToOpen = 14,
                                        .gateIsDeaf = false,
                                        .subscriptions = SelectionSubscriptions};

constexpr AssignmentDesign FrmAssSet = {.name = "FrmAssSet",
                                        .titleLine = 12,
                                        .captionLine = 194,
                                        .numbering = AssignmentDesign::Numbering::RowAndColumn,
                                        .rows = sector::SectorPrice,
                                        .columns = SectorColumns,
                                        .gate = master::SectorPresence,
                                        .rowsToOpen = SectorCount,
                                        .gateIsDeaf = true,
                                        .subscriptions = SectorSubscriptions};

PriceAssignment::PriceAssignment(const AssignmentDesign& design)
    : TablePage(design.name, design.titleLine, {design.subscriptions}), design_(design) {
    for (int k = 0; k < design_.rows.size(); ++k) {
        HScroll1[k].design(LowestPrice, HighestPrice, LargeStep);
        Label1[k].showsValue("30");
        if (!isDense()) Label1[k].widestUnit = "– 0.00";
        HScroll1[k].namedBy(&Label11[k]);
        Label1[k].namedBy(&Label11[k]);
    }
    isSheet = true;
    HScroll1.OnChange([this](int Index) { HScroll1_Change(Index); });
}

Layout PriceAssignment::Arrange() {
    if (design_.numbering == AssignmentDesign::Numbering::Running) {
        Layout lists(Layout::Kind::Row);
        const int length = design_.rows.size() / design_.columns;
        for (int first = 0; first < design_.rows.size(); first += length)
            lists.children.push_back(Rows(Indexes(first, first + length - 1), Label11, HScroll1, Label1));
        return lists;
    }
    // As the sectors lie in the machine: narrow cells, each with its caption above its bar, in columns that stand
    // below one another where there is no room for all of them side by side.
    Layout columns(Layout::Kind::Row);
    for (int column = 0; column < design_.columns; ++column) {
        std::vector<Layout> cells;
        for (int k = column; k < design_.rows.size(); k += design_.columns)
            cells.push_back(Column{Row{Label11[k], Gap(), amounts[k]}, Row{HScroll1[k], Label1[k]}});
        columns.children.push_back(Grid(1, std::move(cells)));
    }
    return columns;
}

void PriceAssignment::PageSubscribe() {
    TablePage::PageSubscribe();
    DisableBars();
}

void PriceAssignment::PageCaptions() {
    TablePage::PageCaptions();
    for (int k = 0; k < design_.rows.size(); ++k)
        Label11[k].Caption =
            LanguageTable(design_.captionLine) + " " +
            (design_.numbering == AssignmentDesign::Numbering::Running ? std::to_string(k + 1) : RowAndColumn(k));
}

bool PriceAssignment::allAtPriceOne() const { return (saleOptions_ & AllAtPriceOne) != 0; }

void PriceAssignment::setBars(bool open) {
    for (int k = 0; k < design_.rows.size(); ++k) HScroll1[k].Enabled = open;
}

void PriceAssignment::EnableRows() {
    for (int k = 0; k < design_.rows.size(); ++k) {
        Label11[k].Enabled = true;
        Label1[k].Enabled = true;
        amounts[k].Enabled = true;
    }
    if (design_.gateIsDeaf || !allAtPriceOne()) setBars(true);
}

void PriceAssignment::DisableRows() {
    for (int k = 0; k < design_.rows.size(); ++k) {
        Label11[k].Enabled = false;
        Label1[k].Enabled = false;
        amounts[k].Enabled = false;
    }
    setBars(false);
}

void PriceAssignment::EnableBars() {
    if (!allAtPriceOne()) setBars(true);
}

void PriceAssignment::DisableBars() { setBars(false); }

void PriceAssignment::HScroll1_Change(int Index) {
    if (Updating || Index >= design_.rows.size()) return;
    WriteTwice(design_.rows[Index], static_cast<unsigned>(HScroll1[Index].Value - LowestPrice));
}

void PriceAssignment::valueCame(int n, ParamValue value) {
    if (Arrived(n, master::SaleOptions)) {
        saleOptions_ = static_cast<unsigned>(value);
        if (allAtPriceOne())
            DisableRows();
        else
            followGate();
    }
    if (Arrived(n, design_.gate) && value != gate_) {
        gate_ = static_cast<int>(value & 255);
        followGate();
    }
    const int k = ArrivedAt(n, design_.rows);
    if (k >= 0) SetBar(Label1[k], HScroll1[k], value + LowestPrice);
    if (k >= 0) showAmount(k);
    if (Arrived(n, master::MoneyDecimals) || ArrivedAt(n, master::Price) >= 0)
        for (int row = 0; row < design_.rows.size(); ++row) showAmount(row);
}

/// Where the price list is known: this page asks for no price.
void PriceAssignment::showAmount(int row) {
    const auto price = ParamRead(design_.rows[row]);
    const bool isKnown = price < master::Price.size() && ParamIsFresh(design_.rows[row]) &&
                         ParamIsFresh(master::MoneyDecimals) && ParamIsFresh(master::Price[static_cast<int>(price)]);
    const std::string amount = isKnown ? FormatAmount(ParamRead(master::Price[static_cast<int>(price)]),
                                                      DecimalsOf(ParamRead(master::MoneyDecimals)))
                                       : std::string();
    if (isDense())
        amounts[row].Caption = amount;
    else
        Label1[row].Unit = isKnown ? "– " + amount : amount;
}

void PriceAssignment::followGate() {
    if (SaysPresent(gate_))
        EnableRows();
    else
        DisableRows();
}

void PriceAssignment::valueShown() {
    if (!enoughRowsAreFresh()) {
        if (neverOpened_) DisableBars();
    } else if (SaysPresent(gate_)) {
        EnableBars();
        neverOpened_ = false;
    }
}

bool PriceAssignment::enoughRowsAreFresh() const { return AllAreFresh(design_.rows.first(design_.rowsToOpen)); }

}  // namespace kestrel
