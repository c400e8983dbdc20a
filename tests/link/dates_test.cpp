// Serial days against a calendar that is counted day by day.
// A wrong leap year would show every date of the machine's clock one day off.
#include "link/dates.h"

#include <gtest/gtest.h>

#include "platform/trouble.h"

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

}  // namespace
}  // namespace kestrel
