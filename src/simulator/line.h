// The boards' side of the serial line: bytes on their way to the PC, each at its own time.
// One byte takes the line for its whole length, so bytes never overtake each other.
#pragma once

#include <deque>
#include <optional>
#include <utility>

#include "simulator/types.h"

namespace kestrel::simulator {

class OutgoingLine {
  public:
    // Puts the bytes on the line from `from` on, or as soon as it is free.
    void transmit(Micros from, const Bytes& bytes);

    // The adapter of the PC hands over what it has at multiples of this time only; 0: each byte at once.
    void setLatency(Micros latency) { latency_ = latency; }

    std::optional<Micros> next() const;  // when the next byte is there for the PC
    Micros freeAt() const { return freeAt_; }
    Bytes take(Micros now);
    void drop();  // what has not arrived by now never will

  private:
    std::deque<std::pair<Micros, std::uint8_t>> bytes_;
    Micros freeAt_ = 0;
    Micros latency_ = 0;
};

}  // namespace kestrel::simulator
