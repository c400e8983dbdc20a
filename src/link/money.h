// Money: raw amounts of the master, scaled by the decimals that it reports.
// There is no currency; the scale is the board's own.
#pragma once

#include "link/param_table.h"

namespace kestrel {

/// The low two bits of the master's parameter for them.
constexpr int DecimalsOf(ParamValue parameter) { return static_cast<int>(parameter & 3); }

}  // namespace kestrel
