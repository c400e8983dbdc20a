// The command line of the program.
// Reading it needs no display, no machine and no file but the directory that it names.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "command_line/program_text.h"

namespace kestrel {

enum class Theme { System, Light, Dark, Contrast };

struct Options {
    bool demo = false;                   ///< work on the simulated machine
    std::filesystem::path directory;     ///< the program's directory, absolute; empty: where the executable lies
    std::map<int, std::string> devices;  ///< by port, 1 to 4; absolute paths where devices are files
    std::vector<std::string> pages;      ///< class names of the pages to open at start
    std::filesystem::path tour;          ///< where the tour puts its pictures, absolute; empty: no tour
    Theme theme = Theme::System;
    std::string faults;  ///< of the simulated machine, in its own notation
    bool version = false;
    bool help = false;
};

/// Reads the arguments, without the program's own name. Throws BadOption. After --help or --version the rest is not
/// looked at.
Options parseOptions(const std::vector<std::string>& arguments);

/// What is said of the program.
ProgramText programText();

}  // namespace kestrel
