// What the machine tells of itself: alarms, the water circuit, and the model test that moves motors.
// A wrong alarm sends a technician to the wrong part; an order too many moves what hands are in.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include <algorithm>

#include "language/language_files.h"
#include "link/changes.h"
#include "link/recheck.h"
#include "pages/diagnostics/frm_allarmi.h"
#include "pages/diagnostics/frm_schema.h"
#include "pages/diagnostics/frm_test_cedar.h"
#include "support/bare_mirror.h"
#include "support/layouts.h"
#include "support/world.h"

namespace kestrel::testing {
namespace {

using ListRow = std::vector<std::string>;
constexpr int AlarmTexts = 478;

struct Record {
    int minute, hour, day, month, year, code;
};

struct Alarms : ::testing::Test {
    BareMirror mirror;
    FrmAllarmi& page = mirror.load<FrmAllarmi>();

    Alarms() { mirror.platform.wallClock = {2024, 11, 12, 10, 32}; }
    void put(int slot, const Record& record) {
        const int values[] = {record.minute, record.hour, record.day, record.month, record.year, record.code};
        for (int field = 0; field < 6; ++field)
            mirror.arrive(0, 252 + 6 * slot + field, static_cast<std::uint32_t>(values[field]));
    }
    /// A ring whose slots have the codes 10 to 19.
    void fill() {
        for (int slot = 0; slot < 10; ++slot) put(slot, {slot, 7, 1 + slot, 11, 24, 10 + slot});
    }
    void point(std::uint32_t slot) { mirror.arrive(0, 251, slot); }
    const std::vector<ListRow>& rows() const { return page.ListView1.Rows; }
};

TEST(AlarmsAtFirst, NothingIsListedAndTheBarFillsUntilTheLastOfTheRingIsThere) {
    for (const int pointerAt : {0, 60}) {
        BareMirror fresh;
        auto& opened = fresh.load<FrmAllarmi>();
        for (int arrived = 0; arrived <= 60; ++arrived) {
            EXPECT_TRUE(opened.ListView1.Rows.get().empty());
            EXPECT_TRUE(opened.ProgressBar1.Visible);
            EXPECT_EQ(opened.ProgressBar1.Value, arrived);
            fresh.arrive(0, arrived == pointerAt ? 251 : 252 + arrived - (pointerAt == 0 ? 1 : 0), 1);
        }
        EXPECT_EQ(opened.ListView1.Rows.get().size(), 10U);
        EXPECT_FALSE(opened.ProgressBar1.Visible);
        EXPECT_EQ(opened.ProgressBar1.Max, 61);
        for (int i = 0; i < 100; ++i) fresh.arrive(0, 251, 2);
        EXPECT_FALSE(opened.ProgressBar1.Visible);
    }
}

TEST_F(Alarms, FromEveryPointerTheNewestComesFirstAndTheRingTurnsBackwards) {
    fill();
    for (int pointer = 0; pointer < 10; ++pointer) {
        point(static_cast<std::uint32_t>(pointer));
        ASSERT_EQ(rows().size(), 10U);
        for (int k = 0; k < 10; ++k) {
            const int slot = (pointer - k + 10) % 10;
            const ListRow expected = {std::to_string(k + 1), std::to_string(1 + slot) + "/11/2024",
                                      "07:0" + std::to_string(slot), LanguageTable(AlarmTexts + 10 + slot),
                                      std::to_string(11 - slot) + " days ago"};
            EXPECT_EQ(rows()[static_cast<std::size_t>(k)], expected);
        }
    }
    for (const std::uint32_t beyond : {10U, 255U}) {
        point(beyond);
        EXPECT_TRUE(rows().empty()) << beyond;
    }
}

TEST_F(Alarms, AnEmptySlotEndsTheListWhateverStandsBehindIt) {
    fill();
    put(6, {0, 0, 1, 1, 24, 138});
    point(8);
    ASSERT_EQ(rows().size(), 2U);
    EXPECT_EQ(rows()[1][3], LanguageTable(AlarmTexts + 17));
    put(6, {0, 0, 1, 1, 24, 137});
    ASSERT_EQ(rows().size(), 10U);
    EXPECT_EQ(rows()[2][3], LanguageTable(615));
    put(8, {0, 0, 0, 0, 0, 255});
    EXPECT_TRUE(rows().empty()) << "an empty newest slot is an empty ring";
    put(8, {0, 0, 1, 1, 24, 0});
    EXPECT_EQ(rows()[0][3], LanguageTable(478));
}

TEST_F(Alarms, DatesThatNoCalendarHasAreZerosAndTimesThatNoClockHasStand) {
    fill();
    point(0);
    struct {
        Record record;
        std::string date, time, age;
    } const cases[] = {{{5, 9, 31, 12, 24, 1}, "31/12/2024", "09:05", ""},
                       {{9, 23, 1, 1, 0, 1}, "1/1/2000", "23:09", "24 years ago"},
                       {{0, 0, 29, 2, 24, 1}, "29/2/2024", "00:00", "8 months ago"},
                       {{0, 0, 29, 2, 23, 1}, "00/00/00", "00:00", ""},
                       {{0, 0, 32, 1, 24, 1}, "00/00/00", "00:00", ""},
                       {{0, 0, 1, 13, 24, 1}, "00/00/00", "00:00", ""},
                       {{0, 0, 0, 1, 24, 1}, "00/00/00", "00:00", ""},
                       {{0, 0, 1, 0, 24, 1}, "00/00/00", "00:00", ""},
                       {{60, 9, 1, 1, 255, 1}, "1/1/2255", "9:60", ""},
                       {{7, 24, 14, 10, 24, 1}, "14/10/2024", "24:7", "4 weeks ago"},
                       {{0, 23, 11, 11, 24, 1}, "11/11/2024", "23:00", "yesterday"},
                       {{0, 0, 12, 11, 24, 1}, "12/11/2024", "00:00", "today"}};
    for (const auto& each : cases) {
        put(0, each.record);
        EXPECT_EQ(rows()[0][1], each.date);
        EXPECT_EQ(rows()[0][2], each.time);
        EXPECT_EQ(rows()[0][4], each.age) << each.date;
    }
    CurrentBank = 0;
    page.notify(254, -1);
    EXPECT_EQ(rows()[0][1], "00/00/00") << "a day below 0";
}

TEST_F(Alarms, HasHeadsInEveryLanguageAndHearsOfTheMasterAlone) {
    EXPECT_EQ(page.ListView1.ColumnHeads.get(), (ListRow{"No.", "Date", "Time", "Description", "When"}));
    EXPECT_EQ(page.ListView1.accessibleName(), "Last 10 alarms detected");
    LoadLanguage("Italiano.lng");
    page.Form_Activate();
    EXPECT_EQ(page.ListView1.ColumnHeads.get(), (ListRow{"nr.", "data", "ora", "descrizione", "quando"}));
    EXPECT_FALSE(page.copyList.usable());
    fill();
    point(4);
    mirror.arrive(1, 251, 10);
    mirror.arrive(2, 257, 200);
    page.copyList.UserClick();
    const std::string table = mirror.platform.clipboard;
    EXPECT_TRUE(table.starts_with("nr.\tdata\tora\tdescrizione\tquando\n1\t5/11/2024\t07:04\t")) << table;
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 11);
    EXPECT_EQ(rows().size(), 10U) << "other boards have other parameters there";
}

struct Schema : ::testing::Test {
    BareMirror mirror;
    FrmSchema& page = mirror.load<FrmSchema>();
};

TEST_F(Schema, GaugeAndFiguresShowTheSameReadingAndKeepItWhenOneIsTooLarge) {
    const std::pair<std::uint32_t, double> readings[] = {{0, 0}, {97, 97}, {32767, 32767}, {32768, 32767}, {5, 5}};
    for (const auto& [reading, shown] : readings) {
        mirror.arrive(1, 1288, reading);
        EXPECT_EQ(page.iThermometerX1.Value, shown);
        EXPECT_EQ(page.iSevenSegmentAnalogX1.Value, shown);
    }
    EXPECT_EQ(page.iThermometerX1.accessibleName() + page.iSevenSegmentAnalogX1.accessibleName(), "BoilerBoiler");
}

/// Every control that stands on a drawing, against the elements of the drawing of that name.
void expectPlaces(const Layout& layout) {
    if (layout.kind == Layout::Kind::Canvas) {
        const auto* picture = dynamic_cast<const Picture*>(layout.control);
        ASSERT_NE(picture, nullptr);
        std::ifstream file(InstallationDirectory() / "pictures" / (picture->drawing() + ".svg"));
        std::stringstream drawing;
        drawing << file.rdbuf();
        for (const std::string& place : layout.places)
            EXPECT_NE(drawing.str().find("id=\"" + place + "\""), std::string::npos)
                << place << " in " << picture->drawing();
        EXPECT_FALSE(layout.places.empty());
    }
    for (const Layout& child : layout.children) expectPlaces(child);
}

TEST_F(Schema, AndTheModelTestHaveAPlaceForEveryControlThatStandsOnADrawing) {
    expectPlaces(page.Arrange());
    expectPlaces(mirror.load<FrmTestCedar>().Arrange());
}

constexpr std::uint32_t There = 4;
constexpr std::uint32_t Running = 2;
constexpr int All = FrmTestCedar::Zones + 1;

struct ModelTest : ::testing::Test {
    BareMirror mirror;
    FrmTestCedar& page = mirror.load<FrmTestCedar>();

    ModelTest() { mirror.arrive(0, 2, There); }

    /// Zones, and the button of the motors, that can be worked.
    int live() { return usableInputs(page.Arrange()); }
    std::string pair() const { return page.Label2[1].Caption; }
    void clickPair(int first, int second) {
        page.Label1[first - 1].UserClick();
        page.Label1[second - 1].UserClick();
    }
};

TEST_F(ModelTest, EveryPairGoesToTheMailboxFirstAndIsCommandedOnceTheBoardHasTakenBoth) {
    for (int first = 1; first <= 6; ++first)
        for (int second = 1; second <= 6; ++second)
            for (const bool firstIsTakenFirst : {true, false}) {
                const auto one = static_cast<std::uint32_t>(first);
                const auto two = static_cast<std::uint32_t>(second);
                page.Label1[first - 1].UserClick();
                EXPECT_EQ(pair(), std::to_string(first) + " _");
                EXPECT_EQ(live(), All);
                page.Label1[second - 1].UserClick();
                EXPECT_EQ(pair(), std::to_string(first) + " " + std::to_string(second));
                EXPECT_EQ(live(), 0);
                EXPECT_EQ(mirror.due(), (Writes{{0, 5, 11 + two}, {0, 6, 16 * one}}));
                mirror.deliver(0, firstIsTakenFirst ? 6 : 5);
                EXPECT_EQ(mirror.due().size(), 1U);
                mirror.deliver(0, firstIsTakenFirst ? 5 : 6);
                EXPECT_EQ(mirror.due(), (Writes{{0, 4, 2}}));
                mirror.deliverAll();

                mirror.arrive(0, 7, Running);
                EXPECT_EQ(live(), 0);
                mirror.arrive(0, 7, 0xFF & ~Running);
                EXPECT_EQ(live(), All);
                EXPECT_EQ(pair(), "_ _");
            }
}

TEST_F(ModelTest, AMasterThatDoesNotStartIsWaitedForTwoSeconds) {
    clickPair(4, 4);
    mirror.deliverAll();
    mirror.arrive(0, 7, 0);
    mirror.run(1999);
    EXPECT_EQ(live(), 0);
    EXPECT_EQ(pair(), "4 4");
    mirror.run(2);
    EXPECT_EQ(live(), All);
    EXPECT_EQ(pair(), "_ _");
    clickPair(5, 6);
    mirror.arrive(0, 7, Running);
    mirror.run(60'000);
    EXPECT_EQ(live(), 0) << "a pair that has started may take its time";
    EXPECT_EQ(pair(), "5 6");
}

TEST_F(ModelTest, TheZeroingLocksUntilItsBitFallsAndClearsAPendingChoice) {
    page.Label1[2].UserClick();
    page.Command1.UserClick();
    EXPECT_EQ(pair(), "_ _");
    EXPECT_EQ(mirror.due(), (Writes{{2, 284, 3}}));
    mirror.deliverAll();
    EXPECT_EQ(live(), 0);
    mirror.arrive(2, 290, 1);
    EXPECT_EQ(live(), 0) << "the test mode bit is another one";
    mirror.arrive(2, 290, 3);
    mirror.arrive(2, 290, 1);
    EXPECT_EQ(live(), All);
    page.Label1[3].UserClick();
    mirror.arrive(2, 290, 1);
    EXPECT_EQ(pair(), "4 _") << "the choice before the zeroing is forgotten";
}

TEST_F(ModelTest, AZeroingThatNeverBeginsLocksUntilThePresenceWordChanges) {
    page.Command1.UserClick();
    mirror.deliverAll();
    mirror.run(60'000);
    mirror.arrive(2, 290, 0);
    mirror.arrive(0, 7, 0);
    mirror.arrive(0, 2, There);
    EXPECT_EQ(live(), 0);
    mirror.arrive(0, 2, 0);
    EXPECT_EQ(live(), 0);
    mirror.arrive(0, 2, There);
    EXPECT_EQ(live(), All);
}

/// However far the order got: the line may come back when nobody stands at the machine any more.
TEST_F(ModelTest, WhatIsGivenUpNeverGoesOut) {
    const auto timer = [&] { mirror.run(2001); };
    const auto foreignRun = [&] {
        mirror.arrive(0, 7, Running);
        mirror.arrive(0, 7, 0);
    };
    const auto boardGoes = [&] { mirror.arrive(0, 2, 0); };
    const auto interruption = [&] {
        page.LineInterrupted();
        EXPECT_EQ(mirror.due(), Writes{});
        mirror.run(2001);
    };
    const auto close = [&] { UnloadPage(page); };
    const std::vector<std::vector<int>> delivered = {{}, {5}, {5, 6}};
    for (const auto& giveUp : std::vector<std::function<void()>>{timer, foreignRun, boardGoes, interruption, close})
        for (const std::vector<int>& parameters : delivered) {
            mirror.arrive(0, 2, There);
            clickPair(1, 1);
            for (const int n : parameters) mirror.deliver(0, n);
            EXPECT_FALSE(mirror.due().empty());
            CurrentBank = 1;
            giveUp();
            EXPECT_EQ(mirror.due(), Writes{});
            EXPECT_FALSE(parameters.empty() && IsChange(0, 5)) << "it is no change of which the user hears later";
            for (const auto& [n, value] : {std::pair(5, 12U), {6, 16U}}) mirror.arrive(0, n, value);
            EXPECT_EQ(mirror.due(), Writes{}) << "nor does the command follow a mailbox that came after all";
            if (!FindLoadedPage("FrmTestCedar")) return;
        }
}

TEST_F(ModelTest, TheZeroingIsGivenUpWithItsBoardAndItsPageAndAnotherOrderIsLeftAlone) {
    page.Command1.UserClick();
    mirror.arrive(0, 2, 0);
    EXPECT_EQ(mirror.due(), Writes{});
    mirror.arrive(0, 2, There);
    page.Command1.UserClick();
    mirror.arrive(2, 290, 2);
    mirror.arrive(2, 290, 0);
    clickPair(1, 1);
    CurrentBank = 0;
    ParamWrite(6, 8);
    CurrentBank = 1;
    mirror.run(2001);
    EXPECT_EQ(CurrentBank, 1) << "the scan is not moved";
    EXPECT_EQ(mirror.due(), (Writes{{0, 6, 8}}));
    mirror.deliverAll();
    clickPair(1, 1);
    HoldWrite(0, 6);
    mirror.run(2001);
    EXPECT_FALSE(IsHeld(0, 6)) << "nor does it wait for the user's word after an interruption";
    page.Command1.UserClick();
    UnloadPage(page);
    EXPECT_EQ(mirror.due(), Writes{});
}

}  // namespace
}  // namespace kestrel::testing
