// mkmanual: writes the manual page and the shell completion of every program that is installed.
// It asks the programs' own option tables, as their --help does.
#include <filesystem>
#include <iostream>

#include "command_line/program_text.h"
#include "ctl/options.h"
#include "program_version.h"
#include "shell/options.h"
#include "simulator/board_options.h"
#include "tools/mkindex_command.h"
#include "tools/mklang_command.h"
#include "tools/table_files.h"

namespace {

using namespace kestrel;

std::vector<ProgramText> installedPrograms() {
    bool ignored = false;
    std::vector<ProgramText> programs{programText(), ctl::programText(), simulator::boardText(), mkindex::programText(),
                                      mklang::programText()};
    for (ProgramText& program : programs)
        if (program.options.back().name != "--help") program.options.push_back(helpOption(ignored));
    return programs;
}

bool write(const std::filesystem::path& directory) {
    const std::vector<ProgramText> programs = installedPrograms();
    std::vector<std::string> names;
    names.reserve(programs.size());
    for (const ProgramText& program : programs) names.push_back(program.name);
    bool written = true;
    for (const ProgramText& program : programs) {
        const auto put = [&](const std::string& file, const std::string& text) {
            written = tables::writeWhole((directory / file).string(), text, std::cerr) && written;
        };
        put(program.name + ".1", manualPage(program, ProgramVersion, names));
        put(program.name + ".bash", completionText(program));
    }
    return written;
}

}  // namespace

int main(int count, char** values) {
    std::string directory;
    const ProgramText text{
        "mkmanual", "writes the manual pages and shell completions of the installed programs",    {"--out DIR"},
        "",         {{"--out", "DIR", "where PROGRAM.1 and PROGRAM.bash go", keepIn(directory)}}, {}};
    return runTool(text, {values + 1, values + count}, std::cout, std::cerr, [&] {
        if (directory.empty()) throw BadOption("no directory is named: --out DIR");
        return write(directory) ? 0 : 1;
    });
}
