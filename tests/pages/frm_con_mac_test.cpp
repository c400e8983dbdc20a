// The machine's configuration on the simulated machine: counts, pairings, and when anything may be moved at all.
// A pairing written by the page itself, or a control live too early, would change a recipe that nobody touched.
#include "pages/machine/frm_con_mac.h"

#include <gtest/gtest.h>

#include "support/layouts.h"
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

}  // namespace
}  // namespace kestrel::testing
