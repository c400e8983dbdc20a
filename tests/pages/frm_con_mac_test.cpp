// The machine's configuration on the simulated machine: counts, pairings, and when anything may be moved at all.
// A pairing written by the page itself, or a control live too early, would change a recipe that nobody touched.
#include "pages/machine/frm_con_mac.h"

#include <gtest/gtest.h>

#include <set>

#include "support/world.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::World;
using testing::Writes;

/// How many controls a user can move now.
std::size_t live(FrmConMac& page) {
    std::size_t count = page.iSwSliderX2.usable() ? 1 : 0;
    const auto add = [&count](auto& controls) {
        for (auto& control : controls) count += control.usable() ? 1 : 0;
    };
    add(page.iSwSliderX1);
    add(page.iSwRotaryX3);
    add(page.HScroll4);
    add(page.HScroll5);
    add(page.HScroll6);
    add(page.HScroll7);
    add(page.HScroll8);
    add(page.isrAbb);
    return count;
}

/// With so many valves and powders, and the cold pairing or not.
std::size_t liveWith(int valves, int powders, bool cold) {
    return static_cast<std::size_t>(3 + 1 + valves * 5 + powders + (cold ? 3 : 0));
}

class FrmConMacTest : public ::testing::Test {
  protected:
    FrmConMacTest() {
        world.start();
        setCounts(4, 3, 5);
        world.setBoard(1, 1153, 1);
    }
    void setCounts(std::uint32_t valves, std::uint32_t mixers, std::uint32_t powders) {
        world.setBoard(1, 1154, valves);
        world.setBoard(1, 1155, mixers);
        world.setBoard(1, 1156, powders);
    }
    FrmConMac& open() { return world.open<FrmConMac>("FrmConMac"); }
    static void arrives(FrmConMac& page, int bank, int n, ParamValue value) {
        CurrentBank = bank;
        page.SLabel_Change(n, value);
    }
    World world;
};

TEST_F(FrmConMacTest, EachControlShowsItsParameter) {
    for (int i = 0; i < 4; ++i) {
        const auto n = static_cast<std::uint32_t>(i);
        world.setBoard(1, 1304 + i, 3 - n);
        world.setBoard(1, 1309 + i, n + 1);
        world.setBoard(1, 1314 + i, 5 - n);
        world.setBoard(1, 1319 + i, n);
        world.setBoard(1, 1324 + i, 100 + n);
    }
    for (int i = 0; i < 5; ++i) world.setBoard(1, 1329 + i, static_cast<std::uint32_t>(i));
    for (int i = 0; i < 3; ++i) world.setBoard(1, 1334 + i, static_cast<std::uint32_t>(i + 2));
    world.setBoard(1, 1157, 4);
    FrmConMac& page = open();
    for (int i = 0; i < 3; ++i) {
        const int positions[] = {3, 2, 4};
        EXPECT_EQ(page.iSwSliderX1[i].Position, positions[i]);
        EXPECT_EQ(page.isrAbb[i].Position, std::min(3, i + 2));
    }
    EXPECT_EQ(page.iSwSliderX2.Position, 4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(page.iSwRotaryX3[i].Position, 3 - i);
        EXPECT_EQ(page.Label4s[i].Caption.get(), std::to_string(i + 1));
        EXPECT_EQ(page.Label5s[i].Caption.get(), std::to_string(5 - i));
        EXPECT_EQ(page.Label6s[i].Caption.get(), std::to_string(i));
        EXPECT_EQ(page.Label7s[i].Caption.get(), "10." + std::to_string(i));
        EXPECT_EQ(page.Labelx3[i].Caption.get(), "mixer abbinato all'ev.  " + std::to_string(i + 1));
    }
    for (int i = 0; i < 5; ++i) EXPECT_EQ(page.Label8s[i].Caption.get(), std::to_string(i));
    EXPECT_EQ(page.lblAbb[1].Caption.get(), "abbinamento ev. freddo 3 elettrovalvola");
    const std::pair<const Frame*, const char*> frames[] = {{&page.Frame4, "1°  polvere abbinata all'ev."},
                                                           {&page.Frame5, "2°  polvere abbinata all'ev."},
                                                           {&page.Frame6, "3°  polvere abbinata all'ev."},
                                                           {&page.Frame7, "tempo sgocciolamento ev."},
                                                           {&page.Frame8, "doppio prodotto polvere"}};
    for (const auto& [frame, text] : frames) EXPECT_EQ(frame->Caption.get(), text);
}

TEST_F(FrmConMacTest, EveryMoveIsWrittenToParameterAndShadow) {
    for (int n = 1304; n <= 1336; ++n) world.setBoard(1, n, 0);
    FrmConMac& page = open();
    struct Move {
        std::function<void()> act;
        int parameter;
        int shadow;
        std::uint32_t value;
    };
    std::vector<Move> moves = {{[&] { page.iSwSliderX2.UserMove(2); }, 1157, 1162, 2}};
    for (int i = 0; i < 4; ++i) {
        moves.push_back({[&page, i] { page.iSwRotaryX3[i].UserMove(3); }, 1304 + i, 1337 + i, 3});
        moves.push_back({[&page, i] { page.HScroll4[i].UserMove(5); }, 1309 + i, 1342 + i, 5});
        moves.push_back({[&page, i] { page.HScroll5[i].UserMove(4); }, 1314 + i, 1347 + i, 4});
        moves.push_back({[&page, i] { page.HScroll6[i].UserMove(1); }, 1319 + i, 1352 + i, 1});
        moves.push_back({[&page, i] { page.HScroll7[i].UserMove(255); }, 1324 + i, 1357 + i, 255});
    }
    for (int i = 0; i < 5; ++i) moves.push_back({[&page, i] { page.HScroll8[i].UserMove(4); }, 1329 + i, 1362 + i, 4});
    for (int i = 0; i < 3; ++i) moves.push_back({[&page, i] { page.isrAbb[i].UserMove(2); }, 1334 + i, 1367 + i, 2});
    for (const Move& move : moves) {
        testing::WriteLog log(world);
        move.act();
        ASSERT_TRUE(world.settle());
        EXPECT_EQ(log.take(), (Writes{{1, move.parameter, move.value}, {1, move.shadow, move.value}}));
    }
}

TEST_F(FrmConMacTest, NothingIsLiveBeforeTheThirtyFirstValue) {
    ShowPage("FrmConMac");
    auto& page = dynamic_cast<FrmConMac&>(*FindLoadedPage("FrmConMac"));
    const std::pair<int, ParamValue> first[] = {{1153, 1}, {1154, 4}, {1155, 3}, {1156, 5}, {1157, 0}};
    int count = 0;
    arrives(page, 0, 1, 4);
    for (const auto& [n, value] : first) arrives(page, 1, n, value);
    arrives(page, 0, 1, 4);                                                           // not changed: does not count
    for (const int n : {1298, 1308, 1328, 1334, 1335, 1336}) arrives(page, 1, n, 1);  // nor these
    for (const int run : {1304, 1309, 1314, 1319, 1324})
        for (int i = 0; i < 4; ++i, ++count) arrives(page, 1, run + i, 1);
    for (int i = 0; i < 4; ++i, ++count) arrives(page, 1, 1329 + i, 1);
    ASSERT_EQ(1 + 5 + count, 30);
    EXPECT_EQ(live(page), 0U);
    arrives(page, 1, 1333, 1);
    EXPECT_EQ(live(page), liveWith(4, 5, true));
}

TEST_F(FrmConMacTest, AsManyRowsAreLiveAsThereAreValvesAndPowders) {
    const struct {
        std::uint32_t valves, mixers, powders, cold;
    } cases[] = {{4, 3, 5, 1}, {1, 1, 1, 0}, {2, 3, 4, 2}, {3, 1, 0, 1}, {0, 0, 0, 1}};
    for (const auto& c : cases) {
        setCounts(c.valves, c.mixers, c.powders);
        world.setBoard(1, 1153, c.cold);
        FrmConMac& page = open();
        EXPECT_EQ(live(page), liveWith(static_cast<int>(c.valves), static_cast<int>(c.powders), c.cold == 1))
            << c.valves << c.powders;
        EXPECT_EQ(page.HScroll4[0].Max, static_cast<int>(c.powders));
        EXPECT_EQ(page.HScroll8[4].Max, static_cast<int>(c.powders));
        EXPECT_EQ(page.HScroll7[0].Max, 255);
        if (c.valves > 0) {
            EXPECT_EQ(page.iSwRotaryX3[0].top(), static_cast<int>(c.mixers));
        }
        EXPECT_EQ(page.iSwSliderX2.top(), static_cast<int>(c.powders));
        page.UserClose();
    }
}

TEST_F(FrmConMacTest, CountsAboveWhatThePageHoldsAreShownClampedAndOnlyValvesAreCorrected) {
    setCounts(6, 5, 6);
    world.setBoard(1, 1157, 6);
    testing::WriteLog log(world);
    FrmConMac& page = open();
    ASSERT_TRUE(world.settle());
    EXPECT_EQ(page.iSwSliderX1[0].Position, 3);
    EXPECT_EQ(page.iSwSliderX1[1].Position, 2);
    EXPECT_EQ(page.iSwSliderX1[2].Position, 4);
    EXPECT_EQ(page.iSwSliderX2.Position, 0);
    EXPECT_EQ(log.take(), (Writes{{1, 1154, 4}}));
    EXPECT_EQ(live(page), liveWith(4, 5, true));
}

TEST_F(FrmConMacTest, AChangedCountDisablesThePageUntilItsValueComesBack) {
    const struct {
        int slider, position, parameter, shadow;
        std::size_t liveAfter;
    } cases[] = {{0, 1, 1154, 1159, liveWith(2, 5, true)},
                 {1, 0, 1155, 1160, liveWith(2, 5, true)},
                 {2, 2, 1156, 1161, liveWith(2, 3, true)}};
    FrmConMac& page = open();
    for (const auto& c : cases) {
        testing::WriteLog log(world);
        page.iSwSliderX1[c.slider].UserMove(c.position);
        EXPECT_EQ(live(page), 0U);
        ASSERT_TRUE(world.settle());
        const auto value = static_cast<std::uint32_t>(c.position + 1);
        EXPECT_EQ(log.take(), (Writes{{1, c.parameter, value}, {1, c.shadow, value}}));
        EXPECT_EQ(live(page), c.liveAfter) << c.slider;
        EXPECT_FALSE(page.iSwSliderX1[c.slider].waiting());
    }
}

TEST_F(FrmConMacTest, FewerMixersOrPowdersDrawThePairingsClampedAndWriteNoneOfThem) {
    world.setBoard(1, 1304, 3);
    world.setBoard(1, 1309, 5);
    world.setBoard(1, 1157, 5);
    FrmConMac& page = open();
    testing::WriteLog log(world);
    page.iSwSliderX1[1].UserMove(0);
    ASSERT_TRUE(world.settle());
    page.iSwSliderX1[2].UserMove(1);
    ASSERT_TRUE(world.settle());
    EXPECT_EQ(page.iSwRotaryX3[0].Position, 1);
    EXPECT_EQ(page.iSwRotaryX3[0].top(), 1);
    EXPECT_EQ(page.HScroll4[0].Value, 2);
    EXPECT_EQ(page.Label4s[0].Caption.get(), "5") << "the label tells what the board holds";
    EXPECT_EQ(page.iSwSliderX2.Position, 2);
    EXPECT_EQ(log.take(), (Writes{{1, 1155, 1}, {1, 1156, 2}, {1, 1160, 1}, {1, 1161, 2}}));
    page.iSwSliderX1[1].UserMove(2);
    ASSERT_TRUE(world.settle());
    EXPECT_EQ(page.iSwRotaryX3[0].Position, 3) << "the stored pairing is there again";
}

TEST_F(FrmConMacTest, AMoveBeyondTheLimitIsRefusedInSilenceAndTheBoardsValueReadAgain) {
    const struct {
        int slider;
        std::uint32_t cold;
        int allowed;  ///< highest position
        int parameter;
    } cases[] = {{2, 0, 5, 1156}, {2, 3, 5, 1156}, {1, 0, 4, 1155}, {1, 1, 4, 1155},
                 {0, 0, 5, 1154}, {0, 2, 5, 1154}, {0, 3, 5, 1154}};
    for (const auto& c : cases) {
        setCounts(4, 3, 5);
        world.setBoard(1, 1153, c.cold);
        FrmConMac& page = open();
        const int before = page.iSwSliderX1[c.slider].Position;
        std::multiset<int> reads;
        Writes writes;
        world.machine.onExchange = [&](const simulator::Exchange& exchange) {
            if (exchange.request.write) writes.push_back({1, exchange.parameter, exchange.value});
            if (!exchange.request.write && exchange.request.board == simulator::Board::HotDrink)
                reads.insert(exchange.parameter);
        };
        CurrentBank = 0;  // where the scan may stand when the user acts
        page.iSwSliderX1[c.slider].UserMove(c.allowed + 1);
        EXPECT_EQ(live(page), liveWith(4, 5, c.cold == 1));
        ASSERT_TRUE(world.settle());
        EXPECT_EQ(page.iSwSliderX1[c.slider].Position, before);
        EXPECT_FALSE(page.iSwSliderX1[c.slider].waiting());
        EXPECT_EQ(reads.count(c.parameter), 1U);
        EXPECT_TRUE(writes.empty());
        page.iSwSliderX1[c.slider].UserMove(c.allowed);
        ASSERT_TRUE(world.settle());
        EXPECT_FALSE(writes.empty()) << "the limit itself is allowed";
        world.machine.onExchange = nullptr;
        page.UserClose();
    }
}

TEST_F(FrmConMacTest, WithoutItsBoardNothingIsLiveWhateverArrives) {
    world.setBoard(0, 1, 0);
    FrmConMac& page = open();
    EXPECT_EQ(live(page), 0U);
    for (int round = 0; round < 3; ++round)
        for (int n = 1153; n <= 1157; ++n) arrives(page, 1, n, 1);
    for (int n = 1304; n <= 1336; ++n) arrives(page, 1, n, 1);
    arrives(page, 1, 1153, 1);
    EXPECT_EQ(live(page), 0U);
}

// A board that is back unlocks nothing by itself. A count read again does, once a change of valves or mixers has been
// made, but not after a change of powders.
TEST_F(FrmConMacTest, ABoardThatIsBackLeavesThePageLockedButForWhatAChangeOfACountHasArmed) {
    const struct {
        int changed;
        std::size_t liveAfter;
    } cases[] = {{0, liveWith(2, 5, true)}, {1, liveWith(4, 5, true)}, {2, 0}};
    for (const auto& c : cases) {
        setCounts(4, 3, 5);
        FrmConMac& page = open();
        page.iSwSliderX1[c.changed].UserMove(1);
        ASSERT_TRUE(world.settle());
        arrives(page, 0, 1, 0);
        arrives(page, 0, 1, 4);
        EXPECT_EQ(live(page), 0U);
        arrives(page, 1, 1154, c.changed == 0 ? 2 : 4);
        EXPECT_EQ(live(page), c.liveAfter) << c.changed;
        page.UserClose();
    }
}

TEST_F(FrmConMacTest, TheColdPairingFollowsTheKindOfCoolingOnceThePageIsFilled) {
    FrmConMac& page = open();
    EXPECT_TRUE(page.isrAbb[2].usable());
    arrives(page, 1, 1153, 2);
    EXPECT_FALSE(page.isrAbb[2].usable());
    EXPECT_FALSE(page.frAbb.Enabled);
    arrives(page, 1, 1153, 1);
    EXPECT_TRUE(page.isrAbb[2].usable());
}

}  // namespace
}  // namespace kestrel
