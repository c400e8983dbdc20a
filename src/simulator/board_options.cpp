// The command line of the board program.
// Options with a value take it as the next argument.
#include "simulator/board_options.h"

#include <limits>
#include <stdexcept>

#include "simulator/commands.h"

namespace kestrel::simulator {
namespace {

constexpr std::uint64_t highestLatency = 1000;

}  // namespace

BoardOptions parseBoardOptions(const std::vector<std::string>& arguments) {
    BoardOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& name = arguments[i];
        const auto value = [&]() -> const std::string& {
            if (i + 1 == arguments.size()) throw std::invalid_argument("option " + name + " needs a value");
            return arguments[++i];
        };
        if (name == "--directory") {
            options.machine.directory = value();
        } else if (name == "--seed") {
            const std::string& text = value();
            const auto seed = parseNumber(text, std::numeric_limits<std::uint64_t>::max());
            if (!seed) throw std::invalid_argument("--seed takes a whole number, not \"" + text + "\"");
            options.machine.seed = *seed;
        } else if (name == "--fault") {
            options.machine.faults = parseFaults(value());
        } else if (name == "--latency") {
            const std::string& text = value();
            const auto milliseconds = parseNumber(text, highestLatency);
            if (!milliseconds) throw std::invalid_argument("--latency takes 0 to 1000 ms, not \"" + text + "\"");
            options.machine.latency = static_cast<Micros>(*milliseconds) * millisecond;
        } else if (name == "--link") {
            options.link = value();
        } else if (name == "--no-hot-drink") {
            options.machine.hotDrinkBoard = false;
        } else if (name == "--no-sector") {
            options.machine.sectorBoard = false;
        } else if (name == "--still") {
            options.machine.moving = false;
        } else if (name == "--quiet") {
            options.quiet = true;
        } else if (name == "--help") {
            options.help = true;
        } else if (name == "--version") {
            options.version = true;
        } else {
            throw std::invalid_argument("unknown option \"" + name + "\"; --help lists them");
        }
    }
    return options;
}

std::string boardHelp() {
    return "kestrel-board: a simulated vending machine on a pseudo-terminal\n"
           "\n"
           "  --directory DIR   where the index files *.inx are (default: where kestrel-board is)\n"
           "  --link PATH       keep a symbolic link to the pseudo-terminal at PATH\n"
           "  --seed N          seed of everything that is left to chance (default: 1)\n"
           "  --fault LIST      faults with their probability per exchange, as drop=0.01,flip=0.02\n"
           "                    (their names stand below)\n"
           "  --latency MS      hand bytes over at multiples of this time, as an adapter does\n"
           "  --no-hot-drink    leave out the hot-drink board\n"
           "  --no-sector       leave out the sector board\n"
           "  --still           no sales, alarms or drifting readings\n"
           "  --quiet           do not print the exchanges\n"
           "  --help, --version\n"
           "\n"
           "The first line printed is the path of the pseudo-terminal, then a line an exchange.\n"
           "Commands, a line each on standard input (BOARD is 0 master, 1 hot-drink, 2 sector):\n"
           "  set BOARD PARAM VALUE   get BOARD PARAM   silent BOARD on|off\n"
           "  unplug   plug   fault LIST   strike FAULT   quit\n"
           "strike lets one of noise, reset, lost, port, busy, stream, change and swap happen at once.\n"
           "The program ends at quit, at SIGTERM or SIGINT, and when a pipe or terminal on its\n"
           "standard input is closed.\n"
           "\n"
           "Faults:\n" +
           faultHelp();
}

}  // namespace kestrel::simulator
