// Opening a port and probing for a board behind it, and the search when that fails.
// The search goes from the wanted port upward to 4, then from 1 upward to 4.
#pragma once

namespace kestrel {

/// Opens a port: 1 to 4 from the menu, or 0 for the one that start-up settled. Failed ports stay
/// disabled in the menu for the run, with the reason beside them. When no port has a board, a message is shown and
/// the process ends.
void OpenPort(int port);

}  // namespace kestrel
