// Dates as serial days: 30 December 1899 is day 0.
// The boards' clocks give day, month and year apart; pages show them through these numbers.
#pragma once

#include <string>

namespace kestrel {

/// The serial day of a date. Month 1 to 12, else a run-time error; a day beyond its month runs on into the next one.
/// The year has four digits, from 1900 on.
int DayNumber(int day, int month, int year);

/// "dd/mm/yyyy" of a serial day.
std::string FormatDayNumber(int dayNumber);

}  // namespace kestrel
