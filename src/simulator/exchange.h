// One exchange between the PC and a board, as the machine saw it.
// Given to whoever watches the line, for logs and for tests.
#pragma once

#include <string>

#include "simulator/receiver.h"
#include "simulator/types.h"

namespace kestrel::simulator {

struct Exchange {
    Micros time = 0;  // when the request's last byte had arrived
    Frame request;
    int parameter = 0;        // number of the parameter at the address, 0 if none begins there
    int identity = 0;         // the same for identity records
    std::uint32_t value = 0;  // written, or read; meaningful when the board did not stay silent
    Bytes reply;              // as it went out, faults included; empty: silence
    std::string note;         // why there was no reply, and which faults struck; empty: all in order
};

std::string_view nameOf(Board board);

// Bytes as two-digit hexadecimal numbers with blanks between.
std::string hexOf(const Bytes& bytes);

// One line: seconds, board, direction, parameter, value, request, reply, the parameter's name, note.
std::string describe(const Exchange& exchange);

}  // namespace kestrel::simulator
