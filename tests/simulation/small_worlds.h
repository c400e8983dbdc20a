// Worlds so small that they can be played out in full: one board, a page of two records, three acts, one fault at each
// event in turn.
#pragma once

#include <vector>

#include "shell/windows.h"
#include "simulation/plan.h"

namespace kestrel::testing {

/// The registry with the page of the small worlds, which has one setting and one value that is read again and again.
PageRegistry withSmallPage(PageRegistry pages);
/// An act by its letter: o opens the page, c closes it, e edits the setting, f edits it again, p chooses the port, k
/// gives an order to a board that is not there.
void actInSmallWorld(char letter);
/// Every order of three acts without a fault, and every fault at every place of the first second of a page's life.
std::vector<Plan> smallWorlds();

}  // namespace kestrel::testing
