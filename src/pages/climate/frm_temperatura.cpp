// Temperature set-points: boiler, tank and refrigerator.
#include "pages/climate/frm_temperatura.h"

#include <array>

namespace kestrel {

namespace {

constexpr ParamValue TankOff = 16;     ///< this set-point of the tank switches its cooling off
constexpr int OffsetZero = 5;          ///< of the tank's correction
constexpr int RefrigeratorFitted = 1;  ///< the kind of cooling that has a refrigerator
constexpr const char* Longest = "OFF5";

std::string setPointText(ParamValue value) { return value >= TankOff ? "OFF" : std::to_string(value); }
std::string offsetText(ParamValue value) { return std::to_string(value - OffsetZero); }

/// The boiler's second value goes to where the recipe of a selection has a time.
constexpr Setting BoilerSetting = WithCopy(hot_drink::BoilerSetPoint, hot_drink::Step3MixerTime[17]);
constexpr BarRow Boiler = {310, 70, 110, 5, BoilerSetting, 0, nullptr, Longest};

constexpr std::array<BarRow, FrmTemperatura::Settings> SettingRows = {{
    {312, 8, 16, 2, sector::TankSetPoint, 0, setPointText, Longest},
    {313, 10, 50, 5, sector::TankDelta, 1},
    {314, 1, 12, 2, sector::DefrostEvery, 0, nullptr, Longest},
    {315, 1, 30, 5, sector::DefrostFor, 0, nullptr, Longest},
    {316, 0, 10, 2, sector::TankOffset, 0, offsetText, Longest},
    {317, 5, 100, 5, hot_drink::RefrigeratorSetPoint, 1},
}};
constexpr std::size_t TankOffsetRow = 4;

/// The two spares and their copies are subscribed and not shown.
constexpr std::array<ParamRun, 21> Subscriptions = {{
    hot_drink::BoilerSetPoint,
    hot_drink::RefrigeratorSetPoint,
    hot_drink::CoolingKind,
    CopyOf(BoilerSetting),
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
constexpr int Frame2Line = 311;

}  // namespace

FrmTemperatura::FrmTemperatura() : TablePage("FrmTemperatura", TitleLine, {Subscriptions}) {
    caption(Frame1.Caption, Frame1Line);
    caption(Frame2.Caption, Frame2Line);
    bar(Boiler, Label1s, HScroll1, Label1);
    for (int i = 0; i < Settings; ++i)
        bar(SettingRows[static_cast<std::size_t>(i)], Label2s[i], HScroll2[i], Label2[i]);
    HScroll2[TankOffsetRow].scale.offset = -OffsetZero;

    liveWith(master::HotDrinkPresence, {&Frame1, &Label1s, &Label1, &HScroll1});
    liveWith(master::SectorPresence, {&Frame2});
    for (int i = 0; i < Refrigerator; ++i) liveWith(master::SectorPresence, {&Label2s[i], &Label2[i], &HScroll2[i]});
    whenComes(hot_drink::CoolingKind, [this](ParamValue kind) {
        for (Control* control :
             std::initializer_list<Control*>{&Label2s[Refrigerator], &Label2[Refrigerator], &HScroll2[Refrigerator]})
            control->Visible = kind == RefrigeratorFitted;
    });
}

Layout FrmTemperatura::Arrange() {
    const Layout hotDrink =
        Grid(3, {Label1s, HScroll1, Label1, Label2s[Refrigerator], HScroll2[Refrigerator], Label2[Refrigerator]});
    return Column{
        Group(Frame1, hotDrink),
        Group(Frame2, Rows(Indexes(0, Refrigerator - 1), Label2s, HScroll2, Label2)),
    };
}

}  // namespace kestrel
