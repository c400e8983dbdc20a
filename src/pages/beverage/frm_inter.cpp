// Intermittence.
#include "pages/beverage/frm_inter.h"

#include <algorithm>

#include "language/language_files.h"
#include "link/presence.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/position_labels.h"

namespace kestrel {

namespace {

/// The list of the page's subscriptions in their order, each given to Watch or to Release.
void eachSubscribed(void (*subscribe)(const ParamRun&)) {
    subscribe(hot_drink::MachinePowders);
    subscribe(hot_drink::IntermittenceMask);
    subscribe(hot_drink::IntermittenceState);  // read with the mask; the page takes nothing from it
    for (int i = 0; i < FrmInter::Powders; ++i) {
        subscribe(hot_drink::IntermittenceOn[i]);
        subscribe(hot_drink::IntermittenceOff[i]);
    }
    subscribe(master::HotDrinkPresence);
}

/// The status, the number of powders and ten times; the bits do not count.
constexpr int ExpectedArrivals = 12;

constexpr int LargeStep = 3;
constexpr ParamValue NoStatus = 255;
constexpr int TitleLine = 47;
constexpr int FirstHeadLine = 65;
constexpr int SecondHeadLine = 69;
constexpr int OnLine = 70;
constexpr int OffLine = 71;

void writeTime(const Setting& time, const ScrollBar& bar) { WriteTwice(time, static_cast<unsigned>(bar.Value.get())); }

}  // namespace

FrmInter::FrmInter() : Page("FrmInter"), Arrivals(ExpectedArrivals) {
    for (auto* bars : {&HScroll4, &HScroll5})
        for (ScrollBar& bar : *bars) {
            bar.design(0, 255, LargeStep);
            bar.scale.decimals = 1;
        }
    for (auto* labels : {&Label4s, &Label5s})
        for (Label& label : *labels) label.showsValue("25.5");
    for (int i = 0; i < Powders; ++i) Label3[i].Caption = std::to_string(i + 1);
    HScroll4.OnChange([this](int Index) { HScroll4_Change(Index); });
    HScroll5.OnChange([this](int Index) { HScroll5_Change(Index); });
    iSwSliderX1.OnPositionChange([this](int Index) { iSwSliderX1_PositionChange(Index); });
}

Layout FrmInter::Arrange() {
    std::vector<Layout> cells = {
        Column{Label1[0]},
        Column{Label1[1], Label2[0]},
        Column{Label1[2], Label2[1]},
        Gap(),
        Column{Label1[3], Label2[2]},
        Gap(),
    };
    for (int i = 0; i < Powders; ++i)
        cells.insert(cells.end(), {Label3[i], iSwSliderX1[i], HScroll4[i], Label4s[i], HScroll5[i], Label5s[i]});
    return Grid(6, std::move(cells));
}

void FrmInter::Form_Load() {
    LastStatus = NoStatus;
    Arrivals.restart();
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
}

void FrmInter::Form_Activate() {
    LockRows();
    PageCaptions();
    UnlockRows();
}

void FrmInter::Form_Unload() { PageRelease(); }

void FrmInter::PageSubscribe() {
    eachSubscribed(Watch);
    LockRows();
}

void FrmInter::PageRelease() { eachSubscribed(Release); }

void FrmInter::PageCaptions() {
    Caption = LanguageTable(TitleLine);
    for (int i = 0; i < Label1.size(); ++i) Label1[i].Caption = LanguageTable(FirstHeadLine + i);
    for (Label& head : Label2) head.Caption = LanguageTable(SecondHeadLine);
    for (SliderSwitch& slider : iSwSliderX1) slider.PositionLabels = TwoPositions(OffLine, OnLine);
}

void FrmInter::HScroll4_Change(int Index) {
    if (Updating) return;
    writeTime(hot_drink::IntermittenceOn[Index], HScroll4[Index]);
}

void FrmInter::HScroll5_Change(int Index) {
    if (Updating) return;
    writeTime(hot_drink::IntermittenceOff[Index], HScroll5[Index]);
}

void FrmInter::iSwSliderX1_PositionChange(int Index) {
    if (Updating) return;
    // Stored at once: a second switch moved before the board has answered builds on the first.
    const unsigned bit = 1U << Index;
    EnableBits = static_cast<std::uint8_t>(iSwSliderX1[Index].Position == 0 ? EnableBits & ~bit : EnableBits | bit);
    WriteTwice(hot_drink::IntermittenceMask, EnableBits);
}

void FrmInter::enableRow(int row, bool live) {
    Label3[row].Enabled = live;
    iSwSliderX1[row].Enabled = live;
    Label4s[row].Enabled = live;
    Label5s[row].Enabled = live;
    HScroll4[row].Enabled = live;
    HScroll5[row].Enabled = live;
}

void FrmInter::LockRows() {
    for (int i = 0; i < Powders; ++i) enableRow(i, false);
}

/// Rows from the number of powders on stay as they were.
void FrmInter::UnlockRows() {
    if (!SaysPresent(LastStatus)) return;
    for (int i = 0; i < std::min<ParamValue>(ProductCount, Powders); ++i) enableRow(i, true);
}

void FrmInter::statusArrived(ParamValue value) {
    if (value == LastStatus) return;
    LastStatus = value;
    if (!SaysPresent(value))
        LockRows();
    else if (Arrivals.Loading())
        Arrivals.count();
    else
        UnlockRows();
}

void FrmInter::settingArrived(int n, ParamValue value) {
    if (Arrived(n, hot_drink::MachinePowders)) {
        ProductCount = value;
        Arrivals.count();
    } else if (const int on = ArrivedAt(n, hot_drink::IntermittenceOn); on >= 0) {
        SetBarTenths(Label4s[on], HScroll4[on], value);
        Arrivals.count();
    } else if (const int off = ArrivedAt(n, hot_drink::IntermittenceOff); off >= 0) {
        SetBarTenths(Label5s[off], HScroll5[off], value);
        Arrivals.count();
    } else if (Arrived(n, hot_drink::IntermittenceMask)) {
        EnableBits = static_cast<std::uint8_t>(value);
        for (int i = 0; i < Powders; ++i) iSwSliderX1[i].Position = (EnableBits >> i) & 1;
    }
}

void FrmInter::SLabel_Change(int n, ParamValue value) {
    Updating = true;
    if (Arrived(n, master::HotDrinkPresence)) statusArrived(value);
    settingArrived(n, value);
    Updating = false;
    if (Arrivals.completes()) UnlockRows();
}

}  // namespace kestrel
