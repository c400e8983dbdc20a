// The temperature set-points on the simulated machine: scales, limits, frames and the refrigerator's row.
// A set-point shown in a wrong scale spoils goods or scalds.
#include "pages/climate/frm_temperatura.h"

#include <gtest/gtest.h>

#include "support/world.h"

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

}  // namespace
}  // namespace kestrel::testing
