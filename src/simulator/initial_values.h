// What stands in the machine's parameters when it is switched on, where the index files' preload is not enough.
// Settings that the files preload sensibly are left alone.
#pragma once

#include "simulator/machine.h"
#include "simulator/world.h"

namespace kestrel::simulator {

void setInitialValues(World& world, const DateTime& clock);

}  // namespace kestrel::simulator
