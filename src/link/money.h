// Money: raw amounts of the master, scaled by the decimals that it reports.
// There is no currency; the scale is the board's own.
#pragma once

#include "link/param_table.h"

namespace kestrel {

/// Bank 0's parameter whose low two bits are the decimals of all money.
inline constexpr int DecimalsParameter = 3;

constexpr int DecimalsOf(ParamValue parameter) { return static_cast<int>(parameter & 3); }

}  // namespace kestrel
