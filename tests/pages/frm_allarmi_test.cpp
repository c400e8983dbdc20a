// The list of alarms over a bare mirror: nothing until the ring is whole, then newest first from every pointer.
// The ring is filled as a master fills it; what the page must show is written out here.
#include "pages/diagnostics/frm_allarmi.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "language/language_files.h"
#include "support/bare_mirror.h"
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

TEST_F(Alarms, APointerBeyondTheRingListsNothingAndBreaksNothing) {
    fill();
    for (const std::uint32_t pointer : {10U, 11U, 255U, 0x7FFFFFFFU}) {
        point(3);
        ASSERT_EQ(rows().size(), 10U);
        point(pointer);
        EXPECT_TRUE(rows().empty()) << pointer;
        mirror.arrive(0, 252, 5);
        EXPECT_TRUE(rows().empty()) << pointer;
    }
    CurrentBank = 0;
    EXPECT_THROW(page.SLabel_Change(251, 10), RunTimeError) << "the ring is bounded";
    EXPECT_FALSE(page.ProgressBar1.Visible);
    point(3);
    EXPECT_EQ(rows().size(), 10U);
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
    EXPECT_EQ(page.ListView1.ColumnHeads.get(), (ListRow{"No.", "Date", "Time", "Description", "when"}));
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

}  // namespace
}  // namespace kestrel::testing
