// kestrelctl on the simulated machine of a run: it reads, writes and compares while the line is bad, and again when it
// is well. What it says must be so, and nothing is written that its file does not ask for.
#pragma once

#include <cstdint>

#include "simulation/play.h"

namespace kestrel::testing {

Outcome playTerminal(std::uint64_t seed);

}  // namespace kestrel::testing
