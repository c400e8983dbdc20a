// Names of the sectors as they lie in the machine: six rows of eight.
// A name is the row and the column run together, "11" to "68".
#pragma once

#include <string>

namespace kestrel {

inline constexpr int SectorCount = 48;
inline constexpr int SectorColumns = 8;

/// Of sector 0 to 47.
inline std::string RowAndColumn(int sector) {
    return std::to_string(sector / SectorColumns + 1) + std::to_string(sector % SectorColumns + 1);
}

}  // namespace kestrel
