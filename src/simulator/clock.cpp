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

struct Part {
    Setting setting;
    Setting shown;
    std::uint32_t lowest;
    std::uint32_t highest;
};
constexpr std::array<Part, 5> parts{{{master::ClockSetHour, master::ClockHour, 0, 23},
                                     {master::ClockSetMinute, master::ClockMinute, 0, 59},
                                     {master::ClockSetDay, master::ClockDay, 1, 31},
                                     {master::ClockSetMonth, master::ClockMonth, 1, 12},
                                     {master::ClockSetYear, master::ClockYear, 0, 99}}};

}  // namespace

Clock::Clock(World& world) : world_(world) { startMinute(); }

void Clock::written(const Setting& parameter) {
    for (const Part& part : parts) {
        if (part.setting != parameter) continue;
        const std::uint32_t value = world_.get(parameter);
        if (value < part.lowest || value > part.highest) return;
        world_.set(part.shown, value);
        if (part.shown == master::ClockHour || part.shown == master::ClockMinute) startMinute();
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
    const std::uint32_t next = world_.get(master::ClockMinute) + 1;
    world_.set(master::ClockMinute, next % 60);
    if (next < 60) return;
    const std::uint32_t hour = world_.get(master::ClockHour) + 1;
    world_.set(master::ClockHour, hour % 24);
    if (hour >= 24) advanceDay();
}

void Clock::advanceDay() {
    const std::uint32_t day = world_.get(master::ClockDay);
    const std::uint32_t month = world_.get(master::ClockMonth);
    const std::uint32_t year = world_.get(master::ClockYear);
    const bool lastOfMonth = day >= daysIn(month, year);
    const bool lastOfYear = lastOfMonth && month >= 12;
    world_.set(master::ClockDay, lastOfMonth ? 1 : day + 1);
    if (lastOfMonth) world_.set(master::ClockMonth, lastOfYear ? 1 : month + 1);
    if (lastOfYear) world_.set(master::ClockYear, (year + 1) % 100);
}

}  // namespace kestrel::simulator
