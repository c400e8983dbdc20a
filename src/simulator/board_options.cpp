// The command line of the board program.
#include "simulator/board_options.h"

#include <limits>
#include <stdexcept>

#include "simulator/commands.h"

namespace kestrel::simulator {
namespace {

constexpr std::uint64_t highestLatency = 1000;

std::uint64_t number(const std::string& text, std::uint64_t highest, const std::string& wanted) {
    const auto found = parseNumber(text, highest);
    if (!found) throw std::invalid_argument("takes " + wanted + ", not \"" + text + "\"");
    return *found;
}

OptionTable tableFor(BoardOptions& options) {
    using enum Option::Times;
    MachineOptions& machine = options.machine;
    return {
        {"--directory", "DIR",
         "where the index files *.inx are\n(default: the installed ones, or where kestrel-board lies)",
         keepIn(machine.directory)},
        {"--link", "PATH", "keep a symbolic link to the pseudo-terminal at PATH", keepIn(options.link)},
        {"--seed", "N", "seed of everything that is left to chance (default: 1)",
         [&](const std::string& text) {
             machine.seed = number(text, std::numeric_limits<std::uint64_t>::max(), "a whole number");
         }},
        {"--fault", "LIST",
         "faults with their probability per exchange, as drop=0.01,flip=0.02\n(their names stand below)",
         [&](const std::string& text) { machine.faults = parseFaults(text); }},
        {"--latency", "MS", "hand bytes over at multiples of this time, as an adapter does",
         [&](const std::string& text) {
             machine.latency = static_cast<Micros>(number(text, highestLatency, "0 to 1000 ms")) * millisecond;
         }},
        {"--no-hot-drink", "", "leave out the hot-drink board", setTo(machine.hotDrinkBoard, false)},
        {"--no-sector", "", "leave out the sector board", setTo(machine.sectorBoard, false)},
        {"--still", "", "no sales, alarms or drifting readings", setTo(machine.moving, false)},
        {"--quiet", "", "do not print the exchanges", setTo(options.quiet, true)},
        {"--version", "", "print the version and end", setTo(options.version, true), Last},
        helpOption(options.help),
    };
}

}  // namespace

BoardOptions parseBoardOptions(const std::vector<std::string>& arguments) {
    BoardOptions options;
    readCommandLine(tableFor(options), arguments);
    return options;
}

ProgramText boardText() {
    BoardOptions none;
    return {"kestrel-board",
            "simulated vending machine on a pseudo-terminal",
            {"[OPTION]..."},
            "The first line printed is the path of the pseudo-terminal, then a line an exchange.\n",
            tableFor(none),
            {{"Commands",
              "  A line each on standard input (BOARD is 0 master, 1 hot-drink, 2 sector):\n"
              "  set BOARD PARAM VALUE   get BOARD PARAM   silent BOARD on|off\n"
              "  unplug   plug   fault LIST   strike FAULT   quit\n"
              "  strike lets one of noise, reset, lost, port, busy, stream, change and swap happen at once.\n"
              "  The program ends at quit, at SIGTERM or SIGINT, and when a pipe or terminal on its\n"
              "  standard input is closed.\n"},
             {"Faults", faultHelp()}}};
}

}  // namespace kestrel::simulator
