// Preselections.
#include "pages/beverage/frm_presel.h"

#include <algorithm>
#include <array>

#include "language/language_files.h"
#include "link/presence.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/position_labels.h"

namespace kestrel {

namespace {

// One setting of each preselection.
constexpr SettingRange Product = hot_drink::PreselectionProduct;
constexpr SettingRange Type = hot_drink::PreselectionType;
constexpr SettingRange Time = hot_drink::PreselectionTime;
constexpr SettingRange PlusTime = hot_drink::PreselectionPlusTime;

/// The list of the page's subscriptions in their order, each given to Watch or to Release.
void eachSubscribed(void (*subscribe)(const ParamRun&)) {
    subscribe(hot_drink::MachinePowders);
    subscribe(hot_drink::BrewingOptions);  // read with the settings; the page takes nothing from it
    subscribe(PlusTime);
    for (int i = 0; i < FrmPresel::Preselections; ++i)
        for (const SettingRange& settings : {Product, Type, Time}) subscribe(settings[i]);
    subscribe(CopyOf(PlusTime));
    for (int i = 0; i < FrmPresel::Preselections; ++i)
        for (const SettingRange& settings : {Product, Type, Time}) subscribe(CopyOf(settings[i]));
    subscribe(master::HotDrinkPresence);
}

/// Sixteen settings, the number of products and the status.
constexpr int ExpectedArrivals = 18;

constexpr int HighestType = 5;
constexpr int LargeStep = 10;
constexpr int TitleLine = 49;
constexpr std::array<int, 6> HeadLines = {82, 83, 84, 85, 82, 83};
constexpr int NoProductLine = 86;
constexpr int FirstTypeLine = 87;

void writeSetting(const Setting& setting, int value) { WriteTwice(setting, static_cast<unsigned>(value)); }

}  // namespace

FrmPresel::FrmPresel() : TablePage("FrmPresel", TitleLine, {}), Arrivals(ExpectedArrivals) {
    for (int i = 0; i < Label4.size(); ++i) caption(Label4[i].Caption, HeadLines[static_cast<std::size_t>(i)]);
    for (int i = 0; i < Preselections; ++i) {
        const std::string number = std::to_string(i + 1);
        Label0[i].Caption = number;
        const int plus = Preselections + i;
        Label0[plus].Caption = number + " Plus";
        bar({0, 0, 255, LargeStep, Time[i], 1}, Label0[i], HScroll1[i], Label1[i]);
        bar({0, 0, 255, LargeStep, PlusTime[i], 1}, Label0[plus], HScroll1[plus], Label1[plus]);
        iSwSliderX1[i].PositionLabels = NumberedPositions("0", HighestType);
        iSwSliderX2[i].PositionLabels = NumberedPositions("0", HighestType);
        iSwSliderX2[i].isList = true;
    }
    iSwSliderX1.OnPositionChangeUser([this](int Index) { iSwSliderX1_PositionChangeUser(Index); });
    iSwSliderX2.OnPositionChangeUser([this](int Index) { iSwSliderX2_PositionChangeUser(Index); });
}

Layout FrmPresel::Arrange() {
    std::vector<Layout> left = {Label4[0], Label4[2], Label4[3], Label4[1], Gap()};
    std::vector<Layout> right = {Label4[4], Label4[5], Gap()};
    for (int i = 0; i < Preselections; ++i) {
        const int plus = Preselections + i;
        left.insert(left.end(), {Label0[i], iSwSliderX1[i], iSwSliderX2[i], HScroll1[i], Label1[i]});
        right.insert(right.end(), {Label0[plus], HScroll1[plus], Label1[plus]});
    }
    return Row{Group(PlainBlock, Grid(5, std::move(left))), Group(PlusBlock, Grid(3, std::move(right)))};
}

void FrmPresel::PageSubscribe() {
    eachSubscribed(Watch);
    LockPreselections();
}

void FrmPresel::PageRelease() { eachSubscribed(Release); }

void FrmPresel::PageCaptions() {
    TablePage::PageCaptions();
    // Until the machine's products are known the switches keep the labels that they were made with.
    if (!Arrivals.Loading()) labelPositions();
}

void FrmPresel::labelPositions() {
    const std::string products = NumberedPositions(LanguageTable(NoProductLine), ProductCount);
    std::string types = LanguageTable(FirstTypeLine);
    for (int type = 1; type <= HighestType; ++type) types += "," + LanguageTable(FirstTypeLine + type);
    for (SliderSwitch& slider : iSwSliderX1) slider.PositionLabels = products;
    for (SliderSwitch& slider : iSwSliderX2) slider.PositionLabels = types;
}

/// Writes while a value is being shown as well: a product that the machine no longer has is taken off the board.
void FrmPresel::iSwSliderX1_PositionChangeUser(int Index) { writeSetting(Product[Index], iSwSliderX1[Index].Position); }

void FrmPresel::iSwSliderX2_PositionChangeUser(int Index) {
    if (Updating) return;
    writeSetting(Type[Index], iSwSliderX2[Index].Position);
}

void FrmPresel::enableRows(bool live) {
    for (int i = 0; i < Preselections; ++i) {
        Label1[i].Enabled = live;
        HScroll1[i].Enabled = live;
        iSwSliderX1[i].Enabled = live;
        iSwSliderX2[i].Enabled = live;
    }
}

void FrmPresel::LockPreselections() { enableRows(false); }

void FrmPresel::UnlockPreselections() {
    if (SaysPresent(LastStatus)) enableRows(true);
    labelPositions();
}

void FrmPresel::countOrUnlock() {
    if (Arrivals.Loading())
        Arrivals.count();
    else
        UnlockPreselections();
}

void FrmPresel::statusArrived(ParamValue value) {
    if (value == LastStatus) return;
    LastStatus = value;
    if (SaysPresent(value))
        countOrUnlock();
    else
        LockPreselections();
}

void FrmPresel::productCountArrived(ParamValue value) {
    ProductCount = value;
    for (int i = 0; i < Preselections; ++i) {
        if (iSwSliderX1[i].Position <= ProductCount) continue;
        iSwSliderX1[i].Position = static_cast<int>(ProductCount);
        iSwSliderX1_PositionChangeUser(i);
    }
    countOrUnlock();
}

void FrmPresel::settingArrived(int n, ParamValue value) {
    if (Arrived(n, hot_drink::MachinePowders)) return productCountArrived(value);
    if (const int product = ArrivedAt(n, Product); product >= 0)
        iSwSliderX1[product].Position = static_cast<int>(value);
    else if (const int type = ArrivedAt(n, Type); type >= 0)
        iSwSliderX2[type].Position = static_cast<int>(std::min<ParamValue>(value, HighestType));
    else if (ArrivedAt(n, Time) < 0 && ArrivedAt(n, PlusTime) < 0)
        return;
    Arrivals.count();
}

void FrmPresel::valueCame(int n, ParamValue value) {
    if (Arrived(n, master::HotDrinkPresence)) statusArrived(value);
    settingArrived(n, value);
}

void FrmPresel::valueShown() {
    if (Arrivals.completes()) UnlockPreselections();
}

}  // namespace kestrel
