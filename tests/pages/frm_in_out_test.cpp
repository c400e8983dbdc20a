// The In/Out page over a bare mirror: which lamp stands for which bit, how an output is asked for, what unlocks it.
// Rules of the boards are written out here as a technician would check them with a meter.
#include "pages/test/frm_in_out.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/bare_mirror.h"
#include "support/layouts.h"

namespace kestrel::testing {
namespace {

constexpr int Red = 255;
constexpr int Green = 65280;
constexpr std::uint32_t There = 4;
constexpr int No = -1;

using Numbers = std::vector<int>;

struct InOut : ::testing::Test {
    BareMirror mirror;
    FrmInOut& page = mirror.load<FrmInOut>();

    InOut() {
        for (int byte = 0; byte < 5; ++byte) mirror.arrive(1, 1292 + byte, 0);
        echoOfCedar(0, 0);
    }
    void presence(std::uint32_t alderWord, std::uint32_t cedarWord) {
        mirror.arrive(0, 1, alderWord);
        mirror.arrive(0, 2, cedarWord);
    }
    void report(bool alderInTest, bool cedarInTest) {
        mirror.arrive(1, 1297, alderInTest ? 1 : 0);
        mirror.arrive(2, 290, cedarInTest ? 1 : 0);
    }
    /// Both boards there and in test, and what was written so far out of the way.
    void startTest() {
        presence(There, There);
        report(true, true);
        mirror.deliverAll();
    }
    void echoOfCedar(std::uint32_t group, std::uint32_t bit) {
        mirror.arrive(2, 288, group);
        mirror.arrive(2, 289, bit);
    }
    bool isDue(const BoardValue& write) { return std::ranges::count(mirror.due(), write) > 0; }
    /// The boards whose switches can all be worked; "?" for a board that is locked by halves.
    std::string live() {
        const auto part = [](auto& switches, const char* name) -> std::string {
            const auto usable = std::ranges::count_if(switches, [](LedSwitch& each) { return each.usable(); });
            return usable == 0 ? "" : usable == switches.size() ? name : "?";
        };
        EXPECT_EQ(page.SwitchLed4.usable(), page.SwitchLed3[0].usable());
        return part(page.SwitchLed1, "Alder ") + part(page.SwitchLed3, "Cedar");
    }
};
constexpr const char* Both = "Alder Cedar";

TEST_F(InOut, OpensIdleAndLocked) {
    EXPECT_EQ(mirror.due(), (Writes{{0, 368, 255}}));
    mirror.run(10'000);
    EXPECT_EQ(live(), "") << "nobody may unlock a test that never began";
    EXPECT_EQ(page.Label7.Caption.get(), "Normal");
    EXPECT_EQ(page.Label7.ForeColor, Red);
    EXPECT_EQ(page.iLedRectangleX1[17].accessibleName(), "Safety thermostat");
}

TEST_F(InOut, AClearBitLightsItsLampAndNoOther) {
    struct {
        int bank, parameter;
        std::array<int, 8> lampOfBit;
    } const words[] = {{0, 249, {No, 0, No, 1, 2, 3, 4, 5}},
                       {1, 1289, {11, 12, No, 14, No, No, 17, No}},
                       {1, 1290, {No, 0, 1, 2, 3, 4, 5, 6}},
                       {1, 1291, {No, No, No, No, 7, 8, 9, 10}}};
    presence(0, 0);
    for (const auto& word : words)
        for (unsigned bit = 0; bit < 8; ++bit) {
            mirror.arrive(word.bank, word.parameter, 255U & ~(1U << bit));
            const int lamp = word.lampOfBit[bit];
            EXPECT_EQ(word.bank == 0 ? lit(page.LedX1) : lit(page.iLedRectangleX1),
                      lamp == No ? Numbers{} : Numbers{lamp})
                << word.parameter << " bit " << bit;
            mirror.arrive(word.bank, word.parameter, 255);
        }
}

TEST_F(InOut, ShowsTheBoilerAsItIsAndTheTankInWholeSignedDegrees) {
    mirror.arrive(1, 1288, 97);
    EXPECT_EQ(page.iAnalogX1.Value, 97);
    mirror.arrive(2, 287, 0x1400);
    EXPECT_EQ(page.iAnalogX2.Value, 0) << "without the correction the reading means nothing";
    struct {
        std::uint32_t correction, reading;
        double degrees;
    } const rows[] = {{5, 0x0A80, 10},  {5, 0x0B80, 12},   {7, 0x0A00, 12},   {0, 0x0000, -5},
                      {5, 0xF600, -10}, {9, 0x7C00, -128}, {5, 0x7F80, -128}, {5, 0x7F40, 127}};
    for (const auto& row : rows) {
        mirror.arrive(2, 52, row.correction);
        mirror.arrive(2, 287, row.reading);
        EXPECT_EQ(page.iAnalogX2.Value, row.degrees) << row.correction << " " << row.reading;
    }
    ParamFlags(2, 52) = 0;
    mirror.arrive(2, 287, 0x0100);
    EXPECT_EQ(page.iAnalogX2.Value, 127) << "the old one stays";
}

TEST_F(InOut, AFrameIsLiveWhileItsBoardIsThereAndTheLastFourInputsFollowTheFrameAlone) {
    for (const std::uint32_t word : {0U, 255U, 251U, 4U}) {
        const bool there = word == 255 || word == 4;
        presence(word, word);
        for (Control* control : std::initializer_list<Control*>{
                 &page.Frame2, &page.Frame3, &page.Command1, &page.Label4[39], &page.Label3[10], &page.Label6,
                 &page.Label5[47], &page.Label8, &page.Label2, &page.iLedRectangleX1[10]})
            EXPECT_EQ(control->Enabled, there) << control->accessibleName();
        for (const int lamp : {11, 12, 14, 17}) EXPECT_TRUE(page.iLedRectangleX1[lamp].Enabled);
        for (int i = 11; i <= 14; ++i) EXPECT_TRUE(page.Label3[i].Enabled);
        EXPECT_EQ(live(), "") << "a board that comes unlocks nothing outside a test";
    }
    startTest();
    presence(0, 0);
    EXPECT_EQ(live(), "");
    mirror.arrive(0, 1, There);
    EXPECT_EQ(live(), "Alder ");
    mirror.arrive(0, 2, There);
    EXPECT_EQ(live(), Both);
}

TEST_F(InOut, StartAndStopGoToTheBoardsThatAreThereMailboxFirst) {
    mirror.deliverAll();
    struct {
        std::uint32_t alderWord, cedarWord, time;
        Writes mailboxes, commands;
    } const rows[] = {{There, There, 60, {{1, 2, 60}, {2, 285, 60}}, {{1, 1, 1}, {2, 284, 1}}},
                      {There, 0, 60, {{1, 2, 60}}, {{1, 1, 1}}},
                      {0, There, 60, {{2, 285, 60}}, {{2, 284, 1}}},
                      {There, There, 0, {{1, 2, 0}, {2, 285, 0}}, {{1, 1, 1}, {2, 284, 1}}}};
    for (const auto& row : rows) {
        presence(row.alderWord, row.cedarWord);
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

TEST_F(InOut, StartWaitsForItsOwnMailboxOnEachBoard) {
    presence(There, There);
    mirror.deliverAll();
    page.Command1.UserClick();
    const Writes mailboxes = {{1, 2, 60}, {2, 285, 60}};
    for (const auto& [bank, parameter] : {std::pair(2, 286), {1, 5}}) mirror.arrive(bank, parameter, 0);
    EXPECT_EQ(mirror.due(), mailboxes) << "other bytes say nothing of it";
    for (const BoardValue& write : mailboxes) mirror.arrive(write.bank, write.parameter, 128);
    EXPECT_EQ(mirror.due(), Writes{}) << "a time that was lost on the line is not put into force";
    for (const BoardValue& write : mailboxes) mirror.arrive(write.bank, write.parameter, 60);
    EXPECT_EQ(mirror.due(), (Writes{{1, 1, 1}, {2, 284, 1}}));
    presence(There, There);
    report(true, false);
    EXPECT_FALSE(page.Command1.Enabled) << "words that repeat say nothing new";
    presence(There, There + 8);
    EXPECT_TRUE(page.Command1.Enabled);
}

TEST_F(InOut, TheTestBeginsWithTheLastPresentBoardAndEndsWithTheFirst) {
    struct {
        bool alderThere, cedarThere, alderInTest, cedarInTest, running;
    } const steps[] = {{true, true, false, true, false},   {true, true, true, true, true},
                       {true, true, true, false, false},   {true, true, true, true, true},
                       {true, false, true, false, true},   {true, false, false, false, false},
                       {false, true, false, false, false}, {false, true, false, true, true}};
    bool wasRunning = false;
    for (const auto& step : steps) {
        presence(step.alderThere ? There : 0, step.cedarThere ? There : 0);
        page.Command1.UserClick();
        if (step.alderThere) mirror.arrive(1, 1297, step.alderInTest ? 0xFF : 0xFE);
        if (step.cedarThere) mirror.arrive(2, 290, step.cedarInTest ? 1 : 2);
        EXPECT_EQ(page.Command1.Enabled, step.running != wasRunning) << "a report that changes nothing offers nothing";
        wasRunning = step.running;
        EXPECT_EQ(page.Label7.Caption.get(), step.running ? "TEST running" : "Normal");
        EXPECT_EQ(page.Label7.ForeColor, step.running ? Green : Red);
        EXPECT_EQ(page.Command1.Caption.get(), step.running ? "Stop TEST" : "Start TEST");
        EXPECT_EQ(live(), std::string(step.running && step.alderThere ? "Alder " : "") +
                              (step.running && step.cedarThere ? "Cedar" : ""));
    }
}

TEST_F(InOut, EveryAlderSwitchAsksForItsOwnBitAndMovesOnItsEchoAlone) {
    startTest();
    presence(There, 0);
    for (int byte = 0; byte < 5; ++byte) mirror.arrive(1, 1292 + byte, 0x0A);
    const Numbers before = lit(page.SwitchLed1);
    for (int i = 0; i < FrmInOut::AlderOutputs; ++i)
        for (int click = 0; click < 2; ++click) {
            const bool on = !page.SwitchLed1[i].Active;
            const std::uint32_t mask = 1U << (i % 8);
            const std::uint32_t wanted = on ? 0x0A | mask : 0x0A & ~mask;
            page.SwitchLed1[i].UserClick();
            page.SwitchLed1[i].UserClick();
            EXPECT_EQ(page.SwitchLed1[i].Active, !on) << "put back, and a second click meets the lock";
            EXPECT_TRUE(page.SwitchLed1[i].waiting() && live().empty());
            Writes image;
            for (int byte = 0; byte < 5; ++byte) image.push_back({1, 2 + byte, byte == i / 8 ? wanted : 0x0A});
            EXPECT_EQ(mirror.due(), image) << i;
            image.push_back({1, 1, 2});
            EXPECT_EQ(mirror.deliverAll(), image) << i;
            mirror.arrive(1, 1292 + i / 8, wanted);
            EXPECT_EQ(page.SwitchLed1[i].Active, on);
            EXPECT_EQ(live(), "Alder ");
        }
    EXPECT_EQ(lit(page.SwitchLed1), before);
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

TEST_F(InOut, AnEchoThatDiffersIsShownAndLeavesTheLockToTheFiveSeconds) {
    startTest();
    page.SwitchLed1[3].UserClick();
    mirror.arrive(1, 1293, 0);
    mirror.arrive(1, 1292, 0x40);
    EXPECT_EQ(lit(page.SwitchLed1), Numbers{6});
    mirror.run(4999);
    EXPECT_EQ(live(), "");
    mirror.run(2);
    EXPECT_EQ(live(), Both);
    for (LedSwitch* clicked : {&page.SwitchLed3[0], &page.SwitchLed4}) {
        clicked->UserClick();
        mirror.arrive(1, 1292, 0x40);
        EXPECT_EQ(live(), "") << "the time-out has forgotten the first echo";
        mirror.run(5001);
        EXPECT_EQ(live(), Both);
    }

    page.SwitchLed1[0].UserClick();
    mirror.run(4000);
    mirror.arrive(1, 1292, 0x41);
    EXPECT_EQ(live(), Both);
    page.SwitchLed1[8].UserClick();
    mirror.run(4500);
    EXPECT_EQ(live(), "") << "the echo has ended the first click's five seconds";
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

TEST_F(InOut, OutsideATestNothingUnlocks) {
    for (LedSwitch* clicked : {&page.SwitchLed1[0], &page.SwitchLed3[0], &page.SwitchLed4}) {
        startTest();
        clicked->UserClick();
        report(false, false);
        mirror.arrive(1, 1292, 1);
        for (int reading = 0; reading < 2; ++reading) echoOfCedar(1, 1);
        EXPECT_EQ(live(), "");
        mirror.run(5001);
        EXPECT_EQ(live(), "");
    }
}

/// Echoes of before the order unlock the switches early; a click on the other board must then leave the order alone.
TEST_F(InOut, ARearmedTestTimeDoesNotTakeThePlaceOfOutputsThatAreOnTheirWay) {
    startTest();
    page.SwitchLed1[0].UserClick();
    for (int reading = 0; reading < 2; ++reading) mirror.arrive(1, 1292, 0);
    page.SwitchLed3[0].UserClick();
    EXPECT_TRUE(isDue({1, 2, 1}));
    for (int reading = 0; reading < 2; ++reading) echoOfCedar(0, 0);
    page.SwitchLed1[0].UserClick();
    EXPECT_TRUE(isDue({2, 285, 1}));
}

TEST_F(InOut, NoOutputCanBeOrderedBeforeAllThatTheOrderWritesHaveBeenRead) {
    UnloadPage(page);
    auto& anew = mirror.load<FrmInOut>();
    startTest();
    const auto check = [&](bool alder, bool cedar) {
        EXPECT_EQ(anew.SwitchLed1[0].usable(), alder);
        EXPECT_EQ(anew.SwitchLed3[0].usable() && anew.SwitchLed4.usable(), cedar);
    };
    mirror.arrive(2, 289, 1);
    for (const int byte : {0, 1, 2, 4}) mirror.arrive(1, 1292 + byte, 1);
    check(false, false);
    echoOfCedar(0x81, 1);
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
    for (int reading = 0; reading < 2; ++reading) echoOfCedar(0, 0);
    page.SwitchLed1[7].UserClick();
    EXPECT_TRUE(isDue({1, 2, 128}));
    EXPECT_FALSE(isDue({1, 1, 1}));
}

TEST_F(InOut, OneCedarOutputAtATimeGoesAsGroupAndBitAndTheCompressorKeepsIt) {
    startTest();
    struct Step {
        int clicked;  ///< sector, or none for the compressor
        std::uint32_t group, bit;
        Numbers on;
    };
    std::vector<Step> steps = {{9, 0x02, 0x02, {9}}, {No, 0x82, 0x02, {9}}, {47, 0xA0, 0x80, {47}},
                               {47, 0x80, 0x00, {}}, {0, 0x81, 0x01, {0}},  {No, 0x01, 0x01, {0}},
                               {0, 0x00, 0x00, {}}};
    for (int i = 0; i < FrmInOut::CedarOutputs; ++i)
        for (const std::uint32_t on : {1U, 0U, 1U, 0U})
            steps.push_back({i, on << (i / 8), on << (i % 8), on == 1 ? Numbers{i} : Numbers{}});
    for (const Step& step : steps) {
        LedSwitch& clicked = step.clicked == No ? page.SwitchLed4 : page.SwitchLed3[step.clicked];
        const bool before = clicked.Active;
        clicked.UserClick();
        EXPECT_EQ(clicked.Active, before) << "put back";
        EXPECT_EQ(mirror.due(), (Writes{{1, 2, 60}, {2, 285, step.group}, {2, 286, step.bit}})) << step.clicked;
        mirror.deliver(2, 286);
        EXPECT_FALSE(isDue({2, 284, 2}));
        mirror.deliver(2, 285);
        EXPECT_TRUE(isDue({2, 284, 2}));
        mirror.deliverAll();
        for (int reading = 0; reading < 2; ++reading) {
            EXPECT_EQ(live(), "") << "only a pair that repeats unlocks";
            echoOfCedar(step.group, step.bit);
        }
        EXPECT_EQ(live(), Both);
        EXPECT_EQ(lit(page.SwitchLed3), step.on);
        EXPECT_EQ(page.SwitchLed4.Active, step.group >= 0x80);
    }
}

TEST_F(InOut, ThePairOfCedarEchoesShowsTheLowestOutputAndIsTakenWithItsSecondHalf) {
    startTest();
    struct {
        std::uint32_t group, bit;
        Numbers on;
    } const rows[] = {{0x20, 0x80, {47}}, {0x0C, 0x30, {20}}, {0x40, 0x01, {}},
                      {0x80, 0x01, {}},   {0x01, 0x00, {}},   {0xFF, 0xFF, {0}}};
    Numbers before;
    for (const auto& row : rows) {
        mirror.arrive(2, 288, row.group);
        EXPECT_EQ(lit(page.SwitchLed3), before) << "half a pair shows nothing";
        mirror.arrive(2, 289, row.bit);
        EXPECT_EQ(lit(page.SwitchLed3), row.on) << row.group << " " << row.bit;
        EXPECT_EQ(page.SwitchLed4.Active, row.group >= 0x80);
        before = row.on;
    }
    EXPECT_TRUE(mirror.due().empty()) << "what is shown is never written back";
}

}  // namespace
}  // namespace kestrel::testing
