// The command line of every program here: a table of options, by which it is read and from which its help is made.
// An option's value is the next argument, or stands behind "=". Reading needs nothing of the machine.
#pragma once

#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace kestrel {

/// A command line that cannot be followed; the text is one line for the user.
class BadOption : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Exit status of a command line that cannot be followed.
inline constexpr int EndedByBadOption = 2;

struct Option {
    enum class Times { Once, Often, Last };  ///< Last: what comes behind it is not looked at

    std::string name;   ///< with its dashes; empty: takes the arguments that have no name
    std::string value;  ///< what the help calls its value; empty: it takes none, and may be repeated
    std::string help;   ///< lines
    /// Is given the value. Throws BadOption, or std::invalid_argument with what is wrong with the value.
    std::function<void(const std::string& value)> take;
    Times times = Times::Once;
    std::vector<std::string> choices = {};  ///< what a shell may offer as its value
};
using OptionTable = std::vector<Option>;

/// Hands each argument, without the program's own name, to its option. Throws BadOption.
void readCommandLine(const OptionTable& table, const std::vector<std::string>& arguments);
/// The options in two columns, a line or more each.
std::string listOptions(const OptionTable& table);

struct ProgramText;
/// A program that does one piece of work and ends: reads the command line, to which it adds --help, and does the work,
/// which may throw BadOption too. Gives the exit status.
int runTool(const ProgramText& tool, const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
            const std::function<int()>& work);
/// The option that ends a program by its help.
Option helpOption(bool& isWanted);

/// What an option does that is a switch, or that keeps its value.
inline auto setTo(bool& flag, bool on) {
    return [&flag, on](const std::string&) { flag = on; };
}
template <typename Text>
auto keepIn(Text& text) {
    return [&text](const std::string& value) { text = value; };
}
inline auto addTo(std::vector<std::string>& all) {
    return [&all](const std::string& value) { all.push_back(value); };
}

}  // namespace kestrel
