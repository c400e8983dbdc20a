// The page of intermittence: which rows open, what a switch writes, and how the bits are kept.
// On the simulated machine.
#include "pages/beverage/frm_inter.h"

#include <gtest/gtest.h>

#include "support/writes.h"

namespace kestrel::testing {
namespace {

std::string openRows(const FrmInter& page) {
    std::string rows;
    for (int i = 0; i < FrmInter::Powders; ++i) {
        const int live = page.Label3[i].Enabled + page.iSwSliderX1[i].Enabled + page.HScroll4[i].Enabled +
                         page.Label4s[i].Enabled + page.HScroll5[i].Enabled + page.Label5s[i].Enabled;
        rows += live == 6 ? 'o' : live == 0 ? '-' : '?';
    }
    return rows;
}

TEST(FrmInter, OpensAsManyRowsAsTheMachineHasPowdersWhileTheBoardIsReady) {
    const std::pair<std::uint32_t, const char*> cases[] = {
        {0, "-----"}, {1, "o----"}, {3, "ooo--"}, {5, "ooooo"}, {7, "ooooo"}};
    for (const auto& [powders, rows] : cases) {
        StartedWorld world({{1, 1156, powders}});
        auto& page = world.open<FrmInter>("FrmInter");
        EXPECT_EQ(openRows(page), rows) << powders;
        page.Form_Activate();
        EXPECT_EQ(openRows(page), rows) << powders << " again in front";
        world.setBoard(0, 1, 0xF0);
        world.run(2000);
        EXPECT_EQ(openRows(page), "-----") << powders;
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
