// The presence words of the master: whether the boards behind it are there.
// What a page keeps of such a word is the last one that came.
#pragma once

#include "link/param_table.h"

namespace kestrel {

/// No word has come yet.
inline constexpr ParamValue NoPresence = 255;

/// Whether a presence word says that its board is there.
constexpr bool SaysPresent(ParamValue presenceWord) { return (presenceWord & 4) != 0; }

}  // namespace kestrel
