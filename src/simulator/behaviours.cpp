// Who listens to which board.
// A subject passes over parameters that are not its own.
#include "simulator/behaviours.h"

#include "simulator/clearing.h"

namespace kestrel::simulator {
namespace {

constexpr std::uint32_t decimalsMask = 3;

// The master shows the decimals in force in one parameter and takes them from another.
void takeOverDecimals(World& world, const Setting& parameter) {
    if (parameter != master::MoneyDecimalsSetting) return;
    const std::uint32_t others = world.get(master::MoneyDecimals) & ~decimalsMask;
    world.set(master::MoneyDecimals, others | (world.get(parameter) & decimalsMask));
}

}  // namespace

Behaviours::Behaviours(World& world)
    : world_(world),
      clock_(world),
      sales_(world),
      inputs_(world),
      alarms_(world),
      climate_(world),
      dispensing_(world),
      testModes_(world) {}

void Behaviours::written(const Setting& parameter) {
    testModes_.written(parameter);
    clock_.written(parameter);
    dispensing_.written(parameter);
    obeyClearing(world_, parameter);
    takeOverDecimals(world_, parameter);
}

void Behaviours::reset(Board board) {
    testModes_.reset(board);
    dispensing_.reset(board);
}

}  // namespace kestrel::simulator
