// What is said of a program, for a terminal, for man and for the shell.
#include "command_line/program_text.h"

#include <algorithm>
#include <sstream>

namespace kestrel {

namespace {

std::string replaceAll(std::string text, const std::string& what, const std::string& by) {
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

std::string sentence(std::string words) {
    if (words.front() >= 'a' && words.front() <= 'z') words.front() = static_cast<char>(words.front() - 'a' + 'A');
    return words + ".";
}

std::string upperCase(std::string title) {
    for (char& letter : title)
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    return title;
}

/// As man takes it: a line that begins with a point or an apostrophe would be an order.
std::string forMan(const std::string& text) {
    std::string quoted = replaceAll(replaceAll(text, "\\", "\\e"), "-", "\\-");
    for (const char* order : {".", "'"}) {
        if (quoted.starts_with(order)) quoted.insert(0, "\\&");
        quoted = replaceAll(quoted, std::string("\n") + order, std::string("\n\\&") + order);
    }
    return quoted;
}

std::string asItIs(const std::string& lines) { return ".nf\n" + forMan(lines) + ".fi\n"; }

std::string wordList(const std::vector<std::string>& words) {
    std::string list;
    for (const std::string& word : words) list += (list.empty() ? "" : " ") + word;
    return "-W '" + list + "'";
}

std::string completing(const std::string& what) {
    return "mapfile -t COMPREPLY < <(compgen " + what + " -- \"$word\")";
}

std::string completionOf(const Option& option) {
    const bool isDirectory = option.value == "DIR" || option.value == "DIRECTORY";
    return completing(!option.choices.empty() ? wordList(option.choices) : isDirectory ? "-d" : "-f");
}

}  // namespace

std::string helpText(const ProgramText& program) {
    std::string text;
    for (const std::string& call : program.calls) {
        const std::string start = text.empty() ? "Usage: " : "       ";
        text.append(start).append(program.name).append(" ").append(call).append("\n");
    }
    text += sentence(program.summary) + "\n" + program.description + "\n" + listOptions(program.options);
    for (const ProgramText::Section& section : program.sections) text += "\n" + section.title + ":\n" + section.lines;
    return text;
}

std::string manualPage(const ProgramText& program, const std::string& version, const std::vector<std::string>& others) {
    std::ostringstream page;
    page << ".TH " << upperCase(program.name) << " 1 \"\" \"Kestrel " << version << "\" \"Kestrel\"\n.SH NAME\n"
         << forMan(program.name) << " \\- " << forMan(program.summary) << "\n.SH SYNOPSIS\n";
    for (const std::string& call : program.calls)
        page << (call == program.calls.front() ? "" : ".br\n") << ".B " << forMan(program.name) << "\n"
             << forMan(call) << '\n';
    page << ".SH DESCRIPTION\n" << forMan(sentence(program.summary)) << '\n' << forMan(program.description);
    page << ".SH OPTIONS\n";
    for (const Option& option : program.options) {
        if (option.name.empty()) continue;
        page << ".TP\n\\fB" << forMan(option.name) << "\\fR";
        if (!option.value.empty()) page << " \\fI" << forMan(option.value) << "\\fR";
        page << '\n' << forMan(option.help) << '\n';
    }
    for (const ProgramText::Section& section : program.sections)
        page << ".SH " << upperCase(section.title) << '\n' << asItIs(section.lines);
    std::string list;
    for (const std::string& other : others)
        if (other != program.name) list += (list.empty() ? ".BR " : " ,\n.BR ") + forMan(other) + " (1)";
    if (!list.empty()) page << ".SH SEE ALSO\n" << list << '\n';
    return page.str();
}

std::string completionText(const ProgramText& program) {
    const std::string function = "_" + replaceAll(program.name, "-", "_");
    std::vector<std::string> names;
    std::string cases;
    bool takesFiles = false;
    for (const Option& option : program.options) {
        const bool takesValue = !option.value.empty();
        if (option.name.empty()) {
            takesFiles = takesValue;
            names.insert(names.end(), option.choices.begin(), option.choices.end());
        } else {
            names.push_back(option.name);
        }
        if (!option.name.empty() && takesValue) cases += "    " + option.name + ") " + completionOf(option) + " ;;\n";
    }
    return "# Completion of the command line of " + program.name + ".\n" + function +
           "() {\n    local word=$2 before=$3\n"
           "    # A value may stand behind a sign of equality, which the shell takes for a word of its own.\n"
           "    if [ \"$word\" = = ]; then\n        word=''\n"
           "    elif [ \"$before\" = = ]; then\n        before=${COMP_WORDS[COMP_CWORD - 2]}\n    fi\n"
           "    case $before in\n" +
           cases + "    *) " + completing((takesFiles ? "-f " : "") + wordList(names)) + " ;;\n" +
           "    esac\n}\ncomplete -o filenames -F " + function + " " + program.name + "\n";
}

}  // namespace kestrel
