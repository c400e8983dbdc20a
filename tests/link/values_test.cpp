// Values as pages show them: bars and figures, and serial days against a calendar that is counted day by day.
// A mistake here and an amount is shown with the wrong decimals, or every date of the machine's clock one day off.
#include <gtest/gtest.h>

#include "link/dates.h"
#include "link/value_helpers.h"
#include "platform/errors.h"
#include "shell/session.h"
#include "support/virtual_platform.h"

namespace kestrel {
namespace {

int lastOf(int month, int year) {
    constexpr int Usual[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeap = (year % 400 == 0) || (year % 4 == 0 && year % 100 != 0);
    return Usual[month - 1] + (month == 2 && isLeap ? 1 : 0);
}

std::string written(int day, int month, int year) {
    const auto two = [](int n) { return (n < 10 ? "0" : "") + std::to_string(n); };
    return two(day) + "/" + two(month) + "/" + std::to_string(year);
}

TEST(DayNumber, FollowsTheCalendarFrom1900To2099AndBackToText) {
    int expected = 2;  // 1 January 1900
    for (int year = 1900; year <= 2099; ++year)
        for (int month = 1; month <= 12; ++month)
            for (int day = 1; day <= lastOf(month, year); ++day, ++expected) {
                ASSERT_EQ(DayNumber(day, month, year), expected) << written(day, month, year);
                ASSERT_EQ(FormatDayNumber(expected), written(day, month, year));
            }
    EXPECT_EQ(expected, 73051);  // 1 January 2100
}

TEST(DayNumber, ADayThatItsMonthDoesNotHaveRunsOnAndAMonthOutsideTheYearIsAnError) {
    EXPECT_EQ(FormatDayNumber(DayNumber(31, 2, 2023)), "03/03/2023");
    EXPECT_EQ(FormatDayNumber(DayNumber(31, 4, 2024)), "01/05/2024");
    EXPECT_THROW(DayNumber(1, 0, 2024), RunTimeError);
    EXPECT_THROW(DayNumber(1, 13, 2024), RunTimeError);
}

TEST(Values, AreFormattedWithZeroToThreeDecimals) {
    testing::VirtualPlatform platform;
    struct Row {
        double value;
        int decimals;
        const char* text;
    };
    for (const Row& row : {Row{1234, 0, "1234"}, Row{0, 3, "0.000"}, Row{1234.5678, 3, "1234.568"}, Row{0.5, 0, "1"},
                           Row{2.5, 0, "3"}, Row{-2.5, 0, "-3"}, Row{0.125, 2, "0.13"}, Row{0.05, 1, "0.1"},
                           Row{9.96, 1, "10.0"}, Row{1234, 4, ""}, Row{1, -1, ""}, Row{1, 255, ""}})
        EXPECT_EQ(FormatDecimals(row.value, row.decimals), row.text) << row.value << ", " << row.decimals;
    platform.separator = ",";
    for (const auto& [value, text] : {std::pair{20.0, "20"}, {0.1 * 3, "0,3"}, {-12.25, "-12,25"}, {2.0 / 3, "0,667"}})
        EXPECT_EQ(formatShort(value), text);
}

}  // namespace
}  // namespace kestrel
