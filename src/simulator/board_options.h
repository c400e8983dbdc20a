// The command line of the board program.
// Reading it touches nothing outside, so that it can be tested.
#pragma once

#include <string>
#include <vector>

#include "command_line/program_text.h"
#include "simulator/machine.h"

namespace kestrel::simulator {

struct BoardOptions {
    MachineOptions machine;      // an empty directory: where the program is
    std::filesystem::path link;  // empty: none wanted
    bool quiet = false;
    bool help = false;
    bool version = false;
};

// The arguments without the program's name. Throws BadOption.
BoardOptions parseBoardOptions(const std::vector<std::string>& arguments);

// What is said of the program.
ProgramText boardText();

}  // namespace kestrel::simulator
