// The command line of kestrelctl: a command, what it is about, and options.
// Reading it needs no machine and no file but the directory that it names.
#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "command_line/program_text.h"

namespace kestrel::ctl {

struct Options {
    std::string command;
    std::vector<std::string> arguments;  ///< files, or names of parameters
    bool demo = false;                   ///< work on the simulated machine
    std::string faults;                  ///< of the simulated machine, in its own notation
    std::string device;                  ///< empty: the only one of the computer
    std::filesystem::path directory;     ///< of index and language files; empty: where the executable lies
    std::string language;                ///< stem of its file; empty: by the environment
    int wait = 30;                       ///< seconds in which a silent line may come back
    int seconds = 0;                     ///< after which watching ends; 0: it does not
    bool json = false;
    std::set<std::string> groups;  ///< of parameters; none: all
    bool all = false;              ///< counters and alarms too
    bool own = false;              ///< what belongs to one machine alone too
    bool clock = false;            ///< set the clock too
    bool edited = false;           ///< a file whose sum does not fit
    bool dryRun = false;
    bool yes = false;
    std::string format = "text";
    bool version = false;
    bool help = false;
};

/// Exit statuses, as of programs that compare: all is well; the command ran, and something differs, is missing or is
/// wrong; it could not be run.
namespace status {
inline constexpr int Well = 0, Differs = 1, Trouble = 2;
}  // namespace status

/// The arguments without the program's name. Throws BadOption.
Options parseOptions(const std::vector<std::string>& arguments);

/// What is said of one command, or of the program where it is empty.
ProgramText programText(const std::string& command = {});

}  // namespace kestrel::ctl
