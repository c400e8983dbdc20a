// The In/Out page over a bare mirror: which lamp stands for which bit, how an output is asked for, what unlocks it.
// Rules of the boards are written out here as a technician would check them with a meter.
#include "pages/test/frm_in_out.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "shell/language_files.h"
#include "support/bare_mirror.h"

namespace kestrel {
namespace {

using testing::BareMirror;
using testing::DueWrite;
using testing::DueWrites;

constexpr int Red = 255;
constexpr int Green = 65280;
constexpr std::uint32_t There = 4;

/// Switches of a board that the user can work, all or none.
template <class Switches>
bool allAre(Switches& switches, bool usable) {
    return std::all_of(switches.begin(), switches.end(), [&](auto& each) { return each.usable() == usable; });
}
bool unlocked(FrmInOut& page) {
    return allAre(page.SwitchLed1, true) && allAre(page.SwitchLed3, true) && page.SwitchLed4.usable();
}
bool locked(FrmInOut& page) {
    return allAre(page.SwitchLed1, false) && allAre(page.SwitchLed3, false) && !page.SwitchLed4.usable();
}

std::vector<int> active(FrmInOut& page) {
    std::vector<int> on;
    for (int i = 0; i < FrmInOut::CedarOutputs; ++i)
        if (page.SwitchLed3[i].Active) on.push_back(i);
    return on;
}

struct InOut : ::testing::Test {
    BareMirror mirror;
    FrmInOut& page = mirror.load<FrmInOut>();

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
};

TEST_F(InOut, OpensIdleWithEverySwitchLocked) {
    EXPECT_EQ(mirror.due(), (DueWrites{{0, 368, 255}}));
    EXPECT_TRUE(locked(page));
    EXPECT_EQ(page.Command1.Caption.get(), "Start TEST");
    EXPECT_EQ(page.Label7.Caption.get(), "Normal");
    EXPECT_EQ(page.Label7.ForeColor, Red);
    mirror.run(10'000);
    EXPECT_TRUE(locked(page)) << "nobody may unlock a test that never began";
}

TEST_F(InOut, NamesEveryLampAndSwitchAfterItsDevice) {
    const std::pair<Label*, std::string> captions[] = {{&page.Label1[0], "Door open"},
                                                       {&page.Label1[5], "Mains present"},
                                                       {&page.Label3[0], "Waste tray"},
                                                       {&page.Label3[10], "Paper FB2 present"},
                                                       {&page.Label3[11], "Boiler minimum level"},
                                                       {&page.Label3[14], "Safety thermostat"},
                                                       {&page.Label4[0], "Water valve 1"},
                                                       {&page.Label4[39], "Spare output"},
                                                       {&page.Label5[0], "Sector 11"},
                                                       {&page.Label5[8], "Sector 21"},
                                                       {&page.Label5[47], "Sector 68"},
                                                       {&page.Label6, "Boiler temperature"},
                                                       {&page.Label8, "Tank temperature"},
                                                       {&page.Label2, "Compressor"}};
    for (const auto& [label, text] : captions) EXPECT_EQ(label->Caption.get(), text);
    EXPECT_EQ(page.SwitchLed1[39].accessibleName(), "Spare output");
    EXPECT_EQ(page.iLedRectangleX1[17].accessibleName(), "Safety thermostat");
    EXPECT_EQ(page.SwitchLed4.accessibleName(), "Compressor");

    startTest();
    LoadLanguage("Deutsch.lng");
    page.Form_Activate();
    EXPECT_EQ(page.Label5[47].Caption.get(), "Fach 68");
    EXPECT_EQ(page.Command1.Caption.get(), "TEST beenden");
    EXPECT_EQ(page.Label7.Caption.get(), "TEST läuft");
}

/// Which lamp a bit lights: [parameter, bit] to the lamp; bits that are missing light nothing.
struct Input {
    int bank;
    int parameter;
    std::array<int, 8> lampOfBit;
};
constexpr int No = -1;
constexpr Input Inputs[] = {{0, 249, {No, 0, No, 1, 2, 3, 4, 5}},
                            {1, 1289, {11, 12, No, 14, No, No, 17, No}},
                            {1, 1290, {No, 0, 1, 2, 3, 4, 5, 6}},
                            {1, 1291, {No, No, No, No, 7, 8, 9, 10}}};

TEST_F(InOut, AClearBitLightsItsLampAndNoOther) {
    const auto lit = [&](int bank) {
        std::vector<int> lamps;
        const int count = bank == 0 ? FrmInOut::MasterInputs : page.iLedRectangleX1.size();
        for (int i = 0; i < count; ++i)
            if (bank == 0 ? page.LedX1[i].Active : page.iLedRectangleX1[i].Active) lamps.push_back(i);
        return lamps;
    };
    for (const Input& input : Inputs)
        for (int bit = 0; bit < 8; ++bit) {
            mirror.arrive(input.bank, input.parameter, 255U & ~(1U << bit));
            const int lamp = input.lampOfBit[static_cast<std::size_t>(bit)];
            EXPECT_EQ(lit(input.bank), lamp == No ? std::vector<int>{} : std::vector<int>{lamp})
                << input.parameter << " bit " << bit;
            mirror.arrive(input.bank, input.parameter, 255);
            EXPECT_TRUE(lit(input.bank).empty());
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
    } const rows[] = {{5, 0x0A00, 10},  {5, 0x0A80, 10},   {5, 0x0B80, 12},   {7, 0x0A00, 12}, {0, 0x0000, -5},
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
        EXPECT_EQ(page.Frame2.Enabled, there);
        EXPECT_EQ(page.Frame3.Enabled, there);
        for (Label* label : {&page.Label4[0], &page.Label4[39], &page.Label3[0], &page.Label3[10], &page.Label6,
                             &page.Label5[0], &page.Label5[47], &page.Label8, &page.Label2})
            EXPECT_EQ(label->Enabled, there) << label->Caption.get();
        EXPECT_EQ(page.iLedRectangleX1[0].Enabled, there);
        EXPECT_EQ(page.iLedRectangleX1[10].Enabled, there);
        for (const int lamp : {11, 12, 14, 17}) {
            EXPECT_TRUE(page.iLedRectangleX1[lamp].Enabled);
            EXPECT_EQ(page.iLedRectangleX1[lamp].usable(), there);
        }
        for (int i = 11; i <= 14; ++i) EXPECT_TRUE(page.Label3[i].Enabled);
        EXPECT_EQ(page.Command1.Enabled, there);
        EXPECT_TRUE(locked(page)) << "a board that comes unlocks nothing outside a test";
    }
    presence(0, 0);
    mirror.arrive(0, 249, 0);
    EXPECT_TRUE(page.LedX1[5].Active) << "the master's inputs need no other board";
}

TEST_F(InOut, ABoardThatComesBackDuringTheTestGetsItsOwnSwitchesBack) {
    startTest();
    presence(0, 0);
    EXPECT_TRUE(locked(page));
    mirror.arrive(0, 1, There);
    EXPECT_TRUE(allAre(page.SwitchLed1, true));
    EXPECT_TRUE(allAre(page.SwitchLed3, false));
    EXPECT_FALSE(page.SwitchLed4.usable());
    mirror.arrive(0, 2, There);
    EXPECT_TRUE(unlocked(page));
}

TEST(InOutBoards, StartAndStopGoToTheBoardsThatAreThereMailboxFirst) {
    struct {
        std::uint32_t alderWord, cedarWord;
        DueWrites mailboxes, commands;
    } const rows[] = {{There, There, {{1, 2, 60}, {2, 285, 60}}, {{1, 1, 1}, {2, 284, 1}}},
                      {There, 0, {{1, 2, 60}}, {{1, 1, 1}}},
                      {0, There, {{2, 285, 60}}, {{2, 284, 1}}}};
    for (const auto& row : rows) {
        BareMirror fresh;
        auto& opened = fresh.load<FrmInOut>();
        fresh.arrive(0, 1, row.alderWord);
        fresh.arrive(0, 2, row.cedarWord);
        fresh.deliverAll();
        for (const std::uint32_t time : {60U, 0U}) {
            opened.Command1.UserClick();
            EXPECT_FALSE(opened.Command1.Enabled);
            DueWrites mailboxes = row.mailboxes;
            for (DueWrite& write : mailboxes) write.value = time;
            EXPECT_EQ(fresh.due(), mailboxes);
            for (const DueWrite& write : mailboxes) fresh.deliver(write.bank, write.parameter);
            EXPECT_EQ(fresh.due(), row.commands);
            fresh.deliverAll();
            for (const DueWrite& write : mailboxes) fresh.deliver(write.bank, write.parameter);
            EXPECT_EQ(fresh.due(), DueWrites{}) << "a command goes out once";

            fresh.arrive(1, 1297, time > 0 && row.alderWord == There ? 1 : 0);
            if (row.alderWord != There) fresh.arrive(0, 1, row.alderWord + 1);
            fresh.arrive(2, 290, time > 0 || row.cedarWord != There ? 1 : 0);
            EXPECT_TRUE(opened.Command1.Enabled);
        }
    }
}

TEST_F(InOut, StartIsNotOfferedAgainUntilABoardReportsAChange) {
    presence(There, There);
    page.Command1.UserClick();
    presence(There, There);
    report(false, false);
    EXPECT_FALSE(page.Command1.Enabled) << "words that repeat say nothing new";
    report(true, false);
    EXPECT_FALSE(page.Command1.Enabled);
    presence(There, There + 8);
    EXPECT_TRUE(page.Command1.Enabled);
}

TEST_F(InOut, TheTestTimeIsOrderedByTheRulesOfEachBoard) {
    presence(There, There);
    page.Command1.UserClick();
    mirror.arrive(2, 286, 0);
    EXPECT_EQ(mirror.due(), (DueWrites{{0, 368, 255}, {1, 2, 60}, {2, 285, 60}})) << "285 has not been taken yet";
    mirror.arrive(1, 5, 0);
    EXPECT_EQ(mirror.due(), (DueWrites{{0, 368, 255}, {1, 1, 1}, {1, 2, 60}, {2, 285, 60}}));
}

TEST_F(InOut, TheTestBeginsWithTheLastBoardAndEndsWithTheFirst) {
    presence(There, There);
    report(false, true);
    EXPECT_TRUE(locked(page));
    report(true, true);
    EXPECT_TRUE(unlocked(page));
    EXPECT_EQ(page.Command1.Caption.get(), "Stop TEST");
    EXPECT_EQ(page.Label7.Caption.get(), "TEST running");
    EXPECT_EQ(page.Label7.ForeColor, Green);
    mirror.arrive(2, 290, 0xFE);
    EXPECT_TRUE(locked(page));
    EXPECT_EQ(page.Label7.Caption.get(), "Normal");
    EXPECT_EQ(page.Label7.ForeColor, Red);
}

TEST_F(InOut, AnAbsentBoardCountsAsInTest) {
    presence(There, 0);
    mirror.arrive(1, 1297, 1);
    EXPECT_EQ(page.Label7.Caption.get(), "TEST running");
    EXPECT_TRUE(allAre(page.SwitchLed1, true));
    EXPECT_TRUE(allAre(page.SwitchLed3, false));
    mirror.arrive(1, 1297, 0);
    EXPECT_TRUE(locked(page));
    presence(0, There);
    mirror.arrive(2, 290, 1);
    EXPECT_TRUE(allAre(page.SwitchLed3, true));
    EXPECT_TRUE(allAre(page.SwitchLed1, false));
}

TEST(InOutBoards, EveryAlderSwitchAsksForItsOwnBitAndMovesOnItsEchoAlone) {
    for (int i = 0; i < FrmInOut::AlderOutputs; ++i) {
        BareMirror fresh;
        auto& opened = fresh.load<FrmInOut>();
        fresh.arrive(0, 1, There);
        fresh.arrive(0, 2, 0);
        fresh.arrive(1, 1297, 1);
        fresh.deliverAll();
        for (const bool on : {true, false}) {
            opened.SwitchLed1[i].UserClick();
            EXPECT_EQ(opened.SwitchLed1[i].Active, !on);
            EXPECT_TRUE(opened.SwitchLed1[i].waiting());
            EXPECT_TRUE(locked(opened));
            DueWrites image;
            for (int byte = 0; byte < 5; ++byte)
                image.push_back({1, 2 + byte, on && byte == i / 8 ? 1U << (i % 8) : 0U});
            EXPECT_EQ(fresh.due(), image) << i;
            image.push_back({1, 1, 2});
            EXPECT_EQ(fresh.deliverAll(), image) << i;

            fresh.arrive(1, 1292 + i / 8, on ? 1U << (i % 8) : 0U);
            EXPECT_EQ(opened.SwitchLed1[i].Active, on);
            EXPECT_TRUE(allAre(opened.SwitchLed1, true));
            for (int other = 0; other < FrmInOut::AlderOutputs; ++other)
                EXPECT_EQ(opened.SwitchLed1[other].Active, on && other == i);
        }
    }
}

TEST_F(InOut, TheImageKeepsWhatTheBoardAlreadyDrives) {
    startTest();
    const std::uint32_t driven[] = {0x81, 0x02, 0x00, 0xFF, 0x10};
    for (int byte = 0; byte < 5; ++byte) mirror.arrive(1, 1292 + byte, driven[byte]);
    page.SwitchLed1[7].UserClick();
    page.SwitchLed1[7].UserClick();
    EXPECT_EQ(mirror.due(), (DueWrites{{1, 2, 0x01}, {1, 3, 2}, {1, 4, 0}, {1, 5, 255}, {1, 6, 16}, {2, 285, 60}}))
        << "a second click while the lock is on does nothing";
    EXPECT_TRUE(page.SwitchLed1[7].Active);
}

TEST_F(InOut, TheOutputsGoOnlyWhenTheBoardHasTakenTheWholeImageInWhateverOrder) {
    std::array<int, 5> order = {2, 3, 4, 5, 6};
    startTest();
    do {
        page.SwitchLed1[12].UserClick();
        for (const int n : order) {
            EXPECT_EQ(std::ranges::count(mirror.due(), DueWrite{1, 1, 2}), 0) << "before " << n;
            mirror.deliver(1, n);
        }
        EXPECT_EQ(std::ranges::count(mirror.due(), DueWrite{1, 1, 2}), 1);
        mirror.deliverAll();
        mirror.run(5001);
    } while (std::next_permutation(order.begin(), order.end()));
}

/// A lost write is followed by a read, after which the mirror is fresh: with the old value, here a test time whose bits
/// would be two water valves and two brewer valves.
TEST_F(InOut, AMailboxThatHoldsSomethingElseIsNeverPutIntoForce) {
    startTest();
    page.SwitchLed1[30].UserClick();
    for (const int n : {3, 4, 5, 6}) mirror.deliver(1, n);
    mirror.loseWrite(1, 2, 60);
    EXPECT_EQ(std::ranges::count(mirror.due(), DueWrite{1, 1, 2}), 0);
    mirror.deliverAll();
    mirror.run(5001);

    page.SwitchLed3[9].UserClick();
    mirror.deliver(2, 285);
    mirror.loseWrite(2, 286, 4);
    EXPECT_EQ(std::ranges::count(mirror.due(), DueWrite{2, 284, 2}), 0);
    mirror.deliverAll();
    mirror.run(5001);
    EXPECT_TRUE(unlocked(page));

    // A reply of another bank that is filed here while the write is still due looks fresh as well.
    page.SwitchLed1[30].UserClick();
    for (const int n : {3, 4, 5, 6}) mirror.deliver(1, n);
    ParamFlags(1, 2) |= flag::Valid;
    mirror.arrive(1, 6, 0);
    EXPECT_EQ(std::ranges::count(mirror.due(), DueWrite{1, 1, 2}), 0);
}

TEST_F(InOut, AnEchoThatDiffersIsShownAndLeavesTheLockToTheFiveSeconds) {
    startTest();
    page.SwitchLed1[3].UserClick();
    mirror.arrive(1, 1293, 0);
    mirror.arrive(1, 1292, 0x40);
    EXPECT_TRUE(page.SwitchLed1[6].Active);
    EXPECT_FALSE(page.SwitchLed1[3].Active);
    EXPECT_TRUE(locked(page));
    mirror.run(4999);
    EXPECT_TRUE(locked(page));
    mirror.run(2);
    EXPECT_TRUE(unlocked(page));
    page.SwitchLed3[0].UserClick();
    mirror.arrive(1, 1292, 0x40);
    EXPECT_TRUE(locked(page)) << "the time-out has forgotten the first echo";
}

TEST_F(InOut, TheLockEndsWithTheEchoAndTheTimerWithIt) {
    startTest();
    page.SwitchLed1[0].UserClick();
    mirror.run(4000);
    mirror.arrive(1, 1292, 1);
    EXPECT_TRUE(unlocked(page));
    page.SwitchLed1[8].UserClick();
    mirror.run(4500);
    EXPECT_TRUE(locked(page)) << "the first click's five seconds are over, the second's are not";
}

TEST(InOutBoards, WorkOnOneBoardPutsTheOtherOnesTestTimeUp) {
    struct {
        std::function<void(FrmInOut&)> click;
        DueWrite rearm, command;
    } const rows[] = {{[](FrmInOut& p) { p.SwitchLed1[0].UserClick(); }, {2, 285, 60}, {2, 284, 1}},
                      {[](FrmInOut& p) { p.SwitchLed3[0].UserClick(); }, {1, 2, 60}, {1, 1, 1}},
                      {[](FrmInOut& p) { p.SwitchLed4.UserClick(); }, {1, 2, 60}, {1, 1, 1}}};
    for (const auto& row : rows)
        for (const bool otherIsThere : {true, false}) {
            BareMirror fresh;
            auto& opened = fresh.load<FrmInOut>();
            fresh.arrive(0, 1, There);
            fresh.arrive(0, 2, There);
            fresh.arrive(1, 1297, 1);
            fresh.arrive(2, 290, 1);
            if (!otherIsThere) fresh.arrive(0, row.rearm.bank, 0);
            fresh.deliverAll();
            row.click(opened);
            EXPECT_EQ(std::ranges::count(fresh.due(), row.rearm), otherIsThere ? 1 : 0);
            EXPECT_EQ(std::ranges::count(fresh.deliverAll(), row.command), otherIsThere ? 1 : 0);
        }
}

TEST_F(InOut, EveryCedarSwitchIsOneGroupAndOneBitAndASecondClickTurnsItOff) {
    startTest();
    for (int i = 0; i < FrmInOut::CedarOutputs; ++i) {
        for (const bool on : {true, false}) {
            const std::uint32_t group = on ? 1U << (i / 8) : 0;
            const std::uint32_t bit = on ? 1U << (i % 8) : 0;
            page.SwitchLed3[i].UserClick();
            EXPECT_EQ(page.SwitchLed3[i].Active, !on);
            EXPECT_TRUE(locked(page));
            EXPECT_EQ(mirror.due(), (DueWrites{{1, 2, 60}, {2, 285, group}, {2, 286, bit}})) << i;
            mirror.deliver(2, 286);
            EXPECT_EQ(std::ranges::count(mirror.due(), DueWrite{2, 284, 2}), 0);
            mirror.deliver(2, 285);
            EXPECT_EQ(std::ranges::count(mirror.due(), DueWrite{2, 284, 2}), 1);
            mirror.deliverAll();
            for (int reading = 0; reading < 2; ++reading) {
                EXPECT_TRUE(locked(page)) << "only a pair that repeats unlocks";
                mirror.arrive(2, 288, group);
                mirror.arrive(2, 289, bit);
            }
            EXPECT_TRUE(unlocked(page));
            EXPECT_EQ(active(page), on ? std::vector<int>{i} : std::vector<int>{});
        }
    }
}

TEST_F(InOut, AnotherCedarSwitchMovesTheOneOutputAndTheCompressorKeepsIt) {
    startTest();
    struct {
        int clicked;  ///< sector, or -1 for the compressor
        std::uint32_t group, bit;
        std::vector<int> on;
        bool compressor;
    } const steps[] = {{9, 0x02, 0x02, {9}, false}, {No, 0x82, 0x02, {9}, true}, {47, 0xA0, 0x80, {47}, true},
                       {47, 0x80, 0x00, {}, true},  {0, 0x81, 0x01, {0}, true},  {No, 0x01, 0x01, {0}, false},
                       {0, 0x00, 0x00, {}, false}};
    for (const auto& step : steps) {
        step.clicked == No ? page.SwitchLed4.UserClick() : page.SwitchLed3[step.clicked].UserClick();
        EXPECT_EQ(mirror.due(), (DueWrites{{1, 2, 60}, {2, 285, step.group}, {2, 286, step.bit}})) << step.clicked;
        EXPECT_EQ(page.SwitchLed4.Active, step.clicked == No ? !step.compressor : step.compressor);
        mirror.deliverAll();
        for (int reading = 0; reading < 2; ++reading) {
            mirror.arrive(2, 288, step.group);
            mirror.arrive(2, 289, step.bit);
        }
        EXPECT_EQ(active(page), step.on);
        EXPECT_EQ(page.SwitchLed4.Active, step.compressor);
        EXPECT_TRUE(unlocked(page));
    }
}

TEST_F(InOut, ThePairOfCedarEchoesShowsTheLowestOutputAndIsTakenWithItsSecondHalf) {
    startTest();
    struct {
        std::uint32_t group, bit;
        std::vector<int> on;
        bool compressor;
    } const rows[] = {{0x01, 0x01, {0}, false}, {0x20, 0x80, {47}, false}, {0x0C, 0x30, {20}, false},
                      {0x40, 0x01, {}, false},  {0x80, 0x01, {}, true},    {0x01, 0x00, {}, false},
                      {0xFF, 0xFF, {0}, true}};
    std::vector<int> before;
    for (const auto& row : rows) {
        mirror.arrive(2, 288, row.group);
        EXPECT_EQ(active(page), before) << "half a pair shows nothing";
        mirror.arrive(2, 289, row.bit);
        EXPECT_EQ(active(page), row.on) << row.group << " " << row.bit;
        EXPECT_EQ(page.SwitchLed4.Active, row.compressor);
        before = row.on;
    }
    EXPECT_TRUE(mirror.due().empty()) << "what is shown is never written back";
}

TEST_F(InOut, ClosingWritesTheTwoMarkersAndGivesEverySubscriptionBack) {
    startTest();
    page.Command1.UserClick();
    mirror.deliverAll();
    UnloadPage(page);
    EXPECT_EQ(mirror.due(), (DueWrites{{0, 368, 0}, {0, 369, 0}}));
    for (int bank = 0; bank < Banks; ++bank)
        for (int n = 1; n < 1500; ++n) EXPECT_EQ(ParamTable(bank, n).Watchers, 0) << bank << ":" << n;
}

TEST_F(InOut, SubscribesToWhatItShowsAndNotToTheMailboxes) {
    std::vector<std::pair<int, int>> watched;
    for (int bank = 0; bank < Banks; ++bank)
        for (int n = 1; n < 1500; ++n)
            if (ParamTable(bank, n).Watchers > 0) watched.emplace_back(bank, n);
    const std::vector<std::pair<int, int>> expected = {
        {0, 1},    {0, 2},    {0, 249},  {0, 369},  {1, 1288}, {1, 1289}, {1, 1290}, {1, 1291}, {1, 1292}, {1, 1293},
        {1, 1294}, {1, 1295}, {1, 1296}, {1, 1297}, {2, 52},   {2, 287},  {2, 288},  {2, 289},  {2, 290}};
    EXPECT_EQ(watched, expected);
}

}  // namespace
}  // namespace kestrel
