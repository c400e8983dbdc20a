// Basic types of the simulated machine: time, bytes, boards and the pace of the line.
// Nothing here, nor elsewhere in this folder, is shared with the PC's side of the line.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "catalogue/setting.h"

namespace kestrel::simulator {

using Micros = std::int64_t;  // microseconds of the owner's clock, which begins at 0 when the machine is switched on
using Bytes = std::vector<std::uint8_t>;

using kestrel::Board;

inline constexpr std::size_t boardCount = 3;
inline constexpr std::array<Board, boardCount> allBoards{Board::Master, Board::HotDrink, Board::Sector};
constexpr std::size_t indexOf(Board board) { return static_cast<std::size_t>(board); }

inline constexpr Micros millisecond = 1'000;
inline constexpr Micros second = 1'000'000;
inline constexpr Micros minute = 60 * second;

// One byte at 19200 baud, 8 data bits, no parity, 1 stop bit: ten bits.
inline constexpr Micros byteTime = 521;
// A pause of this length in what arrives lets a board start afresh with the next byte.
inline constexpr Micros resyncSilence = 50 * millisecond;

}  // namespace kestrel::simulator
