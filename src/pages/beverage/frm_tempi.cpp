// Times: the machine-wide times of the brewing group and of the water circuit.
#include "pages/beverage/frm_tempi.h"

#include <array>

#include "language/language_files.h"
#include "link/presence.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"

namespace kestrel {

namespace {

struct BarRow {
    int line;  ///< of its caption
    int max;   ///< tenths of a second
    Setting setting;
};

/// Bar 4 writes its own parameter twice: its copy is subscribed but left as it is.
constexpr std::array<BarRow, FrmTempi::Bars> BarRows = {{
    {95, 255, hot_drink::TimeCoffeeWater},
    {96, 255, hot_drink::TimeTeaWater},
    {97, 255, hot_drink::TimeCoffeeInfusion},
    {98, 255, hot_drink::TimeTeaInfusion},
    {99, 100, WithCopy(hot_drink::TimeBitterness, hot_drink::TimeBitterness)},
    {103, 250, sector::MotorTimeout},
    {100, 255, hot_drink::PumpTime},
    {101, 60, hot_drink::WaterTopUp},
}};

constexpr std::array<ParamRun, 10> Subscriptions = {{
    {hot_drink::TimeCoffeeWater, hot_drink::TimeBitterness},
    hot_drink::PumpTime,
    hot_drink::WaterTopUp,
    {CopyOf(hot_drink::TimeCoffeeWater), CopyOf(hot_drink::TimeBitterness)},
    CopyOf(hot_drink::PumpTime),
    CopyOf(hot_drink::WaterTopUp),
    sector::MotorTimeout,
    CopyOf(sector::MotorTimeout),
    master::HotDrinkPresence,
    master::SectorPresence,
}};

constexpr int LargeStep = 10;
constexpr int TitleLine = 4;
constexpr int Frame1Line = 94;
constexpr int Frame2Line = 102;

}  // namespace

FrmTempi::FrmTempi() : Page("FrmTempi") {
    for (int i = 0; i < Bars; ++i) {
        HScroll1[i].design(0, BarRows[static_cast<std::size_t>(i)].max, LargeStep);
        HScroll1[i].scale.decimals = 1;
        Label1[i].showsValue("25.5");
    }
    HScroll1.OnChange([this](int Index) { HScroll1_Change(Index); });
}

Layout FrmTempi::Arrange() {
    return Column{
        Group(Frame1, Rows({0, 1, 2, 3, 4, 6, 7}, Label2, HScroll1, Label1)),
        Group(Frame2, Rows({5}, Label2, HScroll1, Label1)),
    };
}

void FrmTempi::Form_Load() {
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
}

void FrmTempi::Form_Activate() { PageCaptions(); }

void FrmTempi::Form_Unload() { PageRelease(); }

void FrmTempi::PageSubscribe() { WatchAll(Subscriptions); }

void FrmTempi::PageRelease() { ReleaseAll(Subscriptions); }

void FrmTempi::PageCaptions() {
    Caption = LanguageTable(TitleLine);
    Frame1.Caption = LanguageTable(Frame1Line);
    Frame2.Caption = LanguageTable(Frame2Line);
    for (int i = 0; i < Bars; ++i) Label2[i].Caption = LanguageTable(BarRows[static_cast<std::size_t>(i)].line);
}

void FrmTempi::HScroll1_Change(int Index) {
    if (Updating) return;
    WriteTwice(BarRows[static_cast<std::size_t>(Index)].setting, static_cast<unsigned>(HScroll1[Index].Value.get()));
}

void FrmTempi::setGroup(Frame& frame, bool live) {
    frame.Enabled = live;
    for (int i = 0; i < Bars; ++i) {
        if (HScroll1[i].frame() != &frame) continue;
        Label1[i].Enabled = live;
        Label2[i].Enabled = live;
        HScroll1[i].Enabled = live;
    }
}

void FrmTempi::SLabel_Change(int n, ParamValue value) {
    Updating = true;
    if (Arrived(n, master::HotDrinkPresence)) setGroup(Frame1, SaysPresent(value));
    if (Arrived(n, master::SectorPresence)) setGroup(Frame2, SaysPresent(value));
    for (int i = 0; i < Bars; ++i)
        if (Arrived(n, BarRows[static_cast<std::size_t>(i)].setting)) SetBarTenths(Label1[i], HScroll1[i], value);
    Updating = false;
}

}  // namespace kestrel
