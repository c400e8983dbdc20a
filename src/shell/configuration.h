// What the two configuration files settle: the serial port and the language.
// The family's file wins over the program's own, which is rewritten to match.
#pragma once

#include <string>

namespace kestrel {

/// Stem of the language file in use.
std::string& ActiveLanguage();

/// Reads both files, settles port and language, and fills the language menu. Without any language file it shows a
/// message and ends the process.
void ReadConfig();

/// Rewrites the program's own file with the present port and the language that is checked in the menu. A file that
/// cannot be written is a run-time error; the old one then stands whole.
void WriteConfig();

}  // namespace kestrel
