// The boards' ear: finds the request frames in the bytes that arrive.
// After anything that it cannot take as a frame it is deaf until the line has been silent for 50 ms.
#pragma once

#include <optional>

#include "simulator/types.h"

namespace kestrel::simulator {

struct Frame {
    enum class Verdict { Good, BadSum, Malformed, NoSuchBoard };

    Verdict verdict = Verdict::Good;
    Bytes raw;  // all bytes, the sum included
    // Meaningful when the verdict is Good:
    Board board = Board::Master;
    bool write = false;
    std::uint32_t address = 0;  // first address byte lowest
    int width = 1;              // bytes to be read or written, 1 to 4
    Bytes data;                 // of a write, low byte first
    std::uint8_t sum = 0;       // the request's checksum; the acknowledgement is its double
};

class Receiver {
  public:
    // Takes the byte that arrived at `when`; gives a frame when the byte completes one, or spoils one.
    std::optional<Frame> take(Micros when, std::uint8_t byte);

  private:
    Bytes bytes_;
    Micros last_ = 0;
    bool deaf_ = false;
};

}  // namespace kestrel::simulator
