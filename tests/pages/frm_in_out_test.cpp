// The In/Out page over a bare mirror: which lamp stands for which bit, how an output is asked for, what unlocks it.
// Rules of the boards are written out here as a technician would check them with a meter.
#include "support/in_out.h"
#include "support/layouts.h"

namespace kestrel::testing {
namespace {

constexpr int Red = 255;
constexpr int Green = 65280;
constexpr int No = -1;

using Numbers = std::vector<int>;

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

TEST_F(InOut, TheTestBeginsWithTheLastPresentBoardAndEndsWithTheFirst) {
    struct {
        bool hotDrinkThere, sectorThere, hotDrinkInTest, sectorInTest, running;
    } const steps[] = {{true, true, false, true, false},   {true, true, true, true, true},
                       {true, true, true, false, false},   {true, true, true, true, true},
                       {true, false, true, false, true},   {true, false, false, false, false},
                       {false, true, false, false, false}, {false, true, false, true, true}};
    bool wasRunning = false;
    for (const auto& step : steps) {
        presence(step.hotDrinkThere ? There : 0, step.sectorThere ? There : 0);
        page.Command1.UserClick();
        if (step.hotDrinkThere) mirror.arrive(1, 1297, step.hotDrinkInTest ? 0xFF : 0xFE);
        if (step.sectorThere) mirror.arrive(2, 290, step.sectorInTest ? 1 : 2);
        EXPECT_EQ(page.Command1.Enabled, step.running != wasRunning) << "a report that changes nothing offers nothing";
        wasRunning = step.running;
        EXPECT_EQ(page.Label7.Caption.get(), step.running ? "Test running" : "Normal operation");
        EXPECT_EQ(page.Label7.ForeColor, step.running ? Green : Red);
        EXPECT_EQ(page.Command1.Caption.get(), step.running ? "Stop test" : "Start test");
        EXPECT_EQ(live(), std::string(step.running && step.hotDrinkThere ? "HotDrink " : "") +
                              (step.running && step.sectorThere ? "Sector" : ""));
    }
}

TEST_F(InOut, EveryHotDrinkSwitchAsksForItsOwnBitAndMovesOnItsEchoAlone) {
    startTest();
    presence(There, 0);
    for (int byte = 0; byte < 5; ++byte) mirror.arrive(1, 1292 + byte, 0x0A);
    const Numbers before = lit(page.SwitchLed1);
    for (int i = 0; i < FrmInOut::HotDrinkOutputs; ++i)
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
            EXPECT_EQ(live(), "HotDrink ");
        }
    EXPECT_EQ(lit(page.SwitchLed1), before);
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

TEST_F(InOut, OutsideATestNothingUnlocks) {
    for (LedSwitch* clicked : {&page.SwitchLed1[0], &page.SwitchLed3[0], &page.SwitchLed4}) {
        startTest();
        clicked->UserClick();
        report(false, false);
        mirror.arrive(1, 1292, 1);
        for (int reading = 0; reading < 2; ++reading) echoOfSector(1, 1);
        EXPECT_EQ(live(), "");
        mirror.run(5001);
        EXPECT_EQ(live(), "");
    }
}

TEST_F(InOut, OneSectorOutputAtATimeGoesAsGroupAndBitAndTheCompressorKeepsIt) {
    startTest();
    struct Step {
        int clicked;  ///< sector, or none for the compressor
        std::uint32_t group, bit;
        Numbers on;
    };
    std::vector<Step> steps = {{9, 0x02, 0x02, {9}}, {No, 0x82, 0x02, {9}}, {47, 0xA0, 0x80, {47}},
                               {47, 0x80, 0x00, {}}, {0, 0x81, 0x01, {0}},  {No, 0x01, 0x01, {0}},
                               {0, 0x00, 0x00, {}}};
    for (int i = 0; i < FrmInOut::SectorOutputs; ++i)
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
            echoOfSector(step.group, step.bit);
        }
        EXPECT_EQ(live(), Both);
        EXPECT_EQ(lit(page.SwitchLed3), step.on);
        EXPECT_EQ(page.SwitchLed4.Active, step.group >= 0x80);
    }
    EXPECT_EQ(page.SwitchLed4.accessibleName(), page.Label2.Caption.get());
}

TEST_F(InOut, ThePairOfSectorEchoesShowsTheLowestOutputAndIsTakenWithItsSecondHalf) {
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
