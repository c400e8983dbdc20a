// Signals that ask a program to end: hang-up, interrupt, termination.
// Those that whoever started the program had switched off stay off.
#pragma once

#include <signal.h>

namespace kestrel::posix {

/// While it lives the signals are counted, and let through only while a program waits, so that none is missed between
/// two looks. At most one lives.
class EndSignals {
  public:
    EndSignals();
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    /// The mask to wait with.
    const sigset_t& whileWaiting() const { return before_; }
    /// How many have come.
    static int wanted();

  private:
    sigset_t before_;
};

/// For a program that waits in a toolkit: a descriptor that can be read after the first of them; the second ends the
/// process at once. -1 where the system has none left.
int endSignalDescriptor();

}  // namespace kestrel::posix
