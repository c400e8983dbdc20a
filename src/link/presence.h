// The presence words of the master: whether the boards behind it are there.
// Bank 0's parameter 1 speaks for the hot-drink board, parameter 2 for the sector board.
#pragma once

#include "link/param_table.h"

namespace kestrel {

inline constexpr int HotDrinkPresence = 1;
inline constexpr int SectorPresence = 2;

/// Whether a presence word says that its board is there.
constexpr bool SaysPresent(ParamValue presenceWord) { return (presenceWord & 4) != 0; }

}  // namespace kestrel
