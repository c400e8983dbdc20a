// What is said of a program: its --help, its page of the manual and the completion of its command line.
// All are made from one text, so that none of them tells what another does not.
#pragma once

#include <string>
#include <vector>

#include "command_line/command_line.h"

namespace kestrel {

struct ProgramText {
    /// Stands as it is, line by line.
    struct Section {
        std::string title;
        std::string lines;
    };

    std::string name;
    std::string summary;             ///< what it is, in a few words without a full stop
    std::vector<std::string> calls;  ///< what may stand behind its name, a way of calling it each
    std::string description;         ///< lines
    OptionTable options;             ///< --help included
    std::vector<Section> sections;
};

/// The text of --help.
std::string helpText(const ProgramText& program);
/// The page of the manual, in the language of man; `others` are the names of the programs that belong to this one.
std::string manualPage(const ProgramText& program, const std::string& version, const std::vector<std::string>& others);
/// The completion of the command line, for bash.
std::string completionText(const ProgramText& program);

}  // namespace kestrel
