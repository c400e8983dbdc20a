// Bits of the parameters whose meaning the simulated boards know, and how many products the machine has.
// What the parameters are is said by the catalogue.
#pragma once

#include "catalogue/parameters.h"

namespace kestrel::simulator {

inline constexpr int selectionCount = hot_drink::SelectionPrice.size();  // keys, plain and with preselection
inline constexpr int sectorCount = sector::SectorPrice.size();           // six rows of eight

inline constexpr unsigned presentBit = 4;
inline constexpr unsigned busyBit = 2;  // of the machine's state, as the next two
inline constexpr unsigned clockBit = 4;
inline constexpr unsigned eightLanguagesBit = 8;
inline constexpr unsigned allAtPriceOneBit = 1;
inline constexpr unsigned coinMechanismBit = 1;
inline constexpr unsigned mdbBit = 4;
inline constexpr unsigned inTestBit = 1;
inline constexpr unsigned zeroingBit = 2;

}  // namespace kestrel::simulator
