// The two works of mklang: making the .lng files of an installation, and printing one.
// All sources are read and checked before the first file is written.
#include "tools/mklang_command.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "tools/mklang_format.h"
#include "tools/mklang_glossary.h"

namespace kestrel::mklang {

namespace {

constexpr int badFile = 1;

struct Work {
    std::vector<std::string> sources;
    std::string usedLines;
    std::string glossary;
    std::string directory;
    std::string print;
};

ProgramText textFor(Work& work) {
    return {"mklang",
            "makes the language files of an installation, or prints one as text",
            {"SOURCE... [--check-used FILE] [--glossary FILE] --out DIR", "--print FILE.lng"},
            "",
            {
                {"", "SOURCE", "", addTo(work.sources)},
                {"--out", "DIR", "make a file in DIR for each language of the sources", keepIn(work.directory)},
                {"--check-used", "FILE", "demand a text of each line that FILE lists", keepIn(work.usedLines)},
                {"--glossary", "FILE", "hold the texts to the words of the table in FILE", keepIn(work.glossary)},
                {"--print", "FILE.lng", "print a language file with the numbers of its lines", keepIn(work.print)},
            },
            {}};
}

void refuseHalfWork(const Work& work) {
    const bool makes = !work.sources.empty() && !work.directory.empty() && work.print.empty();
    const bool prints = work.sources.empty() && work.directory.empty() && work.usedLines.empty() &&
                        work.glossary.empty() && !work.print.empty();
    if (!makes && !prints) throw BadOption("sources and --out are needed, or --print alone (--help lists the options)");
}

int fail(std::ostream& err, const std::string& file, const std::string& message) {
    err << describe({file, 0, message}) << '\n';
    return badFile;
}

// Nothing when there is no such file. A directory can be opened like one, and only reading it fails.
std::optional<std::string> readFile(const std::string& name) {
    std::error_code error;
    std::ifstream in(name, std::ios::binary);
    if (!in || std::filesystem::is_directory(name, error)) return std::nullopt;
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return std::move(bytes).str();
}

int print(const std::string& name, std::ostream& out, std::ostream& err) {
    const auto bytes = readFile(name);
    if (!bytes) return fail(err, name, "cannot be read");
    out << printLanguageFile(*bytes);
    return 0;
}

// A reader of the directory sees the old file or the new one, never a part of one.
bool writeFile(const std::filesystem::path& path, const std::string& bytes) {
    std::filesystem::path aside = path;
    aside += ".new";
    std::ofstream out(aside, std::ios::binary | std::ios::trunc);
    out << bytes;
    out.close();
    std::error_code error;
    if (out) std::filesystem::rename(aside, path, error);
    const bool written = out && !error;
    if (!written) std::filesystem::remove(aside, error);
    return written;
}

int make(const Work& work, std::ostream& err) {
    LanguageTexts texts;
    std::vector<Complaint> complaints;
    for (const std::string& name : work.sources) {
        const auto bytes = readFile(name);
        if (!bytes) return fail(err, name, "cannot be read");
        std::istringstream in(*bytes);
        readLanguageSource(in, name, texts, complaints);
    }
    const std::pair<const std::string&, decltype(&checkUsedLines)> checks[] = {{work.usedLines, checkUsedLines},
                                                                               {work.glossary, checkGlossary}};
    for (const auto& [name, check] : checks) {
        if (name.empty() || !complaints.empty()) continue;
        const auto bytes = readFile(name);
        if (!bytes) return fail(err, name, "cannot be read");
        std::istringstream in(*bytes);
        check(in, name, texts, complaints);
    }
    for (const auto& complaint : complaints) err << describe(complaint) << '\n';
    if (!complaints.empty()) return badFile;

    std::error_code error;
    std::filesystem::create_directories(work.directory, error);
    for (std::size_t i = 0; i < texts.languages.size(); ++i) {
        const auto path = std::filesystem::path(work.directory) / (texts.languages[i] + ".lng");
        if (!writeFile(path, languageFileBytes(texts, i))) return fail(err, path.string(), "cannot be written");
    }
    return 0;
}

}  // namespace

ProgramText programText() {
    Work none;
    return textFor(none);
}

int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    Work work;
    return runTool(textFor(work), arguments, out, err, [&] {
        refuseHalfWork(work);
        return work.print.empty() ? make(work, err) : print(work.print, out, err);
    });
}

}  // namespace kestrel::mklang
