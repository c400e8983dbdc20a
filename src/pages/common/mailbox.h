// Delivery of a board's mailbox: a command may follow only when the board has taken all of it.
// Orders drive motors, valves and heaters, so that "has taken" is meant to the letter.
#pragma once

namespace kestrel {

/// Whether the parameter's last write has arrived: the mirror is fresh, holds what was sent, and owes no write.
/// Freshness alone would not do: a write that was lost on the line is followed by a read, which brings back what the
/// mailbox held before, and a reply filed under the wrong bank looks fresh while the write is still due.
bool BoardHasTaken(int bank, int parameter, unsigned sent);

}  // namespace kestrel
