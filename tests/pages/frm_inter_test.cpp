// The page of intermittence: which rows open, what a switch or a bar writes, and how the bits are kept.
// On the simulated machine; only what depends on the count of values is told to the page directly.
#include "pages/beverage/frm_inter.h"

#include <gtest/gtest.h>

#include "support/arrivals.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::Bench;
using testing::tell;
using testing::World;
using testing::Writes;
using testing::writesOf;

std::string openRows(const FrmInter& page) {
    std::string rows;
    for (int i = 0; i < FrmInter::Powders; ++i) {
        const int live = page.Label3[i].Enabled + page.iSwSliderX1[i].Enabled + page.HScroll4[i].Enabled +
                         page.Label4s[i].Enabled + page.HScroll5[i].Enabled + page.Label5s[i].Enabled;
        rows += live == 6 ? 'o' : live == 0 ? '-' : '?';
    }
    return rows;
}

TEST(FrmInter, OpensAsManyRowsAsTheMachineHasPowders) {
    const std::pair<std::uint32_t, const char*> cases[] = {
        {0, "-----"}, {1, "o----"}, {3, "ooo--"}, {5, "ooooo"}, {7, "ooooo"}};
    for (const auto& [powders, rows] : cases) {
        World world;
        world.start();
        world.setBoard(1, 1156, powders);
        auto& page = world.open<FrmInter>("FrmInter");
        EXPECT_EQ(openRows(page), rows) << powders;
        page.Form_Activate();
        EXPECT_EQ(openRows(page), rows) << powders << " again in front";
    }
}

TEST(FrmInter, ShowsTimesInTenthsAndTheSwitchesOfLockedRowsToo) {
    World world;
    world.start();
    world.setBoard(1, 1156, 2);
    world.setBoard(1, 1380, 0b10010);
    for (int i = 0; i < 5; ++i) {
        world.setBoard(1, 1370 + i, static_cast<std::uint32_t>(20 + i));
        world.setBoard(1, 1375 + i, static_cast<std::uint32_t>(250 + i));
    }
    auto& page = world.open<FrmInter>("FrmInter");
    const char* const heads[] = {"polvere", "abilitazione", "tempo on", "tempo off"};
    for (int i = 0; i < 4; ++i) EXPECT_EQ(page.Label1[i].Caption.get(), heads[i]);
    EXPECT_EQ(page.Label2[2].Caption.get(), "intermittenza");
    EXPECT_EQ(page.iSwSliderX1[0].PositionLabels.get(), "Off,On");
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(page.Label4s[i].Caption.get(), "2." + std::to_string(i));
        EXPECT_EQ(page.HScroll4[i].Value, 20 + i);
        EXPECT_EQ(page.Label5s[i].Caption.get(), "25." + std::to_string(i));
        EXPECT_EQ(page.HScroll5[i].Value, 250 + i);
        EXPECT_EQ(page.iSwSliderX1[i].Position, i == 1 || i == 4 ? 1 : 0) << i;
    }
    EXPECT_EQ(writesOf(world, [&] { page.iSwSliderX1[4].UserMove(0); }), Writes()) << "a locked row takes no move";
}

TEST(FrmInter, ABarWritesItsTimeAndTheShadow) {
    World world;
    world.start();
    auto& page = world.open<FrmInter>("FrmInter");
    for (int i = 0; i < 5; ++i) {
        const auto on = static_cast<std::uint32_t>(100 + i);
        const auto move = [&] {
            page.HScroll4[i].UserMove(100 + i);
            page.HScroll5[i].UserMove(200 + i);
        };
        const Writes expected = {
            {1, 1370 + i, on}, {1, 1375 + i, on + 100}, {1, 1382 + i, on}, {1, 1387 + i, on + 100}};
        EXPECT_EQ(writesOf(world, move), expected);
        EXPECT_EQ(page.Label4s[i].Caption.get(), "10." + std::to_string(i));
    }
}

TEST(FrmInter, SwitchesMovedBeforeTheBoardAnswersBuildOnOneAnother) {
    World world;
    world.start();
    world.setBoard(1, 1380, 0b00100);
    auto& page = world.open<FrmInter>("FrmInter");
    page.iSwSliderX1[0].UserMove(1);
    page.iSwSliderX1[2].UserMove(0);
    page.iSwSliderX1[4].UserMove(1);
    ASSERT_TRUE(world.settle());
    EXPECT_EQ(world.board(1, 1380), 0b10001U);
    EXPECT_EQ(world.board(1, 1392), 0b10001U);
    for (const SliderSwitch& slider : page.iSwSliderX1) EXPECT_FALSE(slider.waiting());
}

TEST(FrmInter, StaysLockedUntilTheBoardIsReadyAndFollowsItAfterwards) {
    World world;
    world.start();
    world.setBoard(0, 1, 0);
    auto& page = world.open<FrmInter>("FrmInter");
    EXPECT_EQ(openRows(page), "-----");
    for (const bool ready : {true, false, true}) {
        world.setBoard(0, 1, ready ? 4 : 0xF0);
        world.run(2000);
        EXPECT_EQ(openRows(page), ready ? "ooooo" : "-----");
    }
}

TEST(FrmInter, OpensWithTheLastOfTwelveValuesAndTheBitsDoNotCount) {
    const std::pair<int, int> counted[] = {{0, 1},    {1, 1156}, {1, 1370}, {1, 1371}, {1, 1372}, {1, 1373},
                                           {1, 1374}, {1, 1375}, {1, 1376}, {1, 1377}, {1, 1378}, {1, 1379}};
    for (const auto& last : counted) {
        Bench bench;
        auto& page = bench.load<FrmInter>();
        for (const auto& value : counted)
            if (value != last) tell(page, value.first, value.second, 4);
        for (const int uncounted : {1380, 1381, 1382}) tell(page, 1, uncounted, 0);
        tell(page, 2, 1370, 9);
        EXPECT_EQ(openRows(page), "-----") << last.second;
        tell(page, last.first, last.second, 4);
        EXPECT_EQ(openRows(page), "oooo-") << last.second;
    }
}

}  // namespace
}  // namespace kestrel
