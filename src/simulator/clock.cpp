// The master's clock and calendar.
// The parameters themselves hold the time; the clock only moves them on.
#include "simulator/clock.h"

#include <array>

namespace kestrel::simulator {
namespace {

std::uint32_t daysIn(std::uint32_t month, std::uint32_t year) {
    constexpr std::array<std::uint32_t, 12> days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12) return 31;
    const bool leap = year % 4 == 0;  // 2000 to 2099
    return days[month - 1] + (month == 2 && leap ? 1 : 0);
}

struct Setting {
    int parameter;
    int shown;
    std::uint32_t lowest;
    std::uint32_t highest;
};
constexpr std::array<Setting, 5> settings{{{master::setHour, master::hour, 0, 23},
                                           {master::setMinute, master::minute, 0, 59},
                                           {master::setDay, master::day, 1, 31},
                                           {master::setMonth, master::month, 1, 12},
                                           {master::setYear, master::year, 0, 99}}};

}  // namespace

Clock::Clock(World& world) : world_(world) { startMinute(); }

void Clock::written(int parameter) {
    for (const Setting& setting : settings) {
        if (setting.parameter != parameter) continue;
        const std::uint32_t value = world_.get(Board::Master, parameter);
        if (value < setting.lowest || value > setting.highest) return;
        world_.set(Board::Master, setting.shown, value);
        if (setting.shown == master::hour || setting.shown == master::minute) startMinute();
    }
}

void Clock::startMinute() {
    const std::uint64_t mine = ++minute_;
    world_.agenda.after(minute, [this, mine] {
        if (mine != minute_) return;
        advanceMinute();
        startMinute();
    });
}

void Clock::advanceMinute() {
    const std::uint32_t next = world_.get(Board::Master, master::minute) + 1;
    world_.set(Board::Master, master::minute, next % 60);
    if (next < 60) return;
    const std::uint32_t hour = world_.get(Board::Master, master::hour) + 1;
    world_.set(Board::Master, master::hour, hour % 24);
    if (hour >= 24) advanceDay();
}

void Clock::advanceDay() {
    const std::uint32_t day = world_.get(Board::Master, master::day);
    const std::uint32_t month = world_.get(Board::Master, master::month);
    const std::uint32_t year = world_.get(Board::Master, master::year);
    const bool lastOfMonth = day >= daysIn(month, year);
    const bool lastOfYear = lastOfMonth && month >= 12;
    world_.set(Board::Master, master::day, lastOfMonth ? 1 : day + 1);
    if (lastOfMonth) world_.set(Board::Master, master::month, lastOfYear ? 1 : month + 1);
    if (lastOfYear) world_.set(Board::Master, master::year, (year + 1) % 100);
}

}  // namespace kestrel::simulator
