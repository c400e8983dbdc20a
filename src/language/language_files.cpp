// The texts of the active language and the files that they come from.
#include "language/language_files.h"

#include <array>

#include "platform/code_page.h"
#include "platform/errors.h"
#include "platform/module_state.h"
#include "platform/platform.h"

namespace kestrel {

struct LanguageState {
    std::array<std::string, LanguageLines + 1> lines;
};
template class Module<LanguageState>;

namespace {

constexpr const char* LanguageEnding = ".lng";

std::string& slot(int line) {
    if (line < 0 || line > LanguageLines)
        throw ProgrammingError("Language line " + std::to_string(line) + " is out of 0.." +
                               std::to_string(LanguageLines));
    return stateOf<LanguageState>().lines[static_cast<std::size_t>(line)];
}

/// The lines of a text whatever their ends are: CR LF, LF, and none after the last.
std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::string::size_type from = 0;
    while (from < text.size()) {
        const auto end = std::min(text.find('\n', from), text.size());
        std::string line = text.substr(from, end - from);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(std::move(line));
        from = end + 1;
    }
    return lines;
}

}  // namespace

std::vector<std::string> LanguageFileLines(const std::string& file) {
    return linesOf(textOfInstallation(platform().readFile(platform().programDirectory() / file)));
}

const std::string& LanguageTable(int line) { return slot(line); }

std::vector<std::string> FindLanguageFiles() {
    std::vector<std::string> files = platform().listFiles(platform().programDirectory(), LanguageEnding);
    std::erase(files, LanguageEnding);
    return files;
}

void LoadLanguage(const std::string& file) {
    std::vector<std::string> lines = LanguageFileLines(file);
    if (lines.size() > LanguageLines)
        throw RunTimeError(error_number::SubscriptOutOfRange, file + ": has " + std::to_string(lines.size()) +
                                                                  " lines, more than " + std::to_string(LanguageLines));
    int i = 1;
    for (std::string& line : lines) slot(i++) = std::move(line);
}

bool CheckLanguageFile(const std::string& reference, const std::string& candidate) {
    const std::vector<std::string> wanted = LanguageFileLines(reference);
    std::vector<std::string> offered = LanguageFileLines(candidate);
    if (offered.size() > LanguageLines) return false;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (i >= offered.size()) return false;
        const bool marked = wanted[i].starts_with(SectionMark);
        if (marked && !offered[i].starts_with(SectionMark)) return false;
        slot(static_cast<int>(i) + 1) = std::move(offered[i]);
    }
    return true;
}

}  // namespace kestrel
