// The orders of the In/Out page over a bare mirror: mailbox first, the command only behind all of it, and nothing of an
// order once it was given up. What an order must not do, it drives on a machine that is open.
#include "support/in_out.h"

namespace kestrel::testing {
namespace {

TEST_F(InOut, StartAndStopGoToTheBoardsThatAreThereMailboxFirst) {
    mirror.deliverAll();
    struct {
        std::uint32_t hotDrinkWord, sectorWord, time;
        Writes mailboxes, commands;
    } const rows[] = {{There, There, 60, {{1, 2, 60}, {2, 285, 60}}, {{1, 1, 1}, {2, 284, 1}}},
                      {There, 0, 60, {{1, 2, 60}}, {{1, 1, 1}}},
                      {0, There, 60, {{2, 285, 60}}, {{2, 284, 1}}},
                      {There, There, 0, {{1, 2, 0}, {2, 285, 0}}, {{1, 1, 1}, {2, 284, 1}}}};
    for (const auto& row : rows) {
        presence(row.hotDrinkWord, row.sectorWord);
        if (row.time == 0) report(true, true);
        page.Command1.UserClick();
        EXPECT_FALSE(page.Command1.Enabled);
        EXPECT_EQ(mirror.due(), row.mailboxes);
        const auto mailboxesArrive = [&] {
            for (const BoardValue& write : row.mailboxes) mirror.deliver(write.bank, write.parameter);
            return mirror.due();
        };
        EXPECT_EQ(mailboxesArrive(), row.commands);
        mirror.deliverAll();
        EXPECT_EQ(mailboxesArrive(), Writes{}) << "a command goes out once";
    }
}

/// A lost write is followed by a read, after which the mirror is fresh: with the old value, here a test time whose bits
/// would be two water valves and two brewer valves.
TEST_F(InOut, AMailboxThatHoldsSomethingElseIsNeverPutIntoForce) {
    startTest();
    page.SwitchLed1[30].UserClick();
    for (const int n : {3, 4, 5, 6}) mirror.deliver(1, n);
    mirror.arrive(1, 2, 60);
    EXPECT_FALSE(isDue({1, 1, 2}));
    mirror.run(5001);
    page.SwitchLed3[9].UserClick();
    mirror.deliver(2, 285);
    mirror.arrive(2, 286, 4);
    EXPECT_FALSE(isDue({2, 284, 2}));
    mirror.run(5001);
    EXPECT_EQ(live(), Both);
    // A reply of another bank that is filed here while the write is still due looks fresh as well.
    page.SwitchLed1[30].UserClick();
    for (const int n : {3, 4, 5, 6}) mirror.deliver(1, n);
    ParamFlags(1, 2) |= flag::Valid;
    mirror.arrive(1, 6, 0);
    EXPECT_FALSE(isDue({1, 1, 2}));
}

TEST_F(InOut, WorkOnOneBoardPutsTheOtherOnesTestTimeUp) {
    startTest();
    struct {
        LedSwitch& clicked;
        BoardValue rearm, command;
    } const rows[] = {{page.SwitchLed1[0], {2, 285, 60}, {2, 284, 1}},
                      {page.SwitchLed3[0], {1, 2, 60}, {1, 1, 1}},
                      {page.SwitchLed4, {1, 2, 60}, {1, 1, 1}}};
    for (const auto& row : rows)
        for (const std::uint32_t other : {There, 0U}) {
            mirror.arrive(0, row.rearm.bank, other);
            row.clicked.UserClick();
            EXPECT_EQ(isDue(row.rearm), other == There);
            EXPECT_EQ(std::ranges::count(mirror.deliverAll(), row.command), other == There ? 1 : 0);
            mirror.run(5001);
            presence(There, There);
        }
}

/// However far the order got: a line that comes back after minutes must not start a pump.
TEST_F(InOut, WhatIsGivenUpNeverGoesOut) {
    startTest();
    for (LedSwitch* clicked : {&page.SwitchLed1[18], &page.SwitchLed3[9], &page.SwitchLed4})
        for (const bool mailboxesTaken : {false, true}) {
            clicked->UserClick();
            if (mailboxesTaken)
                for (const BoardValue& write : mirror.due()) mirror.deliver(write.bank, write.parameter);
            const Writes left = mirror.due();
            EXPECT_EQ(left.size(), mailboxesTaken ? 2U : clicked == &page.SwitchLed1[18] ? 6U : 3U);
            CurrentBank = 0;
            mirror.run(5001);
            EXPECT_EQ(CurrentBank, 0) << "the scan is not moved";
            EXPECT_EQ(mirror.due(), Writes{});
            for (const BoardValue& write : left) mirror.arrive(write.bank, write.parameter, write.value);
            EXPECT_EQ(mirror.due(), Writes{}) << "nor does a command follow a mailbox that came after all";
        }
    // Two echoes of before the order unlock the switches, and end no wait of it.
    for (const bool mailboxTaken : {false, true}) {
        page.SwitchLed1[18].UserClick();
        for (int n = 2; mailboxTaken && n <= 6; ++n) mirror.deliver(1, n);
        for (const int n : {285, 284}) mirror.deliver(2, n);
        for (int echo = 0; echo < 2; ++echo) mirror.arrive(1, 1294, 0);
        EXPECT_EQ(live(), Both);
        mirror.run(5001);
        EXPECT_EQ(mirror.due(), Writes{});
    }
    page.SwitchLed1[18].UserClick();
    page.LineInterrupted();
    EXPECT_EQ(mirror.due(), Writes{});
    mirror.run(5001);
    page.SwitchLed1[18].UserClick();
    UnloadPage(page);
    EXPECT_EQ(mirror.due(), (Writes{{0, 368, 0}, {0, 369, 0}}));
}

TEST_F(InOut, StopTakesTheOutputsBackAndStaysGivenItself) {
    startTest();
    const Writes stop = {{1, 2, 0}, {2, 285, 0}};
    for (LedSwitch* clicked : {&page.SwitchLed1[18], &page.SwitchLed3[9]})
        for (const bool mailboxesTaken : {false, true}) {
            clicked->UserClick();
            if (mailboxesTaken)
                for (const BoardValue& write : mirror.due()) mirror.deliver(write.bank, write.parameter);
            page.Command1.UserClick();
            EXPECT_EQ(mirror.due(), stop);
            mirror.run(5001);
            EXPECT_EQ(mirror.due(), stop) << "the end of the wait for an output is none of the stop";
            EXPECT_EQ(mirror.deliverAll(), (Writes{{1, 2, 0}, {2, 285, 0}, {1, 1, 1}, {2, 284, 1}}));
            report(false, false);
            report(true, true);
        }
    page.SwitchLed1[18].UserClick();
    mirror.arrive(0, 1, 0);
    page.Command1.UserClick();
    EXPECT_EQ(mirror.due(), (Writes{{2, 285, 0}})) << "nor do they wait for a board that comes back";
}

/// Echoes of before the order unlock the switches early; a click on the other board must then leave the order alone.
TEST_F(InOut, ARearmedTestTimeDoesNotTakeThePlaceOfOutputsThatAreOnTheirWay) {
    startTest();
    page.SwitchLed1[0].UserClick();
    for (int reading = 0; reading < 2; ++reading) mirror.arrive(1, 1292, 0);
    page.SwitchLed3[0].UserClick();
    EXPECT_TRUE(isDue({1, 2, 1}));
    for (int reading = 0; reading < 2; ++reading) echoOfSector(0, 0);
    page.SwitchLed1[0].UserClick();
    EXPECT_TRUE(isDue({2, 285, 1}));
}

TEST_F(InOut, NoOutputCanBeOrderedBeforeAllThatTheOrderWritesHaveBeenRead) {
    UnloadPage(page);
    auto& anew = mirror.load<FrmInOut>();
    startTest();
    const auto check = [&](bool hotDrink, bool sector) {
        EXPECT_EQ(anew.SwitchLed1[0].usable(), hotDrink);
        EXPECT_EQ(anew.SwitchLed3[0].usable() && anew.SwitchLed4.usable(), sector);
    };
    mirror.arrive(2, 289, 1);
    for (const int byte : {0, 1, 2, 4}) mirror.arrive(1, 1292 + byte, 1);
    check(false, false);
    echoOfSector(0x81, 1);
    check(false, true);
    anew.SwitchLed4.UserClick();
    EXPECT_TRUE(isDue({2, 285, 1}) && isDue({2, 286, 1}));
    mirror.arrive(1, 1295, 1);
    check(false, false);
    mirror.run(5001);
    check(true, true);
    anew.SwitchLed1[7].UserClick();
    EXPECT_EQ(mirror.due(), (Writes{{1, 2, 0x81}, {1, 3, 1}, {1, 4, 1}, {1, 5, 1}, {1, 6, 1}, {2, 285, 60}}));
}

/// The image's first byte would be taken for the time.
TEST_F(InOut, OutputsTakeThePlaceOfATestTimeThatIsOnItsWay) {
    startTest();
    page.SwitchLed3[0].UserClick();
    mirror.deliver(1, 2);
    EXPECT_TRUE(isDue({1, 1, 1}));
    for (int reading = 0; reading < 2; ++reading) echoOfSector(0, 0);
    page.SwitchLed1[7].UserClick();
    EXPECT_TRUE(isDue({1, 2, 128}));
    EXPECT_FALSE(isDue({1, 1, 1}));
}

}  // namespace
}  // namespace kestrel::testing
