// The temperature set-points on the simulated machine: scales, limits, frames and the refrigerator's row.
// A set-point shown or written in a wrong scale spoils goods or scalds.
#include "pages/climate/frm_temperatura.h"

#include <gtest/gtest.h>

#include "support/world.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::World;
using testing::Writes;

constexpr int Boiler = -1;

ScrollBar& bar(FrmTemperatura& page, int index) { return index == Boiler ? page.HScroll1 : page.HScroll2[index]; }
Label& value(FrmTemperatura& page, int index) { return index == Boiler ? page.Label1 : page.Label2[index]; }

class FrmTemperaturaTest : public ::testing::Test {
  protected:
    FrmTemperatura& open() { return world.open<FrmTemperatura>("FrmTemperatura"); }
    World world;
};

TEST_F(FrmTemperaturaTest, EachValueHasItsScaleAndItsLimits) {
    const struct {
        int setting;
        int bank;
        int parameter;
        std::uint32_t board;
        int bar;
        const char* shown;
    } cases[] = {
        {Boiler, 1, 1199, 95, 95, "95"}, {Boiler, 1, 1199, 69, 70, "69"}, {Boiler, 1, 1199, 200, 110, "200"},
        {0, 2, 51, 10, 10, "10"},        {0, 2, 51, 15, 15, "15"},        {0, 2, 51, 16, 16, "OFF"},
        {0, 2, 51, 20, 16, "OFF"},       {0, 2, 51, 4, 8, "4"},           {1, 2, 53, 25, 25, "2.5"},
        {1, 2, 53, 9, 10, "0.9"},        {1, 2, 53, 255, 50, "25.5"},     {2, 2, 56, 12, 12, "12"},
        {2, 2, 56, 0, 1, "0"},           {3, 2, 57, 31, 30, "31"},        {4, 2, 52, 4, 4, "-1"},
        {4, 2, 52, 0, 0, "-5"},          {4, 2, 52, 10, 10, "5"},         {4, 2, 52, 12, 10, "7"},
        {5, 1, 1200, 50, 50, "5.0"},     {5, 1, 1200, 4, 5, "0.4"},       {5, 1, 1200, 101, 100, "10.1"},
    };
    world.start();
    for (const auto& c : cases) {
        world.setBoard(c.bank, c.parameter, c.board);
        FrmTemperatura& page = open();
        EXPECT_EQ(bar(page, c.setting).Value, c.bar) << c.parameter << " = " << c.board;
        EXPECT_EQ(value(page, c.setting).Caption.get(), c.shown) << c.parameter << " = " << c.board;
        page.UserClose();
    }
}

TEST_F(FrmTemperaturaTest, AMoveIsWrittenUnscaledToBothParameters) {
    const struct {
        int setting;
        int to;
        Writes sent;
    } cases[] = {
        {Boiler, 110, {{1, 376, 110}, {1, 1199, 110}}}, {0, 16, {{2, 51, 16}, {2, 266, 16}}},
        {1, 50, {{2, 53, 50}, {2, 268, 50}}},           {2, 1, {{2, 56, 1}, {2, 271, 1}}},
        {3, 30, {{2, 57, 30}, {2, 272, 30}}},           {4, 0, {{2, 52, 0}, {2, 267, 0}}},
        {5, 100, {{1, 1200, 100}, {1, 1202, 100}}},
    };
    world.start();
    FrmTemperatura& page = open();
    for (const auto& c : cases) {
        testing::WriteLog log(world);
        bar(page, c.setting).UserMove(c.to);
        ASSERT_TRUE(world.settle());
        EXPECT_EQ(log.take(), c.sent);
        EXPECT_FALSE(bar(page, c.setting).waiting());
    }
}

TEST_F(FrmTemperaturaTest, TheRefrigeratorShowsOnlyWhereTheCoolingUnitIsOne) {
    world.start();
    for (const std::uint32_t kind : {1U, 0U, 2U, 1U}) {
        world.setBoard(1, 1153, kind);
        FrmTemperatura& page = open();
        for (const bool visible :
             {page.Label2s[5].Visible.get(), page.HScroll2[5].Visible.get(), page.Label2[5].Visible.get()})
            EXPECT_EQ(visible, kind == 1) << kind;
        EXPECT_TRUE(page.HScroll1.Visible);
        page.UserClose();
    }
}

TEST_F(FrmTemperaturaTest, EachFrameIsLiveExactlyWhileItsBoardIsThere) {
    world.start();
    FrmTemperatura& page = open();
    for (const bool hotDrink : {false, true})
        for (const bool sector : {true, false}) {
            world.setBoard(0, 1, hotDrink ? 4 : 0xF3);
            world.setBoard(0, 2, sector ? 0xFF : 0);
            world.run(3000);
            EXPECT_EQ(page.HScroll1.usable(), hotDrink);
            EXPECT_EQ(page.HScroll2[5].usable(), hotDrink);
            EXPECT_EQ(page.Label1.Enabled, hotDrink);
            for (int i = 0; i < 5; ++i) {
                EXPECT_EQ(page.HScroll2[i].usable(), sector) << i;
                EXPECT_EQ(page.Label2[i].Enabled, sector) << i;
            }
        }
}

TEST_F(FrmTemperaturaTest, AWordOfPresenceThatIsNotNewTouchesNothing) {
    world.start();
    FrmTemperatura& page = open();
    page.Frame1.Enabled = false;
    page.Frame2.Enabled = false;
    world.run(5000);  // the words are read again and again
    EXPECT_FALSE(page.Frame1.Enabled);
    EXPECT_FALSE(page.Frame2.Enabled);
}

}  // namespace
}  // namespace kestrel
