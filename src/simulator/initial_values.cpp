// What stands in the machine's parameters when it is switched on.
// A run of values goes to consecutive parameters.
#include "simulator/initial_values.h"

#include <initializer_list>

namespace kestrel::simulator {
namespace {

struct Run {
    Board board;
    int first;
    std::initializer_list<std::uint32_t> values;
};

void lay(World& world, std::initializer_list<Run> runs) {
    for (const Run& run : runs) {
        int parameter = run.first;
        for (const std::uint32_t value : run.values) world.set(run.board, parameter++, value);
    }
}

void setState(World& world) {
    world.setBit(Board::Master, master::hotDrinkPresence, presentBit, world.isFitted(Board::HotDrink));
    world.setBit(Board::Master, master::sectorPresence, presentBit, world.isFitted(Board::Sector));
    lay(world,
        {{Board::Master, master::decimals, {2}}, {Board::Master, master::state, {clockBit | eightLanguagesBit}}});
}

void setClock(World& world, const DateTime& clock) {
    const auto hour = static_cast<std::uint32_t>(clock.hour);
    const auto minute = static_cast<std::uint32_t>(clock.minute);
    const auto day = static_cast<std::uint32_t>(clock.day);
    const auto month = static_cast<std::uint32_t>(clock.month);
    const auto year = static_cast<std::uint32_t>(clock.year % 100);
    lay(world, {{Board::Master, master::setHour, {hour, minute, day, month, year}},
                {Board::Master, master::minute, {minute, hour, day, month, year}}});
}

void setSales(World& world) {
    lay(world, {{Board::Master, master::lifetimeVends, {15382, 1207, 34, 12, 987450, 78310, 425, 60, 9, 41, 78}}});
}

}  // namespace

void setInitialValues(World& world, const DateTime& clock) {
    setState(world);
    setClock(world, clock);
    setSales(world);
}

}  // namespace kestrel::simulator
