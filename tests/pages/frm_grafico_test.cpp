// The temperature graph: what the chart is given, sample by sample, up to the end of what the page can count.
// A wrong sign or a lost fraction would hide a tank that freezes.
#include "pages/climate/frm_grafico.h"

#include <gtest/gtest.h>

#include "platform/trouble.h"
#include "support/world.h"

namespace kestrel::testing {
namespace {

constexpr double FourSeconds = 4.0 / 86400;

struct Graph : ::testing::Test {
    StartedWorld world;
    FrmGrafico& open() { return world.open<FrmGrafico>("FrmGrafico"); }
};
const StripChart::Channel& boiler(const FrmGrafico& page) { return page.iStripChartX1.channels()[0]; }
const StripChart::Channel& tank(const FrmGrafico& page) { return page.iStripChartX1.channels()[1]; }

TEST_F(Graph, ASampleEveryFourSecondsFromTimeZero) {
    world.setBoard(1, 1288, 91);
    FrmGrafico& page = open();
    EXPECT_EQ(boiler(page).name, "caldaia");
    EXPECT_EQ(tank(page).name, "vasca");
    EXPECT_TRUE(page.iStripChartX1.times().empty());
    world.run(20'100);
    const auto& times = page.iStripChartX1.times();
    ASSERT_EQ(times.size(), 5U);
    for (std::size_t i = 0; i < times.size(); ++i) {
        EXPECT_NEAR(times[i], static_cast<double>(i) * FourSeconds, 1e-12);
        EXPECT_EQ(boiler(page).samples[i].index, static_cast<int>(i));
        EXPECT_EQ(boiler(page).samples[i].value, 91);
    }
    page.UserClose();
    EXPECT_TRUE(open().iStripChartX1.times().empty()) << "nothing is kept";
}

TEST_F(Graph, TankTemperatureIsASignedFixedPointNumberWithItsCorrection) {
    const struct {
        std::uint32_t offset;
        std::uint32_t raw;
        double degrees;
    } cases[] = {{5, 0x0A00, 10},   {5, 0x0A80, 10.5}, {5, 0xFF80, -0.5},        {5, 0xF600, -10},   {5, 0x7F00, 127},
                 {5, 0x8000, -128}, {0, 0x0200, -3},   {10, 0x0201, 7.00390625}, {10, 0x7B00, -128}, {4, 0xFF00, -2}};
    for (const auto& c : cases) {
        world.setBoard(2, 52, c.offset);
        world.setBoard(2, 287, c.raw);
        FrmGrafico& page = open();
        world.run(8500);
        EXPECT_EQ(tank(page).samples.back().value, c.degrees) << std::hex << c.raw;
        page.UserClose();
    }
}

TEST_F(Graph, AReadingBeforeItsCorrectionIsFreshIsLeftOut) {
    world.setBoard(2, 52, 5);
    FrmGrafico& page = open();
    const std::uint8_t flags = ParamFlags(2, 52);
    CurrentBank = 2;
    page.SLabel_Change(287, 0x1400);
    ParamFlags(2, 52) &= static_cast<std::uint8_t>(~flag::Valid);
    page.SLabel_Change(287, 0x1E00);
    page.Timer1.Interval = 1;  // before the link brings the tank's own value
    world.run(1.5);
    ParamFlags(2, 52) = flags;
    ASSERT_FALSE(tank(page).samples.empty());
    EXPECT_EQ(tank(page).samples.back().value, 20);
}

TEST_F(Graph, AChannelWithoutItsBoardGetsNoSamplesWhileTimeRunsOn) {
    StartedWorld bare(World::still(true, false));
    auto& page = bare.open<FrmGrafico>("FrmGrafico");
    bare.run(12'100);
    EXPECT_TRUE(tank(page).samples.empty());
    ASSERT_EQ(boiler(page).samples.size(), 3U);
    bare.setBoard(0, 1, 0);  // the hot-drink board goes away
    bare.run(8'000);
    EXPECT_LE(boiler(page).samples.size(), 4U);
    bare.setBoard(0, 1, 4);
    bare.run(12'000);
    EXPECT_EQ(page.iStripChartX1.times().size(), 8U);
    EXPECT_EQ(boiler(page).samples.back().index, 7) << "samples keep their place on the time axis";
}

TEST_F(Graph, The32768thSampleIsTheLastAndEndsTheRunByARunTimeError) {
    FrmGrafico& page = open();
    page.Timer1.Interval = 1;  // a day and a half of samples, without as much traffic
    try {
        world.run(40'000);
        FAIL() << "no overflow";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), error_number::Overflow);
    }
    EXPECT_EQ(page.iStripChartX1.times().size(), 32768U);
    EXPECT_EQ(boiler(page).samples.back().index, 32767);
    EXPECT_NEAR(page.iStripChartX1.times().back(), 32767 * FourSeconds, 1e-6);
}

}  // namespace
}  // namespace kestrel::testing
