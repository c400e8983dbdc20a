// The presence words of the master: whether the boards behind it are there.
// One speaks for the hot-drink board, one for the sector board.
#pragma once

#include "link/param_table.h"

namespace kestrel {

/// Whether a presence word says that its board is there.
constexpr bool SaysPresent(ParamValue presenceWord) { return (presenceWord & 4) != 0; }

}  // namespace kestrel
