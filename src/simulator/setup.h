// Building the machine's boards from an installation: memories, identities and first values.
// Separate from the machine, which only runs what stands here.
#pragma once

#include "simulator/machine.h"
#include "simulator/world.h"

namespace kestrel::simulator {

// Throws std::runtime_error when an index file is missing or unusable.
World buildWorld(const MachineOptions& options);

}  // namespace kestrel::simulator
