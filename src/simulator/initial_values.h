// What stands in the machine's parameters when it is switched on: a machine that has been set up and has sold for a
// while. It is laid over the preload of the index files.
#pragma once

#include "simulator/machine.h"
#include "simulator/world.h"

namespace kestrel::simulator {

void setInitialValues(World& world, const MachineOptions& options);

}  // namespace kestrel::simulator
