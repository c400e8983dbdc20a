// The command line of kestrelctl.
#include "ctl/options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>

#include "ctl/parameters.h"
#include "simulator/faults.h"

namespace kestrel::ctl {

namespace {

constexpr const char* Name = "kestrelctl";

struct CommandRow {
    const char* name;
    const char* arguments;
    std::size_t fewest, most;  ///< arguments
    const char* help;
};
constexpr std::size_t Any = 9999;
constexpr std::array<CommandRow, 9> Commands{{
    {"ports", "", 0, 0, "list the serial devices, and why one cannot be opened"},
    {"identify", "", 0, 0, "say which boards are there and which index files they need"},
    {"read", "FILE", 1, 1, "read the machine's settings into a file"},
    {"compare", "FILE [FILE]", 1, 2, "say what differs between a machine and a file, or two files"},
    {"write", "FILE", 1, 1, "write what differs from a file into the machine"},
    {"report", "", 0, 0, "print sales data, audit and alarms"},
    {"watch", "NAME...", 1, Any, "print live values, a line a change"},
    {"monitor", "[NAME...]", 0, Any, "print every exchange on the line while parameters are read"},
    {"doctor", "", 0, 0, "find out why a machine cannot be reached"},
}};

const CommandRow* find(const std::string& command) {
    const auto found = std::ranges::find(Commands, command, &CommandRow::name);
    return found == Commands.end() ? nullptr : found;
}

int secondsOf(const std::string& text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 1 || number > 100'000)
        throw std::invalid_argument("takes 1 to 100000 seconds, not \"" + text + "\"");
    return number;
}

std::string listOfGroups() {
    std::string list;
    for (const std::string& group : SettableGroups()) list += (list.empty() ? "" : ", ") + group;
    return list;
}

void takeGroups(Options& options, const std::string& list) {
    const std::vector<std::string> known = SettableGroups();
    for (std::size_t from = 0; from <= list.size();) {
        const std::size_t end = std::min(list.find(',', from), list.size());
        const std::string name = list.substr(from, end - from);
        if (std::ranges::count(known, name) == 0)
            throw std::invalid_argument("there is no group \"" + name + "\"; there are " + listOfGroups());
        options.groups.insert(name);
        from = end + 1;
    }
}

void takeDirectory(Options& options, const std::string& value) {
    std::error_code trouble;
    options.directory = std::filesystem::canonical(value, trouble);
    if (trouble || !std::filesystem::is_directory(options.directory, trouble))
        throw std::invalid_argument("there is no directory \"" + value + "\"");
}

void takeFormat(Options& options, const std::string& value) {
    if (value != "text" && value != "csv" && value != "html")
        throw std::invalid_argument("\"" + value + "\" is not text, csv or html");
    options.format = value;
}

/// An option, and the commands that take it; none: all of them.
struct OptionRow {
    Option option;
    std::vector<std::string> commands;
};

std::vector<std::string> commandNames() {
    std::vector<std::string> names;
    names.reserve(std::size(Commands));
    for (const CommandRow& each : Commands) names.emplace_back(each.name);
    return names;
}

std::vector<OptionRow> rowsFor(Options& options) {
    using enum Option::Times;
    const std::vector<std::string> onALine = {"identify", "read",  "compare", "write",
                                              "report",   "watch", "monitor", "doctor"};
    return {
        {{"", "FILE", "",
          [&options](const std::string& word) {
              options.command.empty() ? options.command = word : options.arguments.emplace_back(word);
          },
          Often, commandNames()},
         {}},
        {{"--port", "DEVICE", "the serial device (default: the only one of this computer)",
          [&options](const std::string& value) {
              options.device = value.find('/') == std::string::npos ? "/dev/" + value : value;
          }},
         onALine},
        {{"--demo", "", "work on a simulated machine instead of a serial device", setTo(options.demo, true)}, onALine},
        {{"--fault", "LIST", "faults of the simulated machine, such as drop=0.01,flip=0.02", keepIn(options.faults)},
         onALine},
        {{"--wait", "SECONDS", "how long a silent line may take to come back (default: 30)",
          [&options](const std::string& value) { options.wait = secondsOf(value); }},
         onALine},
        {{"--group", "LIST", "these groups alone, with commas between:\n" + listOfGroups(),
          [&options](const std::string& value) { takeGroups(options, value); }, Once, SettableGroups()},
         {"read", "compare", "write"}},
        {{"--all", "", "counters and alarms too", setTo(options.all, true)}, {"read", "compare"}},
        {{"--own", "", "also what belongs to one machine alone, such as its number", setTo(options.own, true)},
         {"compare", "write"}},
        {{"--clock", "", "also set the clock, to the time of this computer", setTo(options.clock, true)}, {"write"}},
        {{"--edited", "", "take a file that was changed by hand", setTo(options.edited, true)}, {"compare", "write"}},
        {{"--dry-run", "", "only say what would be written", setTo(options.dryRun, true)}, {"write"}},
        {{"--yes", "", "do not ask before writing", setTo(options.yes, true)}, {"write"}},
        {{"--format",
          "FORMAT",
          "text, csv or html (default: text)",
          [&options](const std::string& value) { takeFormat(options, value); },
          Once,
          {"text", "csv", "html"}},
         {"report"}},
        {{"--for", "SECONDS", "end after this time (default: at an interrupt)",
          [&options](const std::string& value) { options.seconds = secondsOf(value); }},
         {"watch", "monitor"}},
        {{"--json", "", "print an object a line, for scripts", setTo(options.json, true)}, {}},
        {{"--language",
          "NAME",
          "language of what is printed, by its file (default: by the locale)",
          keepIn(options.language),
          Once,
          {"Italiano", "English", "Deutsch", "Francais", "Espanol"}},
         {}},
        {{"--directory", "DIR",
          "directory of the index and language files\n(default: the installed ones, or where the program lies)",
          [&options](const std::string& value) { takeDirectory(options, value); }},
         {}},
        {{"--version", "", "print the version and end", setTo(options.version, true), Last}, {}},
        {helpOption(options.help), {}},
    };
}

bool isFor(const OptionRow& row, const std::string& command) {
    return command.empty() || row.commands.empty() || std::ranges::count(row.commands, command) > 0;
}

void refuseContradictions(const Options& options) {
    const CommandRow* const command = find(options.command);
    if (options.command.empty()) throw BadOption("no command is given (--help lists them)");
    if (!command) throw BadOption("there is no command \"" + options.command + "\" (--help lists them)");
    const std::size_t count = options.arguments.size();
    if (count < command->fewest || count > command->most)
        throw BadOption(std::string("usage: ") + Name + ' ' + options.command + ' ' + command->arguments);
    if (options.demo && !options.device.empty())
        throw BadOption("--demo and --port contradict each other: the demo uses no serial device");
    if (!options.faults.empty() && !options.demo) throw BadOption("--fault works with --demo only");
    try {
        simulator::parseFaults(options.faults);
    } catch (const std::invalid_argument& wrong) {
        throw BadOption(std::string("--fault: ") + wrong.what());
    }
}

}  // namespace

Options parseOptions(const std::vector<std::string>& arguments) {
    Options options;
    OptionTable table;
    std::vector<const OptionRow*> used;
    std::vector<OptionRow> rows = rowsFor(options);
    for (OptionRow& row : rows) {
        Option option = row.option;
        option.take = [&used, &row](const std::string& value) {
            used.push_back(&row);
            row.option.take(value);
        };
        table.push_back(option);
    }
    readCommandLine(table, arguments);
    for (const OptionRow* row : used)
        if (!isFor(*row, options.command)) throw BadOption(row->option.name + " is not for " + options.command);
    if (!options.help && !options.version) refuseContradictions(options);
    return options;
}

ProgramText programText(const std::string& command) {
    Options none;
    ProgramText text{Name, "", {}, "", {}, {}};
    for (const OptionRow& row : rowsFor(none))
        if (isFor(row, command)) text.options.push_back(row.option);
    if (const CommandRow* const row = find(command)) {
        text.summary = row->help;
        text.calls = {command + (*row->arguments ? std::string(" ") + row->arguments : "") + " [OPTION]..."};
    } else {
        OptionTable commands;
        for (const CommandRow& each : Commands) commands.push_back({each.name, each.arguments, each.help, {}});
        text.summary = "service tool for vending-machine controller boards, for terminals and scripts";
        text.calls = {"COMMAND [ARGUMENT]... [OPTION]..."};
        text.description = "kestrelctl COMMAND --help lists the options that a command takes.\n";
        text.sections.push_back({"Commands", listOptions(commands)});
    }
    text.sections.push_back({"Exit status",
                             "  0  all is well\n"
                             "  1  something differs, is missing or is wrong\n"
                             "  2  the command could not be run\n"});
    return text;
}

}  // namespace kestrel::ctl
