// The temperature graph: what the chart is given, sample by sample, up to the end of what the page can count.
// A wrong sign or a lost fraction would hide a tank that freezes.
#include "pages/climate/frm_grafico.h"

#include <gtest/gtest.h>

#include "platform/errors.h"
#include "support/bare_mirror.h"

namespace kestrel::testing {
namespace {

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

TEST_F(Graph, The32768thSampleIsTheLastAndEndsTheRunByARunTimeError) {
    mirror.arrive(0, 1, 4);
    try {
        mirror.run(32'769 * 4'000.0);
        FAIL() << "no overflow";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), error_number::Overflow);
    }
    EXPECT_EQ(times.size(), 32768U);
    EXPECT_EQ(boiler.samples.back().index, 32767);
    EXPECT_NEAR(times.back(), 32767 * FourSeconds, 1e-6);
}

}  // namespace
}  // namespace kestrel::testing
