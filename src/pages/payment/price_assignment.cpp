// Assignment of prices to selections and sectors.
#include "pages/payment/price_assignment.h"

#include <array>

#include "language/language_files.h"
#include "link/presence.h"
#include "link/value_helpers.h"
#include "pages/common/sector_names.h"
#include "pages/payment/master_settings.h"

namespace kestrel {

namespace {

constexpr int Selections = 18;
constexpr int SelectionPrice = 1163;
constexpr int SelectionPriceShadow = 1181;

constexpr int SectorPrice = 1;
constexpr int SectorPriceShadow = 216;

constexpr std::array<ParamRun, 4> SelectionSubscriptions = {{
    {1, SelectionPrice, SelectionPrice + Selections - 1},
    {1, SelectionPriceShadow, SelectionPriceShadow + Selections - 1},
    {0, HotDrinkPresence},
    {0, SaleOptions.parameter},
}};

constexpr std::array<ParamRun, 3> SectorSubscriptions = {{
    {2, SectorPrice, SectorPrice + SectorCount - 1},
    {0, SaleOptions.parameter},
    {0, SectorPresence},
}};

constexpr int LowestPrice = 1;
constexpr int HighestPrice = 30;
constexpr int LargeStep = 3;

}  // namespace

constexpr AssignmentDesign FrmAssSel = {.name = "FrmAssSel",
                                        .titleLine = 11,
                                        .captionLine = 192,
                                        .numbering = AssignmentDesign::Numbering::Running,
                                        .rows = Selections,
                                        .columns = 2,
                                        .bank = 1,
                                        .parameter = SelectionPrice,
                                        .shadow = SelectionPriceShadow,
                                        .gate = HotDrinkPresence,
                                        .rowsToOpen = 14,
                                        .gateIsDeaf = false,
                                        .subscriptions = SelectionSubscriptions};

constexpr AssignmentDesign FrmAssSet = {.name = "FrmAssSet",
                                        .titleLine = 12,
                                        .captionLine = 194,
                                        .numbering = AssignmentDesign::Numbering::RowAndColumn,
                                        .rows = SectorCount,
                                        .columns = SectorColumns,
                                        .bank = 2,
                                        .parameter = SectorPrice,
                                        .shadow = SectorPriceShadow,
                                        .gate = SectorPresence,
                                        .rowsToOpen = SectorCount,
                                        .gateIsDeaf = true,
                                        .subscriptions = SectorSubscriptions};

PriceAssignment::PriceAssignment(const AssignmentDesign& design) : Page(design.name), design_(design) {
    for (int k = 0; k < design_.rows; ++k) {
        HScroll1[k].design(LowestPrice, HighestPrice, LargeStep);
        Label1[k].showsValue("256");
    }
    HScroll1.OnChange([this](int Index) { HScroll1_Change(Index); });
}

Layout PriceAssignment::Arrange() {
    if (design_.numbering == AssignmentDesign::Numbering::Running) {
        Layout lists(Layout::Kind::Row);
        const int length = design_.rows / design_.columns;
        for (int first = 0; first < design_.rows; first += length)
            lists.children.push_back(Rows(Indexes(first, first + length - 1), Label11, HScroll1, Label1));
        return lists;
    }
    // As the sectors lie in the machine: narrow cells, each with its caption above its bar.
    std::vector<Layout> cells;
    cells.reserve(static_cast<std::size_t>(design_.rows));
    for (int k = 0; k < design_.rows; ++k) cells.push_back(Column{Label11[k], Row{HScroll1[k], Label1[k]}});
    return Grid(design_.columns, std::move(cells));
}

void PriceAssignment::Form_Load() {
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
}

void PriceAssignment::Form_Activate() { PageCaptions(); }

void PriceAssignment::Form_Unload() { PageRelease(); }

void PriceAssignment::PageSubscribe() {
    WatchAll(design_.subscriptions);
    DisableBars();
}

void PriceAssignment::PageRelease() { ReleaseAll(design_.subscriptions); }

void PriceAssignment::PageCaptions() {
    Caption = LanguageTable(design_.titleLine);
    for (int k = 0; k < design_.rows; ++k)
        Label11[k].Caption =
            LanguageTable(design_.captionLine) + " " +
            (design_.numbering == AssignmentDesign::Numbering::Running ? std::to_string(k + 1) : RowAndColumn(k));
}

bool PriceAssignment::allAtPriceOne() const { return (saleOptions_ & AllAtPriceOne) != 0; }

void PriceAssignment::setBars(bool open) {
    for (int k = 0; k < design_.rows; ++k) HScroll1[k].Enabled = open;
}

void PriceAssignment::EnableRows() {
    for (int k = 0; k < design_.rows; ++k) {
        Label11[k].Enabled = true;
        Label1[k].Enabled = true;
    }
    if (design_.gateIsDeaf || !allAtPriceOne()) setBars(true);
}

void PriceAssignment::DisableRows() {
    for (int k = 0; k < design_.rows; ++k) {
        Label11[k].Enabled = false;
        Label1[k].Enabled = false;
    }
    setBars(false);
}

void PriceAssignment::EnableBars() {
    if (!allAtPriceOne()) setBars(true);
}

void PriceAssignment::DisableBars() { setBars(false); }

void PriceAssignment::HScroll1_Change(int Index) {
    if (Updating || Index >= design_.rows) return;
    WriteTwice(design_.bank, design_.parameter + Index, design_.shadow + Index,
               static_cast<unsigned>(HScroll1[Index].Value - LowestPrice));
}

void PriceAssignment::SLabel_Change(int n, ParamValue value) {
    Updating = true;
    show(n, value);
    Updating = false;
    openWhenFresh();
}

void PriceAssignment::show(int n, ParamValue value) {
    if (CurrentBank == 0 && n == SaleOptions.parameter) {
        saleOptions_ = static_cast<unsigned>(value);
        if (allAtPriceOne())
            DisableRows();
        else
            followGate();
    }
    if (CurrentBank == 0 && n == design_.gate && value != gate_) {
        gate_ = static_cast<int>(value & 255);
        followGate();
    }
    const int k = n - design_.parameter;
    if (CurrentBank == design_.bank && k >= 0 && k < design_.rows) SetBar(Label1[k], HScroll1[k], value + LowestPrice);
}

void PriceAssignment::followGate() {
    if (SaysPresent(gate_))
        EnableRows();
    else
        DisableRows();
}

void PriceAssignment::openWhenFresh() {
    if (!enoughRowsAreFresh()) {
        if (neverOpened_) DisableBars();
    } else if (SaysPresent(gate_)) {
        EnableBars();
        neverOpened_ = false;
    }
}

bool PriceAssignment::enoughRowsAreFresh() const {
    for (int k = 0; k < design_.rowsToOpen; ++k)
        if (!ParamIsFresh(design_.parameter + k, design_.bank)) return false;
    return true;
}

}  // namespace kestrel
