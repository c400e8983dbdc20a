// The page of intermittence: which rows open, what a switch or a bar writes, and how the bits are kept.
// Most of it on the simulated machine; what depends on the order of values is told to the page directly.
#include "pages/beverage/frm_inter.h"

#include <gtest/gtest.h>

#include "support/wire_log.h"

namespace kestrel {
namespace {

using testing::tell;
using testing::WireLog;
using testing::World;
using testing::Written;

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
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(page.Label4s[i].Caption.get(), "2." + std::to_string(i));
        EXPECT_EQ(page.HScroll4[i].Value, 20 + i);
        EXPECT_EQ(page.Label5s[i].Caption.get(), "25." + std::to_string(i));
        EXPECT_EQ(page.HScroll5[i].Value, 250 + i);
        EXPECT_EQ(page.iSwSliderX1[i].Position, i == 1 || i == 4 ? 1 : 0) << i;
    }
    page.iSwSliderX1[4].UserMove(0);
    EXPECT_EQ(page.iSwSliderX1[4].Position, 1) << "a locked row takes no move";
}

TEST(FrmInter, ABarWritesItsTimeAndTheShadow) {
    World world;
    world.start();
    auto& page = world.open<FrmInter>("FrmInter");
    WireLog log(world);
    for (int i = 0; i < 5; ++i) {
        page.HScroll4[i].UserMove(100 + i);
        ASSERT_TRUE(world.settle());
        page.HScroll5[i].UserMove(200 + i);
        ASSERT_TRUE(world.settle());
        const auto on = static_cast<std::uint32_t>(100 + i);
        const std::vector<Written> expected = {
            {1, 1370 + i, on}, {1, 1375 + i, on + 100}, {1, 1382 + i, on}, {1, 1387 + i, on + 100}};
        EXPECT_EQ(log.takeWrites(), expected);
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
    for (int i = 0; i < 5; ++i) EXPECT_FALSE(page.iSwSliderX1[i].waiting());
}

TEST(FrmInter, NeverWritesWhatItOnlyShows) {
    World world;
    world.start();
    world.setBoard(1, 1380, 0b11111);
    WireLog log(world);
    world.open<FrmInter>("FrmInter");
    EXPECT_TRUE(log.writes.empty());
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

/// The twelve values that count: status, number of powders, ten times.
void tellAllBut(Page& page, int left) {
    const std::pair<int, int> counted[] = {{0, 1},    {1, 1156}, {1, 1370}, {1, 1371}, {1, 1372}, {1, 1373},
                                           {1, 1374}, {1, 1375}, {1, 1376}, {1, 1377}, {1, 1378}, {1, 1379}};
    for (const auto& [bank, n] : counted)
        if (n != left) tell(page, bank, n, 4);
}

TEST(FrmInter, OpensWithTheLastOfTwelveValuesAndTheBitsDoNotCount) {
    World world;
    for (const int last : {1, 1156, 1370, 1379}) {
        auto& page = dynamic_cast<FrmInter&>(LoadPage(std::make_unique<FrmInter>()));
        tellAllBut(page, last);
        tell(page, 1, 1380, 0);
        tell(page, 1, 1381, 0);
        tell(page, 2, 1370, 9);
        EXPECT_EQ(openRows(page), "-----") << last;
        tell(page, last == 1 ? 0 : 1, last, 4);
        EXPECT_EQ(openRows(page), "oooo-") << last;
        UnloadPage(page);
    }
}

TEST(FrmInter, ReleasesWhatItSubscribed) {
    World world;
    world.start();
    auto& page = world.open<FrmInter>("FrmInter");
    page.UserClose();
    for (int bank = 0; bank < Banks; ++bank)
        for (int n = 1; n < RecordCount(bank); ++n) EXPECT_EQ(ParamTable(bank, n).Watchers, 0) << bank << " " << n;
}

}  // namespace
}  // namespace kestrel
