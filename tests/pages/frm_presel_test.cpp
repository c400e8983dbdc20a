// The page of preselections: what it shows and writes, which block locks, and what a smaller number of products does.
// Most of it on the simulated machine; what depends on the order of values is told to the page directly.
#include "pages/beverage/frm_presel.h"

#include <gtest/gtest.h>

#include "shell/language_files.h"
#include "support/arrivals.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::Bench;
using testing::tell;
using testing::World;
using testing::Writes;
using testing::writesOf;

bool leftIs(const FrmPresel& page, bool live) {
    for (int i = 0; i < 4; ++i)
        if (page.Label1[i].Enabled != live || page.HScroll1[i].Enabled != live || page.iSwSliderX1[i].Enabled != live ||
            page.iSwSliderX2[i].Enabled != live)
            return false;
    return true;
}

bool plusIsLive(const FrmPresel& page) {
    for (int i = 4; i < 8; ++i)
        if (!page.HScroll1[i].usable() || !page.Label1[i].Enabled) return false;
    return true;
}

TEST(FrmPresel, ShowsTheFourSettingsOfEachPreselection) {
    World world;
    world.start();
    for (int i = 0; i < 4; ++i) {
        const auto k = static_cast<std::uint32_t>(i);
        world.setBoard(1, 1412 + i, k + 1);
        world.setBoard(1, 1416 + i, k + 2);
        world.setBoard(1, 1420 + i, k + 100);
        world.setBoard(1, 1447 + i, k + 200);
    }
    auto& page = world.open<FrmPresel>("FrmPresel");
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(page.iSwSliderX1[i].Position, i + 1);
        EXPECT_EQ(page.iSwSliderX2[i].Position, i + 2);
        EXPECT_EQ(page.Label1[i].Caption.get(), "10." + std::to_string(i));
        EXPECT_EQ(page.Label1[4 + i].Caption.get(), "20." + std::to_string(i));
        EXPECT_EQ(page.HScroll1[4 + i].Value, 200 + i);
    }
    const char* const heads[] = {"preselezione", "tempo", "prodotto", "tipo", "preselezione", "tempo"};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(page.Label4[i].Caption.get(), heads[i]);
    EXPECT_EQ(page.Label0[2].Caption.get(), "3");
    EXPECT_EQ(page.Label0[6].Caption.get(), "3 Plus");
}

TEST(FrmPresel, EachControlWritesItsSettingAndTheShadow) {
    World world;
    world.start();
    for (int n = 1412; n <= 1423; ++n) world.setBoard(1, n, 0);
    auto& page = world.open<FrmPresel>("FrmPresel");
    for (int i = 0; i < 4; ++i) {
        const auto move = [&] {
            page.iSwSliderX1[i].UserMove(5 - i);
            page.iSwSliderX2[i].UserMove(4 - i);
            page.HScroll1[i].UserMove(50 + i);
            page.HScroll1[4 + i].UserMove(60 + i);
        };
        const auto k = static_cast<std::uint32_t>(i);
        const Writes expected = {{1, 1412 + i, 5 - k},  {1, 1416 + i, 4 - k}, {1, 1420 + i, 50 + k},
                                 {1, 1424 + i, 5 - k},  {1, 1428 + i, 4 - k}, {1, 1432 + i, 50 + k},
                                 {1, 1447 + i, 60 + k}, {1, 1451 + i, 60 + k}};
        EXPECT_EQ(writesOf(world, move), expected) << i;
    }
    EXPECT_EQ(page.Label1[7].Caption.get(), "6.3");
    for (SliderSwitch& slider : page.iSwSliderX2) EXPECT_FALSE(slider.waiting());
}

TEST(FrmPresel, PositionsAreNamedOnceTheProductsAreKnown) {
    const std::pair<std::uint32_t, const char*> cases[] = {{0, "no"}, {1, "no,1"}, {5, "no,1,2,3,4,5"}};
    for (const auto& [products, labels] : cases) {
        World world;
        world.start();
        world.setBoard(1, 1156, products);
        auto& page = world.open<FrmPresel>("FrmPresel");
        EXPECT_EQ(page.iSwSliderX1[3].PositionLabels.get(), labels);
        EXPECT_EQ(page.iSwSliderX2[0].labels().size(), 6U);
        EXPECT_EQ(page.iSwSliderX2[0].labels()[5], LanguageTable(92));
    }
}

TEST(FrmPresel, ATypeBeyondTheLastShowsTheLastAndIsLeftOnTheBoard) {
    World world;
    world.start();
    world.setBoard(1, 1418, 7);
    EXPECT_EQ(writesOf(world, [&] { ShowPage("FrmPresel"); }), Writes());
    EXPECT_EQ(world.open<FrmPresel>("FrmPresel").iSwSliderX2[2].Position, 5);
}

TEST(FrmPresel, AProductThatTheMachineNoLongerHasIsPulledDownOnTheBoardToo) {
    World world;
    world.start();
    const std::uint32_t products[] = {5, 2, 3, 0};
    for (int i = 0; i < 4; ++i) world.setBoard(1, 1412 + i, products[i]);
    auto& page = world.open<FrmPresel>("FrmPresel");
    const auto lower = [] {
        CurrentBank = 1;
        ParamWrite(1156, 2);
    };
    const Writes expected = {{1, 1156, 2}, {1, 1412, 2}, {1, 1414, 2}, {1, 1424, 2}, {1, 1426, 2}};
    EXPECT_EQ(writesOf(world, lower), expected);
    EXPECT_EQ(page.iSwSliderX1[0].Position, 2);
    EXPECT_EQ(page.iSwSliderX1[1].Position, 2);
    EXPECT_EQ(page.iSwSliderX1[0].top(), 2);
}

TEST(FrmPresel, OnlyTheLeftBlockFollowsTheStatus) {
    World world;
    world.start();
    auto& page = world.open<FrmPresel>("FrmPresel");
    for (const bool ready : {true, false, true}) {
        world.setBoard(0, 1, ready ? 4 : 0xFB);
        world.run(2000);
        EXPECT_TRUE(leftIs(page, ready));
        EXPECT_TRUE(plusIsLive(page));
    }
}

TEST(FrmPresel, OpensWithTheLastOfEighteenValues) {
    for (const int last : {1, 1156, 1412, 1450}) {
        Bench bench;
        auto& page = bench.load<FrmPresel>();
        const std::string design = page.iSwSliderX1[0].PositionLabels;
        EXPECT_TRUE(plusIsLive(page)) << "the plus times are live from the start";
        for (int n = 1412; n <= 1450; ++n)
            if (n != last && (n <= 1423 || n >= 1447)) tell(page, 1, n, 3);
        if (last != 1156) tell(page, 1, 1156, 3);
        tell(page, 0, 1, 0);
        if (last != 1) tell(page, 0, 1, 4);
        for (const int uncounted : {1298, 1424, 1451}) tell(page, 1, uncounted, 3);
        EXPECT_TRUE(leftIs(page, false)) << last;
        page.Form_Activate();
        EXPECT_EQ(page.iSwSliderX1[0].PositionLabels.get(), design) << last;
        tell(page, last == 1 ? 0 : 1, last, 4);
        EXPECT_TRUE(leftIs(page, true)) << last;
        EXPECT_NE(page.iSwSliderX1[0].PositionLabels.get(), design) << last;
    }
}

}  // namespace
}  // namespace kestrel
