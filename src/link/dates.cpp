// Dates as serial days.
#include "link/dates.h"

#include <array>
#include <chrono>
#include <cstdio>

#include "platform/errors.h"

namespace kestrel {

namespace {

constexpr int FirstYear = 1900;
constexpr int FirstOfFirstYear = 2;  ///< serial day of 1 January 1900
constexpr std::array<int, 12> DaysBeforeMonth = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};

bool isLeap(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

}  // namespace

int DayNumber(int day, int month, int year) {
    if (month < 1 || month > 12) throw RunTimeError(error_number::SubscriptOutOfRange, "Subscript out of range");
    int n = (year - FirstYear) * 365 + FirstOfFirstYear - 1;
    for (int y = FirstYear; y < year; y += 4)
        if (isLeap(y)) ++n;
    n += DaysBeforeMonth[static_cast<std::size_t>(month - 1)] + day;
    if (month > 2 && isLeap(year)) ++n;
    return n;
}

std::string FormatDayNumber(int dayNumber) {
    using namespace std::chrono;
    const year_month_day date{sys_days{year{FirstYear} / January / 1} + days{dayNumber - FirstOfFirstYear}};
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%02u/%02u/%04d", static_cast<unsigned>(date.day()),
                  static_cast<unsigned>(date.month()), static_cast<int>(date.year()));
    return text.data();
}

}  // namespace kestrel
