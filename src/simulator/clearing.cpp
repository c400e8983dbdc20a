// Clearing of sales data.
// The lifetime totals have a command of their own.
#include "simulator/clearing.h"

namespace kestrel::simulator {
namespace {

constexpr std::uint32_t clearCommand = 1;
constexpr std::uint32_t clearLifetimeCommand = 7;

// One parameter and those behind it up to the last.
void clear(World& world, const Setting& first, const Setting& last) {
    for (Setting each = first; each.number <= last.number; ++each.number) world.set(each, 0);
}

}  // namespace

void obeyClearing(World& world, const Setting& parameter) {
    if (parameter != master::Command) return;
    const std::uint32_t command = world.get(parameter);
    if (command == clearCommand) {
        clear(world, master::TotalVends, master::TotalTests);
        clear(world, master::TotalTakings, master::CoinCount.back());
        clear(world, hot_drink::SelectionVends.front(), hot_drink::SelectionTests.back());
        clear(world, sector::SectorVends.front(), sector::SectorTests.back());
    } else if (command == clearLifetimeCommand) {
        world.set(master::LifetimeVends, 0);
        world.set(master::LifetimeTakings, 0);
    }
}

}  // namespace kestrel::simulator
