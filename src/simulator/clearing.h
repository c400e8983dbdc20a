// Clearing of sales data on the PC's order.
// The amounts of the payment system's audit are not among them; the PC writes zeros to those itself.
#pragma once

#include "simulator/world.h"

namespace kestrel::simulator {

// Obeys the master's command parameter when it orders a clearing.
void obeyClearing(World& world, const Setting& parameter);

}  // namespace kestrel::simulator
