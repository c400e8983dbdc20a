// The page of intermittence: which rows open, and how the bits of its switches are kept.
// On the simulated machine.
#include "pages/beverage/frm_inter.h"

#include <gtest/gtest.h>

#include "support/layouts.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

TEST(FrmInter, OpensAsManyRowsAsTheMachineHasPowdersWhileTheBoardIsReady) {
    const std::pair<std::uint32_t, int> cases[] = {{0, 0}, {1, 1}, {3, 3}, {5, 5}, {7, 5}};
    for (const auto& [powders, rows] : cases) {
        constexpr int Heads = 7, OfARow = 6;
        StartedWorld world({{1, 1156, powders}});
        auto& page = world.open<FrmInter>("FrmInter");
        EXPECT_EQ(liveControls(page.Arrange()), Heads + OfARow * rows) << powders;
        page.Form_Activate();
        EXPECT_EQ(liveControls(page.Arrange()), Heads + OfARow * rows) << powders << " again in front";
        world.setBoard(0, 1, 0xF0);
        world.run(2000);
        EXPECT_EQ(liveControls(page.Arrange()), Heads) << powders;
        page.Form_Activate();
        EXPECT_EQ(liveControls(page.Arrange()), Heads) << powders << " in front without its board";
    }
}

TEST(FrmInter, SwitchesMovedBeforeTheBoardAnswersBuildOnOneAnotherAndLockedRowsShowTheirs) {
    StartedWorld world({{1, 1156, 4}, {1, 1380, 0b10100}});
    auto& page = world.open<FrmInter>("FrmInter");
    for (int i = 0; i < 5; ++i) EXPECT_EQ(page.iSwSliderX1[i].Position, i == 2 || i == 4 ? 1 : 0) << i;
    const auto move = [&] {
        page.iSwSliderX1[0].UserMove(1);
        page.iSwSliderX1[2].UserMove(0);
        page.iSwSliderX1[3].UserMove(1);
        page.iSwSliderX1[4].UserMove(0);  // locked
    };
    EXPECT_EQ(writesOf(world, move), (Setting{1, 1380, 1392}.as(0b11001)));
    for (const SliderSwitch& slider : page.iSwSliderX1) EXPECT_FALSE(slider.waiting());
}

}  // namespace
}  // namespace kestrel::testing
