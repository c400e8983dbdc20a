// The page of preselections: its switches, and what a smaller number of products does to them.
// On the simulated machine.
#include "pages/beverage/frm_presel.h"

#include <gtest/gtest.h>

#include "language/language_files.h"
#include "support/bare_mirror.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

TEST(FrmPresel, PositionsAreNamedOnceTheProductsAreKnown) {
    {
        BareMirror mirror;
        auto& loading = mirror.load<FrmPresel>();
        loading.Form_Activate();
        EXPECT_EQ(loading.iSwSliderX1[0].PositionLabels.get(), "0,1,2,3,4,5") << "as it was drawn";
    }
    const std::pair<std::uint32_t, const char*> cases[] = {{0, "no"}, {1, "no,1"}, {5, "no,1,2,3,4,5"}};
    for (const auto& [products, labels] : cases) {
        StartedWorld world({{1, 1156, products}});
        auto& page = world.open<FrmPresel>("FrmPresel");
        EXPECT_EQ(page.iSwSliderX1[3].PositionLabels.get(), labels);
        EXPECT_EQ(page.iSwSliderX2[0].labels().size(), 6U);
        EXPECT_EQ(page.iSwSliderX2[0].labels()[5], LanguageTable(92));
    }
}

TEST(FrmPresel, ATypeBeyondTheLastShowsTheLastAndIsLeftOnTheBoard) {
    StartedWorld world({{1, 1418, 7}});
    EXPECT_EQ(writesOf(world, [&] { ShowPage("FrmPresel"); }), Writes());
    EXPECT_EQ(world.open<FrmPresel>("FrmPresel").iSwSliderX2[2].Position, 5);
}

TEST(FrmPresel, AProductThatTheMachineNoLongerHasIsPulledDownOnTheBoardToo) {
    StartedWorld world({{1, 1412, 5}, {1, 1413, 2}, {1, 1414, 3}, {1, 1415, 0}});
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

}  // namespace
}  // namespace kestrel::testing
