// The tour: opens every page of the menu in turn, waits until it has been filled and takes its picture.
// Shows on one sheet whether a program and a machine work together.
#pragma once

#include <filesystem>

namespace kestrel::qt {

class MainWindowView;

/// Makes the directory if there is none. A run-time error when no file can be written in it.
void prepareTourDirectory(const std::filesystem::path& directory);

/// Saves DIR/<page>.png of every page and DIR/MDIForm1.png, and prints a table: page, values received, milliseconds.
/// The program must have been loaded. True if every page was filled within its time.
bool runTour(MainWindowView& window, const std::filesystem::path& directory);

}  // namespace kestrel::qt
