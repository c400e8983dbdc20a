// The command line of mklang, apart from main() so that tests can run it.
// Exit status: 0 done, 1 a bad file (told on `err`; bad sources write nothing), 2 a bad command line.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "command_line/program_text.h"

namespace kestrel::mklang {

/// What is said of the program, without the option --help.
ProgramText programText();
int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace kestrel::mklang
