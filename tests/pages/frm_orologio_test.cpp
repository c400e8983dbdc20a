// The machine's clock and its daily bands on the simulated machine.
// A band written to another band's parameter would switch the machine off in the middle of the day.
#include "pages/climate/frm_orologio.h"

#include <gtest/gtest.h>

#include "support/world.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::World;
using testing::Writes;

/// Hours bar, its parameter and the band's caption; the minutes bar and its parameter stand one beside.
struct Band {
    int bar;
    int hours;
    int minutes;
    const char* caption;
    Frame FrmOrologio::*frame;
};
constexpr Band Bands[] = {
    {0, 200, 199, "Inizio 1", &FrmOrologio::Frame2},   {2, 204, 203, "Fine 1", &FrmOrologio::Frame2},
    {4, 202, 201, "Inizio 2", &FrmOrologio::Frame2},   {6, 206, 205, "Fine 2", &FrmOrologio::Frame2},
    {8, 208, 207, "Lavaggio 1", &FrmOrologio::Frame3}, {10, 210, 209, "Lavaggio 2", &FrmOrologio::Frame3},
    {12, 212, 211, "Inizio 1", &FrmOrologio::Frame4},  {14, 216, 215, "Fine 1", &FrmOrologio::Frame4},
    {16, 214, 213, "Inizio 2", &FrmOrologio::Frame4},  {18, 218, 217, "Fine 2", &FrmOrologio::Frame4},
};

class FrmOrologioTest : public ::testing::Test {
  protected:
    FrmOrologioTest() { world.start(); }
    FrmOrologio& open() { return world.open<FrmOrologio>("FrmOrologio"); }
    /// Puts a date into the running clock and opens the page anew.
    FrmOrologio& openOn(std::uint32_t day, std::uint32_t month, std::uint32_t year) {
        for (Page* page : LoadedPages()) UnloadPage(*page);
        world.setBoard(0, 246, day);
        world.setBoard(0, 247, month);
        world.setBoard(0, 248, year);
        return open();
    }
    World world;
};

TEST_F(FrmOrologioTest, EachBandShowsItsOwnParametersUnderItsNameAndUnit) {
    for (const Band& band : Bands) {
        world.setBoard(0, band.hours, static_cast<std::uint32_t>(band.bar));
        world.setBoard(0, band.minutes, static_cast<std::uint32_t>(30 + band.bar));
    }
    FrmOrologio& page = open();
    for (const Band& band : Bands) {
        EXPECT_EQ(page.HScroll1[band.bar].Value, band.bar) << band.hours;
        EXPECT_EQ(page.Label1[band.bar].Caption.get(), std::to_string(band.bar));
        EXPECT_EQ(page.HScroll1[band.bar + 1].Value, 30 + band.bar) << band.minutes;
        EXPECT_EQ(page.HScroll1[band.bar].Max, 23);
        EXPECT_EQ(page.HScroll1[band.bar + 1].Max, 59);
        EXPECT_EQ(page.HScroll1[band.bar].frame(), &(page.*band.frame)) << band.caption;
        EXPECT_EQ(page.HScroll1[band.bar].accessibleName(), std::string(band.caption) + " ore");
        EXPECT_EQ(page.HScroll1[band.bar + 1].accessibleName(), std::string(band.caption) + " minuti");
    }
}

TEST_F(FrmOrologioTest, AMovedBandIsWrittenToItsParameterAndTheOneTwentyOn) {
    FrmOrologio& page = open();
    for (const Band& band : Bands)
        for (const auto& [bar, parameter, to] : {std::tuple{band.bar, band.hours, 21},  //
                                                 std::tuple{band.bar + 1, band.minutes, 44}}) {
            testing::WriteLog log(world);
            page.HScroll1[bar].UserMove(to);
            ASSERT_TRUE(world.settle());
            const auto value = static_cast<std::uint32_t>(to);
            EXPECT_EQ(log.take(), (Writes{{0, parameter, value}, {0, parameter + 20, value}})) << bar;
            EXPECT_FALSE(page.HScroll1[bar].waiting());
        }
}

TEST_F(FrmOrologioTest, AMovedSettingIsWrittenOnceAndTheMachineTakesItOver) {
    world.machine.setValue(simulator::Board::Master, 244, 30);
    FrmOrologio& page = open();
    const struct {
        ScrollBar& bar;
        int to;
        int parameter;
        int clock;  ///< parameter of the running clock that follows
        Label& shown;
    } cases[] = {{page.HScroll2[0], 23, 239, 245, page.Label4[0]},
                 {page.HScroll2[1], 7, 240, 244, page.Label4[1]},
                 {page.HScroll5[0], 28, 241, 246, page.Label5[0]},
                 {page.HScroll5[1], 2, 242, 247, page.Label5[1]},
                 {page.HScroll5[2], 31, 243, 248, page.Label5[2]}};
    for (const auto& c : cases) {
        testing::WriteLog log(world);
        EXPECT_FALSE(page.Editing);
        CurrentBank = 1;  // where the scan may stand when the user acts
        c.bar.UserMove(c.to);
        EXPECT_TRUE(page.Editing);
        ASSERT_TRUE(world.settle());
        const auto value = static_cast<std::uint32_t>(c.to);
        EXPECT_EQ(log.take(), (Writes{{0, c.parameter, value}}));
        EXPECT_FALSE(page.Editing) << "its value has come back";
        EXPECT_EQ(c.shown.Caption.get(), std::to_string(c.to));
        EXPECT_EQ(world.board(0, c.clock), value);
    }
    world.run(3000);
    EXPECT_EQ(page.iSevenSegmentClockX1.Minutes, 23 * 60 + 7);
    EXPECT_EQ(page.Label6.Caption.get(), "28/02/2031");
}

TEST_F(FrmOrologioTest, TheClockRunsOnThePageAndFillsTheSettingBarsOnce) {
    world.setBoard(0, 245, 9);
    world.setBoard(0, 244, 58);
    FrmOrologio& page = openOn(14, 5, 24);
    world.run(3000);
    EXPECT_EQ(page.iSevenSegmentClockX1.Minutes, 9 * 60 + 58);
    EXPECT_EQ(page.HScroll2[0].Value, 9);
    EXPECT_EQ(page.HScroll2[1].Value, 58);
    EXPECT_EQ(page.HScroll5[2].Value, 24);
    EXPECT_EQ(page.Label5[2].Caption.get(), "24");
    world.run(130'000);
    EXPECT_EQ(page.iSevenSegmentClockX1.Minutes, 10 * 60);
    EXPECT_EQ(page.HScroll2[0].Value, 9) << "a running clock does not move what the user sets";
    EXPECT_EQ(page.HScroll2[1].Value, 58);
}

TEST_F(FrmOrologioTest, ATimeThatNoClockShowsIsPassedOver) {
    world.setBoard(0, 245, 9);
    world.setBoard(0, 244, 15);
    FrmOrologio& page = open();
    world.run(2000);
    ASSERT_EQ(page.iSevenSegmentClockX1.Minutes, 9 * 60 + 15);
    world.setBoard(0, 245, 24);
    world.run(2000);
    EXPECT_EQ(page.iSevenSegmentClockX1.Minutes, 9 * 60 + 15);
    world.setBoard(0, 245, 0);
    world.run(2000);
    EXPECT_EQ(page.iSevenSegmentClockX1.Minutes, 15);
}

TEST_F(FrmOrologioTest, DatesAreShownWithFourDigitsOfTheYearAndTheirFallbacks) {
    const struct {
        std::uint32_t day, month, year;
        const char* shown;
        int dayBar, monthBar;
    } cases[] = {
        {14, 5, 24, "14/05/2024", 14, 5},   {0, 5, 24, "12/05/2024", 12, 5},   {32, 5, 24, "12/05/2024", 12, 5},
        {31, 12, 99, "31/12/2099", 31, 12}, {3, 0, 24, "03/08/2024", 3, 8},    {3, 13, 24, "03/08/2024", 3, 8},
        {1, 1, 0, "01/01/2000", 1, 1},      {29, 2, 0, "29/02/2000", 29, 2},   {29, 2, 4, "29/02/2004", 29, 2},
        {31, 2, 23, "03/03/2023", 31, 2},   {255, 255, 7, "12/08/2007", 12, 8}};
    for (const auto& c : cases) {
        FrmOrologio& page = openOn(c.day, c.month, c.year);
        world.run(2000);
        EXPECT_EQ(page.Label6.Caption.get(), c.shown);
        EXPECT_EQ(page.HScroll5[0].Value, c.dayBar) << c.shown;
        EXPECT_EQ(page.HScroll5[1].Value, c.monthBar) << c.shown;
        EXPECT_EQ(page.HScroll5[2].Value, static_cast<int>(c.year)) << c.shown;
        EXPECT_EQ(page.Label5[0].Caption.get(), std::to_string(c.dayBar));
        EXPECT_EQ(page.Label5[1].Caption.get(), std::to_string(c.monthBar));
    }
}

TEST_F(FrmOrologioTest, TheDateWaitsUntilAllThreeOfItsPartsAreFresh) {
    FrmOrologio& page = openOn(14, 5, 24);
    const auto arrives = [&page](int n, ParamValue value) {
        CurrentBank = 0;
        page.SLabel_Change(n, value);
    };
    page.Label6.Caption = "";
    ParamFlags(0, 248) &= static_cast<std::uint8_t>(~flag::Valid);
    arrives(246, 15);
    arrives(247, 6);
    EXPECT_EQ(page.Label6.Caption.get(), "");
    ParamFlags(0, 248) |= flag::Valid;
    arrives(246, 16);
    EXPECT_EQ(page.Label6.Caption.get(), "16/06/2024") << "any one of them redraws it";
}

TEST_F(FrmOrologioTest, ADateThatAnotherPageHasMadeFreshWaitsForItsPartsHereToo) {
    openOn(14, 5, 24);
    FrmOrologio second;
    CurrentBank = 0;
    second.SLabel_Change(7, 4);
    second.SLabel_Change(246, 14);
    EXPECT_EQ(second.Label6.Caption.get(), "");
    second.SLabel_Change(247, 5);
    second.SLabel_Change(248, 24);
    EXPECT_EQ(second.Label6.Caption.get(), "14/05/2024");
    EXPECT_EQ(second.HScroll5[1].Value, 5);
}

TEST_F(FrmOrologioTest, WithoutAClockTheBandsAloneAreLive) {
    world.setBoard(0, 7, 0xFB);
    world.setBoard(0, 239, 5);
    FrmOrologio& page = open();
    world.run(3000);
    EXPECT_FALSE(page.HScroll2[0].usable());
    EXPECT_FALSE(page.HScroll5[2].usable());
    EXPECT_FALSE(page.Label6.Enabled);
    EXPECT_FALSE(page.iSevenSegmentClockX1.Enabled);
    EXPECT_EQ(page.iSevenSegmentClockX1.Minutes, ClockDisplay::NoTime);
    EXPECT_EQ(page.Label6.Caption.get(), "");
    EXPECT_EQ(page.Label4[0].Caption.get(), "");
    EXPECT_TRUE(page.HScroll1[0].usable());
    world.setBoard(0, 7, 4);
    world.run(3000);
    EXPECT_TRUE(page.HScroll2[0].usable());
    EXPECT_NE(page.Label6.Caption.get(), "");
}

}  // namespace
}  // namespace kestrel
