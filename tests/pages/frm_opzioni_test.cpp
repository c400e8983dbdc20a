// The options on the simulated machine: what goes beyond their tables of switches, bars and fields.
// A bit written from a byte that was never read would wipe out the machine's other options.
#include "pages/machine/frm_opzioni.h"

#include <gtest/gtest.h>

#include "link/identification.h"
#include "support/watches.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

struct OptionsPage : ::testing::Test {
    StartedWorld world{{0, 85, 1}};

    FrmOpzioni& open() {
        auto& page = world.open<FrmOpzioni>("FrmOpzioni");
        world.run(3000);
        return page;
    }
    static void arrives(FrmOpzioni& page, int bank, int n, ParamValue value) {
        CurrentBank = bank;
        page.notify(n, value);
    }
};

TEST_F(OptionsPage, TwoQuickClicksOnOneByteStartFromTheSameValue) {
    world.setBoard(0, 84, 0);
    FrmOpzioni& page = open();
    page.SwitchX1[9].UserClick();
    page.SwitchX1[10].UserClick();
    ASSERT_TRUE(world.settle());
    EXPECT_EQ(world.board(0, 84), 2U) << "the first click is lost, as the second one does not know of it";
    EXPECT_FALSE(page.SwitchX1[9].Active);
}

TEST_F(OptionsPage, CreditTimeoutIsABitOfTheMasterAtRevision20Only) {
    world.setBoards({{0, 84, 0x20}, {2, 59, 0}});
    for (const int revision : {19, 20, 21}) {
        FrmOpzioni& page = open();
        SetBoardRevision(revision);
        const Writes writes = writesOf(world, [&] { page.SwitchX1[8].UserClick(); });
        if (revision == 20) {
            EXPECT_EQ(writes, (Setting{0, 84, 86}.as(0x30)));
            arrives(page, 0, 84, 0x20);
            EXPECT_TRUE(page.SwitchX1[8].Active) << "the master's bit is not read back";
            EXPECT_FALSE(page.SwitchX1[8].waiting());
        } else {
            EXPECT_EQ(writes, (Setting{2, 59, 274}.as(8)));
            world.setBoard(2, 59, 0);
        }
        page.UserClose();
    }
}

TEST_F(OptionsPage, DecimalsAreShownFromWhereTheMasterTakesThemOverAndOverpayIsToldBeyondItsBar) {
    world.setBoards({{0, 3, 2}, {0, 354, 200}, {0, 359, 0}, {1, 1153, 1}});
    FrmOpzioni& page = open();
    EXPECT_EQ(page.HScroll1[0].Value, 180);
    EXPECT_EQ(page.Label10[0].Caption.get(), "200");
    EXPECT_EQ(page.SlswitchX2.Position, 2);
    EXPECT_EQ(writesOf(world, [&] { page.SlswitchX2.UserMove(1); }), (Setting{0, 359, 360}.as(1)));
    world.run(3000);
    EXPECT_EQ(page.SlswitchX2.Position, 1);
    EXPECT_FALSE(page.SlswitchX2.waiting());
    arrives(page, 1, 1153, 2);
    EXPECT_EQ(page.SlswitchX4.Position, 0) << "kinds above one are shown as none";
}

TEST_F(OptionsPage, ThePaymentSystemIsThreeBitsAndTwoOfThemFixTheDecimals) {
    const struct {
        std::uint32_t byte;
        int position;
        bool decimals;  ///< can be set
    } shown[] = {{0, 0, true},  {1, 1, true},  {2, 2, false}, {3, 2, false},
                 {4, 3, false}, {6, 3, false}, {7, 3, false}, {0xF8, 0, true}};
    for (const auto& c : shown) {
        world.setBoard(0, 85, c.byte);
        FrmOpzioni& page = open();
        EXPECT_EQ(page.SlswitchX5.Position, c.position) << c.byte;
        EXPECT_EQ(page.SlswitchX2.usable(), c.decimals) << c.byte;
        EXPECT_EQ(page.Label5[0].Enabled, c.decimals) << c.byte;
        page.UserClose();
    }
    world.setBoard(0, 85, 0xA9);
    FrmOpzioni& page = open();
    EXPECT_EQ(page.SlswitchX5.top(), 3);
    for (const auto& [position, low] : {std::pair{2, 2U}, {3, 4U}, {0, 0U}, {1, 1U}}) {
        expectMove(world, page.SlswitchX5, position, Setting{0, 85, 87}.as(0xA8 | low));
        EXPECT_EQ(page.SlswitchX2.usable(), position < 2);
    }
}

TEST_F(OptionsPage, TheMachinesFeaturesSayHowManyLanguagesItsDisplayHas) {
    world.setBoards({{0, 7, 8}, {0, 350, 5}});
    FrmOpzioni& page = open();
    EXPECT_EQ(page.SlswitchX1.top(), 7);
    EXPECT_EQ(page.SlswitchX1.Position, 5);
    WriteLog log(world);
    world.setBoard(0, 7, 0);
    world.run(2000);
    EXPECT_EQ(page.SlswitchX1.top(), 3);
    EXPECT_EQ(page.SlswitchX1.Position, 0);
    world.setBoard(0, 7, 8);
    world.run(2000);
    EXPECT_EQ(page.SlswitchX1.Position, 0) << "the language that was too high is forgotten";
    arrives(page, 0, 350, 9);
    EXPECT_EQ(page.SlswitchX1.Position, 0);
    EXPECT_EQ(log.take(), Writes{});
}

TEST_F(OptionsPage, RevisionsAreTenthsAndThePowerBoardsIsKeptForOthers) {
    world.setBoards({{0, 158, 27}, {1, 1203, 9}, {2, 283, 110}});
    FrmOpzioni& page = open();
    const char* const revisions[] = {"2.7", "0.9", "11.0"};
    for (int i = 0; i < 3; ++i) EXPECT_EQ(page.Label7[i].Caption.get(), revisions[i]);
    EXPECT_EQ(PowerBoardRevision(), 9);
}

TEST_F(OptionsPage, LeavesTheProbesSubscriptionsBehindAndTakesOthersAway) {
    FrmOpzioni& page = open();
    // Others may be subscribed to what this page gives back without ever having taken it.
    for (const auto& [place, once] : watchesOf("0: 86-87 351 1: 1211 1300-1301")) {
        CurrentBank = place.first;
        ParamWatch(place.second);
    }
    page.UserClose();
    EXPECT_EQ(watches(), watchesOf("1: 1443-1446"));
    open().UserClose();
    EXPECT_EQ(watches(), watchesOf("1: 1443-1446 1443-1446"));
}

}  // namespace
}  // namespace kestrel::testing
