// Texts that the program itself adds to those of the installation: they stand at the end of the language files.
// Files of other makers end before them, or have texts of their own there; then the English ones count that are built
// in.
#pragma once

#include <string>

namespace kestrel {

/// The first line of the section; its mark tells the program's own files apart.
inline constexpr int WindowSectionLine = 616;

/// The text of a line of the section in the active language, or `english`.
std::string WindowText(int line, const char* english);
/// What stands for the name of a device where the machine is a simulated one.
std::string SimulatedDeviceText();

}  // namespace kestrel
