// The options on the simulated machine: every bit, scalar and field, and when each board's group is live.
// A bit written from a byte that was never read would wipe out the machine's other options.
#include "pages/machine/frm_opzioni.h"

#include <gtest/gtest.h>

#include "link/identification.h"
#include "support/watches.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

struct Bit {
    int toggle;
    int bank;
    int parameter;
    int shadow;
    int bit;
};
constexpr Bit Bits[] = {{0, 1, 1298, 1300, 0}, {1, 1, 1299, 1301, 1}, {2, 1, 1298, 1300, 2}, {3, 1, 1298, 1300, 3},
                        {4, 1, 1298, 1300, 4}, {5, 1, 1299, 1301, 2}, {8, 2, 59, 274, 3},    {9, 0, 84, 86, 2},
                        {10, 0, 84, 86, 1},    {11, 0, 84, 86, 7},    {12, 0, 85, 87, 5},    {13, 1, 1299, 1301, 0},
                        {14, 2, 59, 274, 0},   {21, 2, 59, 274, 1},   {22, 2, 59, 274, 2}};

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

TEST_F(OptionsPage, EachToggleShowsItsBitAndNoOther) {
    FrmOpzioni& page = open();
    for (const Bit& own : Bits)
        for (const bool set : {true, false}) {
            const unsigned bit = 1U << own.bit;
            arrives(page, own.bank, own.parameter, set ? bit : 0xFF & ~bit);
            for (const Bit& other : Bits) {
                if (other.bank != own.bank || other.parameter != own.parameter) continue;
                EXPECT_EQ(page.SwitchX1[other.toggle].Active, (other.bit == own.bit) == set)
                    << own.toggle << " and " << other.toggle;
            }
        }
}

TEST_F(OptionsPage, AClickTurnsItsBitInTheLastByteThatTheBoardTold) {
    for (const Bit& own : Bits) {
        world.setBoard(own.bank, own.parameter, own.parameter == 85 ? 0xD8 : 0xA5);
        FrmOpzioni& page = open();
        ToggleSwitch& toggle = page.SwitchX1[own.toggle];
        for (int click = 0; click < 2; ++click) {
            const std::uint32_t after = world.board(own.bank, own.parameter) ^ 1U << own.bit;
            const auto act = [&] {
                toggle.UserClick();
                EXPECT_TRUE(toggle.waiting());
            };
            EXPECT_EQ(writesOf(world, act), (Setting{own.bank, own.parameter, own.shadow}.as(after))) << own.toggle;
            EXPECT_EQ(toggle.Active, (after >> own.bit & 1) == 1);
            EXPECT_FALSE(toggle.waiting());
        }
        page.UserClose();
    }
}

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

TEST_F(OptionsPage, SlidersAreShownAndWrittenTwice) {
    world.setBoards({{0, 3, 2}, {0, 350, 7}, {0, 354, 200}, {0, 359, 0}, {1, 1153, 1}});
    FrmOpzioni& page = open();
    EXPECT_EQ(page.HScroll1[0].Value, 180);
    EXPECT_EQ(page.Label10[0].Caption.get(), "200");
    EXPECT_EQ(page.SlswitchX1.Position, 7);
    EXPECT_EQ(page.SlswitchX2.Position, 2);
    EXPECT_EQ(page.SlswitchX4.Position, 1);
    expectMove(world, page.SlswitchX1, 3, Setting{0, 350, 351}.as(3));
    expectMove(world, page.SlswitchX4, 0, Setting{1, 1153, 1158}.as(0));
    EXPECT_EQ(writesOf(world, [&] { page.SlswitchX2.UserMove(1); }), (Setting{0, 359, 360}.as(1)));
    world.run(3000);
    EXPECT_EQ(page.SlswitchX2.Position, 1) << "the master took the decimals over";
    EXPECT_FALSE(page.SlswitchX2.waiting());
    arrives(page, 1, 1153, 1);
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

TEST_F(OptionsPage, NumbersAreCutLimitedAndWrittenOnce) {
    const struct {
        int field;
        const char* typed;
        const char* shown;
        Writes sent;
    } cases[] = {
        {0, "9999997", "999999", {{0, 356, 999999}}}, {1, "65535", "65535", {{0, 357, 65535}}},
        {1, "65536", "4242", {{0, 357, 4242}}},       {2, "9999", "999", {{0, 358, 999}}},
        {3, "-1", "4243", {{0, 361, 4243}}},          {2, "abc", "42", {}},
    };
    for (const auto& c : cases)
        for (const bool byEnter : {true, false}) {
            world.setBoards({{0, 356, 77}, {0, 357, 4242}, {0, 358, 42}, {0, 361, 4243}});
            FrmOpzioni& page = open();
            TextBox& box = page.Text1[c.field];
            const auto commit = [&] {
                box.UserType(c.typed);
                CurrentBank = 1;  // where the scan may stand when the user acts
                byEnter ? box.UserEnter() : box.UserLeave();
                EXPECT_EQ(box.Text.get(), c.shown);
            };
            EXPECT_EQ(writesOf(world, commit), c.sent) << c.typed;
            EXPECT_EQ(box.Text.get(), c.shown);
            EXPECT_FALSE(box.waiting()) << c.typed;
            page.UserClose();
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
