// Times: the machine-wide times of the brewing group and of the water circuit.
#include "pages/beverage/frm_tempi.h"

#include <array>

namespace kestrel {

namespace {

constexpr int LargeStep = 10;

/// Bar 4 writes its own parameter twice: its copy is subscribed but left as it is.
constexpr std::array<BarRow, FrmTempi::Bars> BarRows = {{
    {95, 0, 255, LargeStep, hot_drink::TimeCoffeeWater, 1},
    {96, 0, 255, LargeStep, hot_drink::TimeTeaWater, 1},
    {97, 0, 255, LargeStep, hot_drink::TimeCoffeeInfusion, 1},
    {98, 0, 255, LargeStep, hot_drink::TimeTeaInfusion, 1},
    {99, 0, 100, LargeStep, WithCopy(hot_drink::TimeBitterness, hot_drink::TimeBitterness), 1},
    {103, 0, 250, LargeStep, sector::MotorTimeout, 1},
    {100, 0, 255, LargeStep, hot_drink::PumpTime, 1},
    {101, 0, 60, LargeStep, hot_drink::WaterTopUp, 1},
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

constexpr int TitleLine = 4;
constexpr int Frame1Line = 94;
constexpr int Frame2Line = 102;

}  // namespace

FrmTempi::FrmTempi() : TablePage("FrmTempi", TitleLine, {Subscriptions}) {
    caption(Frame1.Caption, Frame1Line);
    caption(Frame2.Caption, Frame2Line);
    liveWith(master::HotDrinkPresence, {&Frame1});
    liveWith(master::SectorPresence, {&Frame2});
    for (int i = 0; i < Bars; ++i) {
        const BarRow& row = BarRows[static_cast<std::size_t>(i)];
        bar(row, Label2[i], HScroll1[i], Label1[i]);
        liveWith(row.setting.board == Board::Sector ? master::SectorPresence : master::HotDrinkPresence,
                 {&Label1[i], &Label2[i], &HScroll1[i]});
    }
}

Layout FrmTempi::Arrange() {
    return Column{
        Group(Frame1, Rows({0, 1, 2, 3, 4, 6, 7}, Label2, HScroll1, Label1)),
        Group(Frame2, Rows({5}, Label2, HScroll1, Label1)),
    };
}

}  // namespace kestrel
