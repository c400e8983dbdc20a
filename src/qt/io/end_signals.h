// Signals that ask the program to end: hang-up, interrupt, termination.
// They are taken from the event loop, wherever it runs, so that the port is closed in good order.
#pragma once

#include <functional>

namespace kestrel::qt {

/// Calls the handler from the event loop at the first such signal; a second one ends the process at once. Signals that
/// whoever started the program had switched off stay off. Does nothing on systems without signals.
void onEndSignal(std::function<void()> handler);

}  // namespace kestrel::qt
