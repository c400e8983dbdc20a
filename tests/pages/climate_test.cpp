// Temperatures, their course over time, and the clock with its bands.
// A set-point shown in a wrong scale spoils goods or scalds; a wrong clock serves at night.
#include <gtest/gtest.h>

#include "pages/climate/frm_grafico.h"
#include "pages/climate/frm_orologio.h"
#include "pages/climate/frm_temperatura.h"
#include "platform/errors.h"
#include "support/bare_mirror.h"
#include "support/layouts.h"
#include "support/world.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

TEST(FrmTemperatura, AValueBeyondItsBarIsToldAsItIsAndTheTankSwitchesOffAtSixteen) {
    const struct {
        int setting;
        BoardValue board;
        int bar;
        const char* shown;
    } cases[] = {{0, {2, 51, 15}, 15, "15"}, {0, {2, 51, 16}, 16, "OFF"},   {0, {2, 51, 20}, 16, "OFF"},
                 {0, {2, 51, 4}, 8, "4"},    {1, {2, 53, 255}, 50, "25.5"}, {4, {2, 52, 0}, 0, "-5"}};
    for (const auto& c : cases) {
        StartedWorld world({c.board});
        auto& page = world.open<FrmTemperatura>("FrmTemperatura");
        EXPECT_EQ(page.HScroll2[c.setting].Value, c.bar) << c.board;
        EXPECT_EQ(page.Label2[c.setting].Caption.get(), c.shown) << c.board;
    }
}

TEST(FrmTemperatura, OnlyANewWordOfPresenceTouchesFramesAndFigures) {
    StartedWorld world;
    auto& page = world.open<FrmTemperatura>("FrmTemperatura");
    const std::initializer_list<Control*> ruled = {&page.Frame1, &page.Frame2, &page.Label1, &page.Label2[0]};
    for (Control* control : ruled) control->Enabled = false;
    world.run(5000);  // the words are read again and again
    for (const Control* control : ruled) EXPECT_FALSE(control->Enabled);
    world.setBoards({{0, 1, 12}, {0, 2, 12}});
    world.run(3000);
    for (const Control* control : ruled) EXPECT_TRUE(control->Enabled);
}

TEST(FrmTemperatura, TheRefrigeratorShowsOnlyWhereTheCoolingUnitIsOne) {
    for (const std::uint32_t kind : {0U, 1U, 2U}) {
        StartedWorld world({{1, 1153, kind}});
        auto& page = world.open<FrmTemperatura>("FrmTemperatura");
        for (const Control* control :
             std::initializer_list<const Control*>{&page.Label2s[5], &page.HScroll2[5], &page.Label2[5]})
            EXPECT_EQ(control->Visible, kind == 1) << kind;
        EXPECT_TRUE(page.HScroll1.Visible);
    }
}

constexpr double FourSeconds = 4.0 / 86400;

struct Graph : ::testing::Test {
    BareMirror mirror;
    FrmGrafico& page = mirror.load<FrmGrafico>();
    const std::vector<double>& times = page.iStripChartX1.times();
    const StripChart::Channel& boiler = page.iStripChartX1.channels()[0];
    const StripChart::Channel& tank = page.iStripChartX1.channels()[1];
};

TEST_F(Graph, GetsASampleEveryFourSecondsFromTimeZeroOfTheChannelsWhoseBoardsAreThere) {
    EXPECT_EQ(boiler.name, "Boiler");
    EXPECT_EQ(tank.name, "Cedar tank");
    mirror.arrive(0, 1, 4);
    mirror.arrive(0, 2, 0xFB);
    mirror.arrive(1, 1288, 91);
    mirror.run(3'999);
    EXPECT_TRUE(times.empty());
    mirror.run(8'001);
    mirror.arrive(0, 1, 0);
    mirror.run(8'000);
    mirror.arrive(0, 1, 4);
    mirror.run(4'000);
    ASSERT_EQ(times.size(), 6U);
    for (std::size_t i = 0; i < times.size(); ++i) EXPECT_NEAR(times[i], static_cast<double>(i) * FourSeconds, 1e-12);
    const int indexes[] = {0, 1, 2, 5};
    ASSERT_EQ(boiler.samples.size(), std::size(indexes));
    for (std::size_t i = 0; i < std::size(indexes); ++i) {
        EXPECT_EQ(boiler.samples[i].index, indexes[i]) << "samples keep their place on the time axis";
        EXPECT_EQ(boiler.samples[i].value, 91);
    }
    EXPECT_TRUE(tank.samples.empty());
    mirror.arrive(0, 2, 4);
    mirror.run(4'000);
    ASSERT_EQ(tank.samples.size(), 1U);
    EXPECT_EQ(tank.samples[0].index, 6);
}

TEST_F(Graph, TankTemperatureIsASignedFixedPointNumberWithItsFreshCorrection) {
    const struct {
        std::uint32_t offset;
        std::uint32_t raw;
        double degrees;
    } cases[] = {{5, 0x0A00, 10},   {5, 0x0A80, 10.5}, {5, 0xFF80, -0.5},        {5, 0xF600, -10},   {5, 0x7F00, 127},
                 {5, 0x8000, -128}, {0, 0x0200, -3},   {10, 0x0201, 7.00390625}, {10, 0x7B00, -128}, {4, 0xFF00, -2}};
    mirror.arrive(0, 2, 4);
    for (const auto& c : cases) {
        mirror.arrive(2, 52, c.offset);
        mirror.arrive(2, 287, c.raw);
        mirror.run(4'000);
        ASSERT_FALSE(tank.samples.empty());
        EXPECT_EQ(tank.samples.back().value, c.degrees) << std::hex << c.raw;
    }
    ParamFlags(2, 52) = 0;
    mirror.arrive(2, 287, 0x1400);
    mirror.run(4'000);
    EXPECT_EQ(tank.samples.back().value, -2) << "without its correction a reading is left out";
}

struct Clock : ::testing::Test {
    StartedWorld world{{0, 245, 9}, {0, 244, 15}};

    /// Opens the page and lets its polled clock arrive.
    FrmOrologio& open() {
        auto& page = world.open<FrmOrologio>("FrmOrologio");
        world.run(2000);
        return page;
    }
    /// Puts a date into the running clock and opens the page anew.
    FrmOrologio& openOn(std::uint32_t day, std::uint32_t month, std::uint32_t year) {
        for (Page* page : LoadedPages()) UnloadPage(*page);
        world.setBoards({{0, 246, day}, {0, 247, month}, {0, 248, year}});
        return open();
    }
};

TEST_F(Clock, BarsEndWithTheDayTheHourAndTheCalendar) {
    FrmOrologio& page = open();
    for (int bar = 0; bar < FrmOrologio::BandBars; ++bar)
        EXPECT_EQ(page.HScroll1[bar].Max, bar % 2 == 0 ? 23 : 59) << bar;
    for (const auto& [bar, last] : {std::pair(0, 31), {1, 12}, {2, 99}}) EXPECT_EQ(page.HScroll5[bar].Max, last);
}

TEST_F(Clock, AMovedSettingIsWrittenOnceAndTheMachineTakesItOver) {
    FrmOrologio& page = open();
    const struct {
        ScrollBar& bar;
        int to;
        int parameter;
        int clock;  ///< parameter of the running clock that follows
        Label& shown;
    } cases[] = {{page.HScroll2[0], 23, 239, 245, page.Label4[0]},
                 {page.HScroll2[1], 7, 240, 244, page.Label4[1]},
                 {page.HScroll5[0], 28, 241, 246, page.Label5[0]},
                 {page.HScroll5[1], 2, 242, 247, page.Label5[1]},
                 {page.HScroll5[2], 31, 243, 248, page.Label5[2]}};
    for (const auto& c : cases) {
        const auto value = static_cast<std::uint32_t>(c.to);
        const auto move = [&] {
            CurrentBank = 1;  // where the scan may stand when the user acts
            EXPECT_FALSE(page.Editing);
            c.bar.UserMove(c.to);
            EXPECT_TRUE(page.Editing);
        };
        EXPECT_EQ(writesOf(world, move), (Writes{{0, c.parameter, value}}));
        EXPECT_FALSE(page.Editing) << "its value has come back";
        EXPECT_EQ(c.shown.Caption.get(), std::to_string(c.to));
        EXPECT_EQ(world.board(0, c.clock), value);
    }
    world.run(3000);
    EXPECT_EQ(page.iSevenSegmentClockX1.Minutes, 23 * 60 + 7);
    EXPECT_EQ(page.Label6.Caption.get(), "28/02/2031");
}

TEST_F(Clock, RunsOnThePageFillsTheSettingBarsOnceAndPassesOverATimeThatNoClockShows) {
    FrmOrologio& page = openOn(14, 5, 24);
    const int opened = page.iSevenSegmentClockX1.Minutes;
    EXPECT_EQ(opened, 9 * 60 + 15);
    EXPECT_EQ(page.Label5[2].Caption.get(), "24");
    world.run(130'000);
    EXPECT_EQ(page.iSevenSegmentClockX1.Minutes, opened + 2);
    const std::tuple<std::uint32_t, std::uint32_t, int> times[] = {
        {23, 59, 23 * 60 + 59}, {24, 5, 23 * 60 + 59}, {0, 60, 5}, {0, 6, 6}};
    for (const auto& [hours, minutes, shown] : times) {
        CurrentBank = 0;
        page.notify(245, hours);
        page.notify(244, minutes);
        EXPECT_EQ(page.iSevenSegmentClockX1.Minutes, shown) << hours << ":" << minutes;
    }
    page.notify(246, 15);
    EXPECT_EQ(page.Label6.Caption.get(), "15/05/2024");
    EXPECT_EQ(page.HScroll2[0].Value, 9) << "a running clock does not move what the user sets";
    EXPECT_EQ(page.HScroll2[1].Value, 15);
    EXPECT_EQ(page.HScroll5[0].Value, 14);
}

TEST_F(Clock, DatesAreShownWithFourDigitsOfTheYearAndTheirFallbacks) {
    const struct {
        std::uint32_t day, month, year;
        const char* shown;
        int dayBar, monthBar;
    } cases[] = {
        {14, 5, 24, "14/05/2024", 14, 5},   {0, 5, 24, "12/05/2024", 12, 5},   {32, 5, 24, "12/05/2024", 12, 5},
        {31, 12, 99, "31/12/2099", 31, 12}, {3, 0, 24, "03/08/2024", 3, 8},    {3, 13, 24, "03/08/2024", 3, 8},
        {1, 1, 0, "01/01/2000", 1, 1},      {29, 2, 0, "29/02/2000", 29, 2},   {29, 2, 4, "29/02/2004", 29, 2},
        {31, 2, 23, "03/03/2023", 31, 2},   {255, 255, 7, "12/08/2007", 12, 8}};
    for (const auto& c : cases) {
        FrmOrologio& page = openOn(c.day, c.month, c.year);
        EXPECT_EQ(page.Label6.Caption.get(), c.shown);
        EXPECT_EQ(page.HScroll5[0].Value, c.dayBar) << c.shown;
        EXPECT_EQ(page.HScroll5[1].Value, c.monthBar) << c.shown;
        EXPECT_EQ(page.HScroll5[2].Value, static_cast<int>(c.year)) << c.shown;
        EXPECT_EQ(page.Label5[0].Caption.get(), std::to_string(c.dayBar));
        EXPECT_EQ(page.Label5[1].Caption.get(), std::to_string(c.monthBar));
    }
}

TEST_F(Clock, WithoutAClockTheBandsAloneAreLive) {
    // Its frame, two displays, five settings of three controls each, the time over two of them with its caption, and
    // the button.
    constexpr int OfTheClock = 3 + 5 * 3 + 3 + 1;
    world.setBoards({{0, 7, 0xFB}, {0, 239, 5}});
    FrmOrologio& page = open();
    EXPECT_EQ(usableInputs(page.Arrange()), FrmOrologio::BandBars + FrmOrologio::BandCount);
    EXPECT_EQ(page.iSevenSegmentClockX1.Minutes, ClockDisplay::NoTime);
    EXPECT_EQ(page.Label6.Caption.get() + page.Label4[0].Caption.get(), "");
    const int live = liveControls(page.Arrange());
    world.setBoard(0, 7, 4);
    world.run(3000);
    EXPECT_EQ(liveControls(page.Arrange()), live + OfTheClock);
    EXPECT_NE(page.Label6.Caption.get(), "");
}

TEST_F(Clock, ATimeIsEnteredWholeAndWritesThosePartsThatDiffer) {
    world.setBoards({{0, 200, 6}, {0, 199, 30}});
    FrmOrologio& page = open();
    TimeBar& time = page.BandTimes[0];
    EXPECT_EQ(time.Figure.Caption.get(), "06:30");
    const std::pair<const char*, Writes> rows[] = {
        {"7:15", {{0, 199, 15}, {0, 200, 7}, {0, 219, 15}, {0, 220, 7}}},
        {"0745", {{0, 199, 45}, {0, 219, 45}}},
        {"8.45", {{0, 200, 8}, {0, 220, 8}}},
        {"9", {{0, 199, 0}, {0, 200, 9}, {0, 219, 0}, {0, 220, 9}}},
        {"23:60", {}},
        {"24:00", {}},
        {"7:", {}},
        {"7:5:1", {}},
    };
    for (const auto& [typed, writes] : rows) {
        time.Bar.UserType(typed);
        EXPECT_EQ(writesOf(world, [&time] { time.Bar.UserLeave(); }), writes) << typed;
        EXPECT_EQ(time.Bar.standing(), writes.empty() ? Standing::NotTaken : Standing::Confirmed) << typed;
    }
    EXPECT_EQ(time.Figure.Caption.get(), "09:00") << "as the board has it";
}

TEST_F(Clock, IsSetToThisComputersTimeInAllItsParts) {
    FrmOrologio& page = open();
    for (int again = 0; again < 2; ++again)
        EXPECT_EQ(writesOf(world, [&page] { page.SetToComputer.UserClick(); }),
                  (Writes{{0, 239, 10}, {0, 240, 0}, {0, 241, 2}, {0, 242, 3}, {0, 243, 26}}))
            << "though the bars stand there already, the clock may have gone on";
    EXPECT_EQ(world.board(0, 245), 10U);
    EXPECT_EQ(page.ClockTime.Figure.Caption.get(), "10:00");
}

}  // namespace
}  // namespace kestrel::testing
