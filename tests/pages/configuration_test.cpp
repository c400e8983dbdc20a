// What a machine is: its counts and pairings, its options, and the numbers that are typed.
// A pairing written by the page itself, or a control live too early, changes a machine that nobody touched.
#include <gtest/gtest.h>

#include "link/identification.h"
#include "pages/common/number_field.h"
#include "pages/machine/frm_con_mac.h"
#include "pages/machine/frm_opzioni.h"
#include "support/bare_mirror.h"
#include "support/layouts.h"
#include "support/watches.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

/// How many controls a user can move now.
int live(FrmConMac& page) { return usableInputs(page.Arrange()); }

/// With so many valves and powders, and the cold pairing or not.
int liveWith(int valves, int powders, bool cold) { return 3 + 1 + valves * 5 + powders + (cold ? 3 : 0); }

struct ConMac : ::testing::Test {
    StartedWorld world{{1, 1153, 1}};
    ConMac() { setCounts(4, 3, 5); }

    void setCounts(std::uint32_t valves, std::uint32_t mixers, std::uint32_t powders) {
        world.setBoards({{1, 1154, valves}, {1, 1155, mixers}, {1, 1156, powders}});
    }
    FrmConMac& open() { return world.open<FrmConMac>("FrmConMac"); }
    static void arrives(FrmConMac& page, int bank, int n, ParamValue value) {
        CurrentBank = bank;
        page.notify(n, value);
    }
};

TEST_F(ConMac, CountsAboveWhatThePageHoldsAreShownClampedAndOnlyValvesAreCorrected) {
    setCounts(6, 5, 6);
    world.setBoard(1, 1157, 6);
    WriteLog log(world);
    FrmConMac& page = open();
    ASSERT_TRUE(world.settle());
    const int counts[] = {3, 2, 4};
    for (int i = 0; i < 3; ++i) EXPECT_EQ(page.iSwSliderX1[i].Position, counts[i]);
    EXPECT_EQ(page.iSwSliderX2.Position, 0);
    EXPECT_EQ(log.take(), (Writes{{1, 1154, 4}}));
    EXPECT_EQ(live(page), liveWith(4, 5, true));
}

TEST_F(ConMac, AChangedCountDisablesThePageUntilItsValueComesBack) {
    const struct {
        int slider, position;
        Setting setting;
        int liveAfter;
    } cases[] = {{0, 1, {1, 1154, 1159}, liveWith(2, 5, true)},
                 {1, 0, {1, 1155, 1160}, liveWith(2, 5, true)},
                 {2, 2, {1, 1156, 1161}, liveWith(2, 3, true)}};
    FrmConMac& page = open();
    for (const auto& c : cases) {
        const auto move = [&] {
            page.iSwSliderX1[c.slider].UserMove(c.position);
            EXPECT_EQ(live(page), 0);
        };
        EXPECT_EQ(writesOf(world, move), c.setting.as(static_cast<std::uint32_t>(c.position + 1)));
        EXPECT_EQ(live(page), c.liveAfter) << c.slider;
        EXPECT_FALSE(page.iSwSliderX1[c.slider].waiting());
    }
}

TEST_F(ConMac, FewerMixersOrPowdersDrawThePairingsClampedAndWriteNoneOfThem) {
    world.setBoards({{1, 1304, 3}, {1, 1309, 5}, {1, 1157, 5}});
    FrmConMac& page = open();
    WriteLog log(world);
    const auto choose = [&](int slider, int position) {
        page.iSwSliderX1[slider].UserMove(position);
        EXPECT_TRUE(world.settle());
    };
    choose(1, 0);
    choose(2, 1);
    EXPECT_EQ(page.iSwRotaryX3[0].Position, 1);
    EXPECT_EQ(page.iSwRotaryX3[0].top(), 1);
    EXPECT_EQ(page.HScroll4[0].Value, 2);
    EXPECT_EQ(page.Label4s[0].Caption.get(), "5") << "the label tells what the board holds";
    EXPECT_EQ(page.iSwSliderX2.Position, 2);
    EXPECT_EQ(log.take(), (Writes{{1, 1155, 1}, {1, 1156, 2}, {1, 1160, 1}, {1, 1161, 2}}));
    choose(1, 2);
    EXPECT_EQ(page.iSwRotaryX3[0].Position, 3) << "the stored pairing is there again";
}

TEST_F(ConMac, AMoveBeyondTheLimitIsRefusedInSilenceAndTheBoardsValueReadAgain) {
    const struct {
        int slider;
        std::uint32_t cold;
        int allowed;  ///< highest position
    } cases[] = {{2, 0, 5}, {2, 3, 5}, {1, 0, 4}, {1, 1, 4}, {0, 0, 5}, {0, 2, 5}, {0, 3, 5}};
    for (const auto& c : cases) {
        setCounts(4, 3, 5);
        world.setBoard(1, 1153, c.cold);
        FrmConMac& page = open();
        SliderSwitch& slider = page.iSwSliderX1[c.slider];
        const int before = slider.Position;
        const auto moveTo = [&](int position) {
            CurrentBank = 0;  // where the scan may stand when the user acts
            slider.UserMove(position);
        };
        const Writes refused = writesOf(world, [&] {
            moveTo(c.allowed + 1);
            EXPECT_EQ(live(page), liveWith(4, 5, c.cold == 1));
        });
        EXPECT_EQ(refused, Writes{});
        EXPECT_EQ(slider.Position, before) << "it has been read again";
        EXPECT_FALSE(slider.waiting());
        EXPECT_FALSE(writesOf(world, [&] { moveTo(c.allowed); }).empty()) << "the limit itself is allowed";
        page.UserClose();
    }
}

// A board that is back unlocks nothing by itself. A count read again does, once a change of valves or mixers has been
// made, but not after a change of powders.
TEST_F(ConMac, ABoardThatIsBackLeavesThePageLockedButForWhatAChangeOfACountHasArmed) {
    const struct {
        int changed;
        int liveAfter;
    } cases[] = {{0, liveWith(2, 5, true)}, {1, liveWith(4, 5, true)}, {2, 0}};
    for (const auto& c : cases) {
        setCounts(4, 3, 5);
        FrmConMac& page = open();
        page.iSwSliderX1[c.changed].UserMove(1);
        ASSERT_TRUE(world.settle());
        arrives(page, 0, 1, 0);
        arrives(page, 0, 1, 4);
        EXPECT_EQ(live(page), 0);
        arrives(page, 1, 1154, c.changed == 0 ? 2 : 4);
        EXPECT_EQ(live(page), c.liveAfter) << c.changed;
        page.UserClose();
    }
}

TEST_F(ConMac, TheColdPairingFollowsTheKindOfCoolingOnceThePageIsFilled) {
    FrmConMac& page = open();
    EXPECT_TRUE(page.isrAbb[2].usable());
    arrives(page, 1, 1153, 2);
    EXPECT_FALSE(page.isrAbb[2].usable());
    EXPECT_FALSE(page.frAbb.Enabled);
    arrives(page, 1, 1153, 1);
    EXPECT_TRUE(page.isrAbb[2].usable());
}

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

constexpr NumberField Field = {{Board::Master, 356}, 5, 65535};
constexpr std::uint32_t BoardsOwn = 777;

TEST(NumberField, TakesTheFirstCharactersOfANumberAndTheBoardsOwnWhereThatIsTooLarge) {
    BareMirror mirror;
    mirror.arrive(0, Field.setting.number, BoardsOwn);
    constexpr auto refused = std::optional<std::uint32_t>();
    const struct {
        const char* separator;
        const char* typed;
        std::optional<std::uint32_t> value;
    } cases[] = {
        {".", "65535", 65535},    {".", "65536", BoardsOwn},
        {".", "+42", 42},         {".", "0042", 42},
        {".", "12.5", 12},        {".", "13.5", 14},
        {".", "7.", 7},           {".", ".7", 1},
        {".", "-0.4", 0},         {".", "-1", BoardsOwn},
        {".", "1.2345678", 1},    {",", "13,5", 14},
        {",", "13.5", refused},   {".", "13,5", refused},
        {".", "1.2.3", refused},  {".", "", refused},
        {".", "   ", refused},    {".", ".", refused},
        {".", "-", refused},      {".", "--1", refused},
        {".", "1e3", refused},    {".", "nan", refused},
        {".", "0x10", refused},   {".", "1 2", refused},
        {".", "    -1", refused}, {".", "999999999999999999999999999999999999999999", BoardsOwn},
        {".", "000001", 0},
    };
    for (const auto& c : cases) {
        mirror.platform.separator = c.separator;
        TextBox box;
        box.Text = c.typed;
        EXPECT_EQ(CommitNumber(box, Field), c.value) << "\"" << c.typed << "\"";
        EXPECT_EQ(box.Text.get(), std::to_string(c.value.value_or(BoardsOwn))) << "\"" << c.typed << "\"";
    }
}

}  // namespace
}  // namespace kestrel::testing
