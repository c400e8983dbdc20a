// The command line of mkindex, apart from main() so that tests can run it.
// Exit status: 0 done, 1 a bad table or file (told on `err`), 2 a bad command line.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "command_line/program_text.h"

namespace kestrel::mkindex {

/// What is said of the program, without the option --help.
ProgramText programText();
int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace kestrel::mkindex
