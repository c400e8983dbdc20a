// Reading a command line by its table, and the table for people.
#include "command_line/command_line.h"

#include <algorithm>
#include <set>

#include "command_line/program_text.h"

namespace kestrel {

namespace {

const Option& find(const OptionTable& table, const std::string& name) {
    const bool named = name.starts_with("-");
    const auto found = std::ranges::find(table, named ? name : "", &Option::name);
    if (found != table.end()) return *found;
    throw BadOption(named ? "unknown option " + name + " (--help lists the options)"
                          : "unexpected argument \"" + name + "\"");
}

void give(const Option& option, const std::string& value) {
    try {
        option.take(value);
    } catch (const std::invalid_argument& wrong) {
        throw BadOption(option.name + ": " + wrong.what());
    }
}

std::string leftColumn(const Option& option) {
    return "  " + option.name + (option.value.empty() ? "" : " ") + option.value + "  ";
}

}  // namespace

void readCommandLine(const OptionTable& table, const std::vector<std::string>& arguments) {
    std::set<std::string> seen;
    for (auto next = arguments.begin(); next != arguments.end(); ++next) {
        const auto sign = next->starts_with("--") ? next->find('=') : std::string::npos;
        const bool joined = sign != std::string::npos;
        const std::string name = next->substr(0, sign);
        const Option& option = find(table, name);
        if (option.name.empty()) {
            give(option, *next);
            continue;
        }
        const bool takesValue = !option.value.empty();
        if (!takesValue && joined) throw BadOption(name + " takes no value");
        if (!seen.insert(name).second && takesValue && option.times == Option::Times::Once)
            throw BadOption(name + " is given twice");
        std::string value;
        if (takesValue) {
            if (!joined && std::next(next) != arguments.end()) value = *++next;
            if (joined) value = next->substr(sign + 1);
            if (value.empty()) throw BadOption(name + " needs a value: " + name + " " + option.value);
        }
        give(option, value);
        if (option.times == Option::Times::Last) return;
    }
}

std::string listOptions(const OptionTable& table) {
    std::size_t width = 0;
    for (const Option& option : table) width = std::max(width, option.name.empty() ? 0 : leftColumn(option).size());
    std::string text;
    for (const Option& option : table) {
        if (option.name.empty()) continue;
        std::string left = leftColumn(option);
        left.resize(width, ' ');
        std::string help = option.help;
        for (auto end = help.find('\n'); end != std::string::npos; end = help.find('\n', end + 1))
            help.insert(end + 1, width, ' ');
        text += left + help + "\n";
    }
    return text;
}

Option helpOption(bool& isWanted) {
    return {"--help", "", "print this help and end", setTo(isWanted, true), Option::Times::Last};
}

int runTool(const ProgramText& tool, const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
            const std::function<int()>& work) {
    bool help = false;
    ProgramText program = tool;
    program.options.push_back(helpOption(help));
    try {
        readCommandLine(program.options, arguments);
        if (!help) return work();
    } catch (const BadOption& wrong) {
        err << tool.name << ": " << wrong.what() << '\n';
        return EndedByBadOption;
    }
    out << helpText(program);
    return 0;
}

}  // namespace kestrel
