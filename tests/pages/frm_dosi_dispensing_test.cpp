// Test dispensing from the page of doses: what goes into the mailbox, when the page is locked, and how a test ends.
// The simulated machine dispenses; its counters and its busy bit are its own.
#include <gtest/gtest.h>

#include "platform/outside.h"
#include "support/bare_mirror.h"
#include "support/doses.h"

namespace kestrel::testing {
namespace {

constexpr unsigned Busy = 2;

bool isBusy(const Doses& doses) { return (doses.world.board(0, 7) & Busy) != 0; }

/// Everything that a test dispense may leave changed: the mailbox and the counters of test vends.
Boards withoutTraces(Boards difference, int selection) {
    for (const int n : {4, 5, 6, 162, 370}) difference.erase({0, n});
    difference.erase({1, 1270 + selection});
    return difference;
}

TEST(TestDispensing, APowderTestNamesSelectionSolenoidAndTimeAndLocksForItsTimeAndASecond) {
    for (const int selection : {0, 11}) {
        Doses doses;
        auto& page = doses.openAt(selection);
        page.HScroll1[5].UserMove(1);
        page.HScroll3[9].UserMove(255);
        ASSERT_TRUE(doses.world.settle());
        ControlArray<CommandButton, 3>* tests[] = {&page.Command1, &page.Command2, &page.Command3};
        const int times[3][3] = {{487, 583, 679}, {519, 615, 711}, {551, 647, 743}};
        for (int step = 0; step < 3; ++step)
            for (int solenoid = 0; solenoid < 3; ++solenoid) {
                SCOPED_TRACE(std::to_string(step) + " " + std::to_string(solenoid));
                const Boards before = doses.boards();
                const std::uint32_t time = doses.world.board(1, times[step][solenoid] + selection);
                doses.writes.clear();
                (*tests[step])[solenoid].UserClick();
                EXPECT_FALSE(page.HScroll7.usable() || page.Command2[1].usable() || page.Command4[0].usable());
                EXPECT_NEAR(doses.msUntilOpen(page), time * 100 + 1000, 2);
                doses.world.run(2000);
                ASSERT_TRUE(doses.world.settle());
                EXPECT_FALSE(isBusy(doses));
                const Writes expected = {{0, 4, 18},
                                         {0, 5, static_cast<std::uint32_t>(selection)},
                                         {0, 6, static_cast<std::uint32_t>(3 * step + solenoid)},
                                         {0, 370, time}};
                ASSERT_EQ(sorted(doses.writes), expected);
                EXPECT_EQ(doses.writes.back(), expected.front()) << "the command goes out last";
                EXPECT_TRUE(withoutTraces(changed(before, doses.boards()), selection).empty());
                const int counter = 1270 + selection;
                EXPECT_EQ(doses.world.board(1, counter), before.at({1, counter}) + 1);
            }
    }
}

TEST(TestDispensing, APowderTestWithoutATimeLocksForATenthAndDispensesNothing) {
    Doses doses;
    auto& page = doses.openAt(3);
    page.HScroll2[7].UserMove(0);
    ASSERT_TRUE(doses.world.settle());
    const Boards before = doses.boards();
    page.Command2[1].UserClick();
    EXPECT_NEAR(doses.msUntilOpen(page), 100, 2);
    doses.world.run(2000);
    EXPECT_EQ(doses.world.board(1, 1273), before.at({1, 1273}));
    EXPECT_TRUE(withoutTraces(changed(before, doses.boards()), 3).empty());
}

TEST(TestDispensing, AFullTestNamesTheKeyAndPreselectionAndLocksUntilTheMachineHasDispensed) {
    const struct {
        int selection;
        std::uint32_t key;
        std::uint32_t preselected;
    } cases[] = {{0, 1, 0}, {8, 9, 0}, {9, 1, 1}, {17, 9, 1}};
    const std::uint32_t codes[] = {26, 2};
    for (const auto& each : cases)
        for (int button = 0; button < 2; ++button) {
            SCOPED_TRACE(std::to_string(each.selection) + " " + std::to_string(button));
            Doses doses;
            auto& page = doses.openAt(each.selection);
            const Boards before = doses.boards();
            doses.writes.clear();
            page.Command4[button].UserClick();
            doses.world.run(3000);
            const Writes expected = {{0, 4, codes[button]}, {0, 5, each.key}, {0, 6, each.preselected}};
            ASSERT_EQ(sorted(doses.writes), expected);
            EXPECT_EQ(doses.writes.back(), expected.front()) << "the command goes out last";
            ASSERT_TRUE(isBusy(doses));
            EXPECT_FALSE(page.HScroll7.usable()) << "the two seconds of waiting are over";
            EXPECT_TRUE(page.TestLamp.Active);
            for (const std::uint32_t word : {0U, 4U}) {
                doses.world.setBoard(0, 1, word);
                doses.world.run(1000);
                EXPECT_FALSE(page.HScroll7.usable()) << "a board that goes and comes back ends no test";
            }
            ASSERT_TRUE(isBusy(doses));
            while (isBusy(doses)) doses.world.run(10);
            EXPECT_LT(doses.msUntilOpen(page), 1000);
            ASSERT_TRUE(doses.world.settle());
            EXPECT_TRUE(page.Command3[2].usable());
            EXPECT_FALSE(page.TestLamp.Active);
            const int counter = 1270 + each.selection;
            EXPECT_EQ(doses.world.board(0, 162), before.at({0, 162}) + 1);
            EXPECT_EQ(doses.world.board(1, counter), before.at({1, counter}) + 1);
            EXPECT_TRUE(withoutTraces(changed(before, doses.boards()), each.selection).empty());
        }
}

TEST(TestDispensing, AFullTestThatNeverStartsOpensThePageAfterTwoSeconds) {
    Doses doses;
    auto& page = doses.openAt(4, 0, 0, 0);
    const Boards before = doses.boards();
    page.Command4[1].UserClick();
    say(page, 0, 7, 0xFF & ~Busy);
    EXPECT_NEAR(doses.msUntilOpen(page), 2000, 2 + PatienceMs);
    ASSERT_TRUE(doses.world.settle());
    EXPECT_TRUE(withoutTraces(changed(before, doses.boards()), 4).empty());
    EXPECT_EQ(doses.world.board(1, 1274), before.at({1, 1274}));
    say(page, 0, 5, 5);
    ASSERT_TRUE(doses.world.settle());
    EXPECT_EQ(doses.world.board(0, 4), 0U) << "no test waits any more: its echo releases command 0";
}

TEST(TestDispensing, TheMachinesEndOfWorkDoesNotEndAPowderTest) {
    Doses doses;
    auto& page = doses.openAt(0);
    page.HScroll1[5].UserMove(100);
    ASSERT_TRUE(doses.world.settle());
    page.Command1[0].UserClick();
    doses.world.run(500);
    say(page, 0, 7, Busy);
    say(page, 0, 7, 0);
    EXPECT_FALSE(page.HScroll7.usable());
    say(page, 0, 1, 0x14);
    EXPECT_FALSE(page.HScroll7.usable()) << "nor does a status of readiness";
    EXPECT_NEAR(doses.msUntilOpen(page), 10'500, 2);
    doses.world.machine.setBoardSilent(simulator::Board::Master, true);
    page.Command4[0].UserClick();
    EXPECT_NEAR(doses.msUntilOpen(page), 2000, 2 + PatienceMs)
        << "what the powder test saw of the machine is forgotten";
}

/// The page over a bare mirror, open, with 3.0 s for the second powder of step 1.
struct DispensingOrders : ::testing::Test {
    BareMirror mirror;
    FrmDosi& page = mirror.load<FrmDosi>();

    struct Order {
        CommandButton& button;
        Writes mailbox;
        BoardValue command;
        double givenUpAfterMs;
    };
    const std::array<Order, 2> orders = {{
        {page.Command1[1], {{0, 5, 0}, {0, 6, 1}, {0, 370, 30}}, {0, 4, 18}, 4000},
        {page.Command4[1], {{0, 5, 1}, {0, 6, 0}}, {0, 4, 2}, 2000},
    }};

    DispensingOrders() {
        mirror.arrive(1, 583, 30);
        mirror.arrive(0, 1, 4);
    }
    void arriveAll(const Writes& values) {
        for (const BoardValue& each : values) mirror.arrive(each.bank, each.parameter, each.value);
    }
};

TEST_F(DispensingOrders, AnOrderIsCommandedOnceAndOnlyWhenTheBoardHasTakenAllOfIt) {
    for (const Order& order : orders)
        for (const BoardValue& lost : order.mailbox) {
            order.button.UserClick();
            EXPECT_EQ(mirror.due(), order.mailbox);
            mirror.arrive(lost.bank, lost.parameter, lost.value + 9);
            for (const BoardValue& write : mirror.due()) mirror.deliver(write.bank, write.parameter);
            EXPECT_EQ(mirror.due(), Writes{}) << lost << " was lost: the board would run another order";
            mirror.arrive(lost.bank, lost.parameter, lost.value);
            EXPECT_EQ(mirror.deliverAll(), Writes{order.command});
            arriveAll(order.mailbox);
            EXPECT_EQ(mirror.due(), Writes{}) << "what is read once more runs nothing once more";
            mirror.run(order.givenUpAfterMs + 1);
            EXPECT_TRUE(page.HScroll7.usable());
            mirror.arrive(0, 5, 3);
            EXPECT_EQ(mirror.deliverAll(), (Writes{{0, 4, 0}})) << "without a test its echo releases command 0";
        }
}

/// However far the order got: a line that comes back after minutes must not open a valve.
TEST_F(DispensingOrders, WhatIsGivenUpNeverGoesOut) {
    for (const bool closes : {false, true})
        for (const Order& order : orders)
            for (const bool interrupted : {false, true})
                for (const bool mailboxTaken : {false, true}) {
                    if (!FindLoadedPage("FrmDosi")) return;
                    order.button.UserClick();
                    if (mailboxTaken)
                        for (const BoardValue& write : order.mailbox) mirror.deliver(write.bank, write.parameter);
                    EXPECT_EQ(mirror.due(), mailboxTaken ? Writes{order.command} : order.mailbox);
                    CurrentBank = 2;
                    if (interrupted) {
                        page.LineInterrupted();
                        EXPECT_EQ(mirror.due(), Writes{});
                    }
                    closes ? UnloadPage(page) : mirror.run(order.givenUpAfterMs + 1);
                    EXPECT_EQ(mirror.due(), Writes{});
                    EXPECT_TRUE(closes || CurrentBank == 2) << "the scan is not moved";
                }
}

TEST_F(DispensingOrders, AVendOfTheMachinesOwnAndAnEditOfBeforeOpenNoPageInATest) {
    mirror.arrive(0, 7, Busy);
    mirror.arrive(0, 7, 0);
    mirror.arrive(1, 7, 1);
    page.HScroll1[0].UserMove(3);
    page.Command4[0].UserClick();
    mirror.arrive(0, 7, 0);
    mirror.deliverAll();
    mirror.arrive(1, 7, 3);
    EXPECT_FALSE(page.HScroll7.usable());
    mirror.arrive(0, 7, Busy);
    mirror.arrive(0, 7, 0);
    EXPECT_TRUE(page.HScroll7.usable());
}

}  // namespace
}  // namespace kestrel::testing
