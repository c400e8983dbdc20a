// The page of times, on the simulated machine: what it shows, what it writes, and when its frames are live.
// Expectations look at the boards, not at the page's own table.
#include "pages/beverage/frm_tempi.h"

#include <gtest/gtest.h>

#include "support/world.h"

namespace kestrel {
namespace {

using testing::World;

struct Bar {
    int index;
    int bank;
    int parameter;
    int shadow;  ///< the other parameter that the board must hold the value in
    int max;
};

constexpr Bar Bars[] = {{0, 1, 1143, 1148, 255}, {1, 1, 1144, 1149, 255}, {2, 1, 1145, 1150, 255},
                        {3, 1, 1146, 1151, 255}, {4, 1, 1147, 1147, 100}, {5, 2, 58, 273, 250},
                        {6, 1, 1439, 1440, 255}, {7, 1, 1441, 1442, 60}};

TEST(FrmTempi, ShowsEachTimeInTenthsWithTheBoardsValueBesideAClampedBar) {
    World world;
    world.start();
    for (const Bar& bar : Bars) world.setBoard(bar.bank, bar.parameter, static_cast<std::uint32_t>(10 + bar.index));
    world.setBoard(1, 1147, 120);
    auto& page = world.open<FrmTempi>("FrmTempi");
    for (const Bar& bar : Bars) {
        if (bar.index == 4) continue;
        EXPECT_EQ(page.HScroll1[bar.index].Value, 10 + bar.index);
        EXPECT_EQ(page.Label1[bar.index].Caption.get(), "1." + std::to_string(bar.index));
    }
    EXPECT_EQ(page.HScroll1[4].Value, 100);
    EXPECT_EQ(page.Label1[4].Caption.get(), "12.0");
}

TEST(FrmTempi, AMovedBarWritesItsParameterThenItsShadowAndShowsOnlyWhatTheBoardConfirmed) {
    for (const Bar& bar : Bars) {
        World world;
        world.start();
        world.setBoard(1, 1152, 77);
        auto& page = world.open<FrmTempi>("FrmTempi");
        const std::string before = page.Label1[bar.index].Caption;
        std::vector<int> written;
        world.machine.onExchange = [&](const simulator::Exchange& exchange) {
            if (exchange.request.write) written.push_back(exchange.parameter);
        };
        page.HScroll1[bar.index].UserMove(bar.max - 1);
        EXPECT_EQ(page.Label1[bar.index].Caption.get(), before);
        EXPECT_TRUE(page.HScroll1[bar.index].waiting());
        ASSERT_TRUE(world.settle());
        const auto value = static_cast<std::uint32_t>(bar.max - 1);
        EXPECT_EQ(world.board(bar.bank, bar.parameter), value);
        EXPECT_EQ(world.board(bar.bank, bar.shadow), value);
        EXPECT_NE(page.Label1[bar.index].Caption.get(), before);
        EXPECT_FALSE(page.HScroll1[bar.index].waiting());
        EXPECT_EQ(world.board(1, 1152), 77U);
        const std::vector<int> expected =
            bar.shadow == bar.parameter ? std::vector<int>{bar.parameter} : std::vector<int>{bar.parameter, bar.shadow};
        EXPECT_EQ(written, expected) << bar.index;
    }
}

TEST(FrmTempi, FramesFollowTheWordsOfPresence) {
    World world;
    world.start();
    auto& page = world.open<FrmTempi>("FrmTempi");
    const int hotDrinkBars[] = {0, 1, 2, 3, 4, 6, 7};
    for (const bool hotDrink : {false, true})
        for (const bool sector : {true, false}) {
            world.setBoard(0, 1, hotDrink ? 0xFF : 0xFB);
            world.setBoard(0, 2, sector ? 4 : 0);
            world.run(3000);
            EXPECT_EQ(page.Frame1.Enabled, hotDrink);
            EXPECT_EQ(page.Frame2.Enabled, sector);
            for (const int i : hotDrinkBars) EXPECT_EQ(page.HScroll1[i].usable(), hotDrink) << i;
            EXPECT_EQ(page.HScroll1[5].usable(), sector);
        }
    page.HScroll1[5].UserMove(99);
    EXPECT_NE(page.HScroll1[5].Value, 99);
}

}  // namespace
}  // namespace kestrel
