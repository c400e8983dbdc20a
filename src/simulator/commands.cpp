// Orders to a running machine as lines of text.
// The table at the end of the file is the whole language.
#include "simulator/commands.h"

#include <array>
#include <charconv>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace kestrel::simulator {
namespace {

using Words = std::vector<std::string>;

[[noreturn]] void refuse(const std::string& why) { throw std::invalid_argument(why); }

Board boardNamed(const std::string& text) {
    for (const Board board : allBoards) {
        if (text == nameOf(board) || text == std::to_string(indexOf(board))) return board;
    }
    refuse("no such board: \"" + text + "\"");
}

int parameterNumber(const std::string& text) {
    const auto number = parseNumber(text, std::numeric_limits<std::int16_t>::max());
    if (!number) refuse("not a parameter number: \"" + text + "\"");
    return static_cast<int>(*number);
}

std::string set(Machine& machine, const Words& words) {
    const auto value = parseNumber(words[3], std::numeric_limits<std::uint32_t>::max());
    if (!value) refuse("not a value: \"" + words[3] + "\"");
    machine.setValue(boardNamed(words[1]), parameterNumber(words[2]), static_cast<std::uint32_t>(*value));
    return {};
}

std::string get(Machine& machine, const Words& words) {
    const Board board = boardNamed(words[1]);
    const int parameter = parameterNumber(words[2]);
    std::ostringstream answer;
    answer << indexOf(board) << ' ' << parameter << ' ' << machine.value(board, parameter);
    return answer.str();
}

std::string silent(Machine& machine, const Words& words) {
    if (words[2] != "on" && words[2] != "off") refuse("\"on\" or \"off\", not \"" + words[2] + "\"");
    machine.setBoardSilent(boardNamed(words[1]), words[2] == "on");
    return {};
}

std::string unplug(Machine& machine, const Words&) {
    machine.portLost();
    return {};
}

std::string plug(Machine& machine, const Words&) {
    machine.portBack();
    return {};
}

std::string fault(Machine& machine, const Words& words) {
    machine.setFaults(parseFaults(words.size() > 1 ? words[1] : ""));
    return {};
}

std::string strike(Machine& machine, const Words& words) {
    machine.strike(kindNamed(words[1]));
    return {};
}

struct Command {
    std::string_view form;
    std::size_t fewestWords;
    std::size_t mostWords;
    std::string (*run)(Machine&, const Words&);
};
constexpr std::array<Command, 7> commands{{{"set BOARD PARAM VALUE", 4, 4, set},
                                           {"get BOARD PARAM", 3, 3, get},
                                           {"silent BOARD on|off", 3, 3, silent},
                                           {"unplug", 1, 1, unplug},
                                           {"plug", 1, 1, plug},
                                           {"fault LIST", 1, 2, fault},
                                           {"strike FAULT", 2, 2, strike}}};

}  // namespace

std::string runCommand(Machine& machine, std::string_view line) {
    std::istringstream in{std::string(line)};
    Words words;
    for (std::string word; in >> word;) words.push_back(word);
    if (words.empty()) return {};
    for (const Command& command : commands) {
        if (words[0] != command.form.substr(0, command.form.find(' '))) continue;
        if (words.size() < command.fewestWords || words.size() > command.mostWords) {
            refuse("usage: " + std::string(command.form));
        }
        try {
            return command.run(machine, words);
        } catch (const std::out_of_range& error) {
            refuse(error.what());
        }
    }
    refuse("unknown command \"" + words[0] + "\"");
}

std::optional<std::uint64_t> parseNumber(std::string_view text, std::uint64_t highest) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number > highest) return std::nullopt;
    return number;
}

}  // namespace kestrel::simulator
