// Carrying out a plan: a parameter and its copy at a time, and reading everything back.
#pragma once

#include <vector>

#include "ctl/plan.h"

namespace kestrel::ctl {

/// Writes what is not done, some times over where a board does not take it, and reads back what was written. From then
/// on each step says what its board has, as far as it is known. After an interruption of the line nothing more goes
/// out: another machine may stand there. `machine` is the number of the one that is meant.
Ending carryOut(Context& context, LineWork& work, std::vector<Step>& steps, std::uint32_t machine);

}  // namespace kestrel::ctl
