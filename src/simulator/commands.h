// Orders to a running machine as lines of text, for people at a terminal and for test scripts.
// A board is named by its number or its name: 0 or master, 1 or hot-drink, 2 or sector.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "simulator/machine.h"

namespace kestrel::simulator {

// Carries out one line and gives the text to be printed, which is often empty:
//   set BOARD PARAM VALUE, get BOARD PARAM, silent BOARD on|off, unplug, plug, fault LIST
// An empty line does nothing. Throws std::invalid_argument that says what is wrong with the line.
std::string runCommand(Machine& machine, std::string_view line);

// A whole decimal number from 0 to `highest`, and nothing else.
std::optional<std::uint64_t> parseNumber(std::string_view text, std::uint64_t highest);

}  // namespace kestrel::simulator
