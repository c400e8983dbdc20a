// Temperature set-points: boiler, tank and refrigerator.
#include "pages/climate/frm_temperatura.h"

#include <array>

#include "language/language_files.h"
#include "link/presence.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"

namespace kestrel {

namespace {

enum class Shown { Plain, Tenths, TankSetPoint, Offset };

struct SettingRow {
    int min;
    int max;
    int largeStep;
    Setting setting;  ///< its copy is subscribed but not shown
    Shown shown;
};

/// The boiler's second value goes to where the recipe of a selection has a time.
constexpr SettingRow Boiler = {70, 110, 5, WithCopy(hot_drink::BoilerSetPoint, hot_drink::Step3MixerTime[17]),
                               Shown::Plain};
constexpr std::array<SettingRow, FrmTemperatura::Settings> SettingRows = {{
    {8, 16, 2, sector::TankSetPoint, Shown::TankSetPoint},
    {10, 50, 5, sector::TankDelta, Shown::Tenths},
    {1, 12, 2, sector::DefrostEvery, Shown::Plain},
    {1, 30, 5, sector::DefrostFor, Shown::Plain},
    {0, 10, 2, sector::TankOffset, Shown::Offset},
    {5, 100, 5, hot_drink::RefrigeratorSetPoint, Shown::Tenths},
}};

constexpr int RefrigeratorFitted = 1;  ///< the kind of cooling that has a refrigerator
constexpr int TankOff = 16;            ///< this set-point of the tank switches its cooling off
constexpr int OffsetZero = 5;

/// The two spares and their copies are subscribed and not shown.
constexpr std::array<ParamRun, 21> Subscriptions = {{
    hot_drink::BoilerSetPoint,
    hot_drink::RefrigeratorSetPoint,
    hot_drink::CoolingKind,
    CopyOf(Boiler.setting),
    CopyOf(hot_drink::RefrigeratorSetPoint),
    sector::TankSetPoint,
    sector::TankDelta,
    sector::DefrostEvery,
    sector::DefrostFor,
    sector::TankOffset,
    sector::CoolingSpare1,
    sector::CoolingSpare2,
    CopyOf(sector::TankSetPoint),
    CopyOf(sector::TankDelta),
    CopyOf(sector::DefrostEvery),
    CopyOf(sector::DefrostFor),
    CopyOf(sector::TankOffset),
    CopyOf(sector::CoolingSpare1),
    CopyOf(sector::CoolingSpare2),
    master::SectorPresence,
    master::HotDrinkPresence,
}};

constexpr int TitleLine = 26;
constexpr int Frame1Line = 309;
constexpr int BoilerLine = 310;
constexpr int Frame2Line = 311;
constexpr int FirstSettingLine = 312;
constexpr int NothingSeen = 255;

const SettingRow& rowOf(int index) { return SettingRows[static_cast<std::size_t>(index)]; }

void design(const SettingRow& row, ScrollBar& bar, Label& label) {
    bar.design(row.min, row.max, row.largeStep);
    if (row.shown == Shown::Tenths) bar.scale.decimals = 1;
    if (row.shown == Shown::Offset) bar.scale.offset = -OffsetZero;
    label.showsValue(row.shown == Shown::Tenths ? "25.5" : "OFF5");
}

void write(const SettingRow& row, const ScrollBar& bar) {
    WriteTwice(row.setting, static_cast<unsigned>(bar.Value.get()));
}

}  // namespace

FrmTemperatura::FrmTemperatura() : Page("FrmTemperatura") {
    design(Boiler, HScroll1, Label1);
    for (int i = 0; i < Settings; ++i) design(rowOf(i), HScroll2[i], Label2[i]);
    HScroll1.OnChange([this] { HScroll1_Change(); });
    HScroll2.OnChange([this](int Index) { HScroll2_Change(Index); });
}

Layout FrmTemperatura::Arrange() {
    const Layout hotDrink =
        Grid(3, {Label1s, HScroll1, Label1, Label2s[Refrigerator], HScroll2[Refrigerator], Label2[Refrigerator]});
    return Column{
        Group(Frame1, hotDrink),
        Group(Frame2, Rows(Indexes(0, Refrigerator - 1), Label2s, HScroll2, Label2)),
    };
}

void FrmTemperatura::Form_Load() {
    Param2 = NothingSeen;
    Param1 = NothingSeen;
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
}

void FrmTemperatura::Form_Activate() { PageCaptions(); }

void FrmTemperatura::Form_Unload() { PageRelease(); }

void FrmTemperatura::PageSubscribe() { WatchAll(Subscriptions); }

void FrmTemperatura::PageRelease() { ReleaseAll(Subscriptions); }

void FrmTemperatura::PageCaptions() {
    Caption = LanguageTable(TitleLine);
    Frame1.Caption = LanguageTable(Frame1Line);
    Label1s.Caption = LanguageTable(BoilerLine);
    Frame2.Caption = LanguageTable(Frame2Line);
    for (int i = 0; i < Settings; ++i) Label2s[i].Caption = LanguageTable(FirstSettingLine + i);
}

void FrmTemperatura::HScroll1_Change() {
    if (!Updating) write(Boiler, HScroll1);
}

void FrmTemperatura::HScroll2_Change(int Index) {
    if (!Updating) write(rowOf(Index), HScroll2[Index]);
}

void FrmTemperatura::enableBoiler(bool live) {
    Frame1.Enabled = live;
    Label1s.Enabled = live;
    Label1.Enabled = live;
    HScroll1.Enabled = live;
}

void FrmTemperatura::enableTank(bool live) {
    Frame2.Enabled = live;
    for (int i = 0; i < Refrigerator; ++i) {
        Label2s[i].Enabled = live;
        Label2[i].Enabled = live;
        HScroll2[i].Enabled = live;
    }
}

void FrmTemperatura::showRefrigerator(bool fitted) {
    Label2s[Refrigerator].Visible = fitted;
    Label2[Refrigerator].Visible = fitted;
    HScroll2[Refrigerator].Visible = fitted;
}

void FrmTemperatura::showSetting(int index, ParamValue value) {
    Label& label = Label2[index];
    ScrollBar& bar = HScroll2[index];
    switch (rowOf(index).shown) {
        case Shown::Plain:
            SetBar(label, bar, value);
            break;
        case Shown::Tenths:
            SetBarTenths(label, bar, value);
            break;
        case Shown::TankSetPoint:
            SetBar(label, bar, value);
            if (bar.Value >= TankOff) label.Caption = "OFF";
            break;
        case Shown::Offset:
            SetBar(label, bar, value);
            label.Caption = std::to_string(value - OffsetZero);
            break;
    }
}

void FrmTemperatura::SLabel_Change(int n, ParamValue value) {
    Updating = true;
    if (Arrived(n, master::SectorPresence) && value != Param2) {
        Param2 = value;
        enableTank(SaysPresent(value));
    }
    if (Arrived(n, master::HotDrinkPresence) && value != Param1) {
        Param1 = value;
        enableBoiler(SaysPresent(value));
    }
    if (Arrived(n, hot_drink::CoolingKind)) showRefrigerator(value == RefrigeratorFitted);
    if (Arrived(n, Boiler.setting)) SetBar(Label1, HScroll1, value);
    for (int i = 0; i < Settings; ++i)
        if (Arrived(n, rowOf(i).setting)) showSetting(i, value);
    Updating = false;
}

}  // namespace kestrel
