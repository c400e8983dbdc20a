// What the command registers of the boards take from the test pages, and what their test states say.
// A command register is written after its mailbox.
#pragma once

namespace kestrel {

// Bits of the test states.
inline constexpr int TestModeBit = 0;
inline constexpr int ZeroingBit = 1;  ///< of the sector board's

namespace command {
inline constexpr unsigned None = 0;
inline constexpr unsigned TestTime = 1;    ///< the mailbox holds the test time
inline constexpr unsigned Outputs = 2;     ///< the mailbox holds the outputs
inline constexpr unsigned ZeroMotors = 3;  ///< of the sector board
}  // namespace command

}  // namespace kestrel
