// The run of the program on Qt: the look, the machine under it, the start, the event loop, the end.
// The command line has been read and the display found by then.
#pragma once

#include <QApplication>

#include "shell/options.h"

namespace kestrel::qt {

/// Runs until the program ends. The pages that there are must have been registered, and the options be valid: pages
/// that exist, faults that the simulated machine knows.
[[noreturn]] void runProgram(QApplication& application, const Options& options);

}  // namespace kestrel::qt
