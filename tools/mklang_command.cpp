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

namespace kestrel::mklang {

namespace {

constexpr int badFile = 1;
constexpr int badUsage = 2;

struct Options {
    std::vector<std::string> sources;
    std::string usedLines;
    std::string directory;
    std::string print;
};

int usage(std::ostream& err) {
    err << "usage: mklang SOURCE... [--check-used FILE] --out DIR\n"
           "       mklang --print FILE.lng\n";
    return badUsage;
}

bool parseOptions(const std::vector<std::string>& arguments, Options& options) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (!argument.starts_with("--")) {
            options.sources.push_back(argument);
            continue;
        }
        std::string* value = argument == "--out"          ? &options.directory
                             : argument == "--check-used" ? &options.usedLines
                             : argument == "--print"      ? &options.print
                                                          : nullptr;
        if (value == nullptr || !value->empty() || i + 1 == arguments.size()) return false;
        *value = arguments[++i];
        if (value->empty()) return false;
    }
    const bool makes = !options.sources.empty() && !options.directory.empty() && options.print.empty();
    const bool prints = options.sources.empty() && options.directory.empty() && options.usedLines.empty();
    return makes || (prints && !options.print.empty());
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

int make(const Options& options, std::ostream& err) {
    LanguageTexts texts;
    std::vector<Complaint> complaints;
    for (const std::string& name : options.sources) {
        const auto bytes = readFile(name);
        if (!bytes) return fail(err, name, "cannot be read");
        std::istringstream in(*bytes);
        readLanguageSource(in, name, texts, complaints);
    }
    if (!options.usedLines.empty() && complaints.empty()) {
        const auto bytes = readFile(options.usedLines);
        if (!bytes) return fail(err, options.usedLines, "cannot be read");
        std::istringstream in(*bytes);
        checkUsedLines(in, options.usedLines, texts, complaints);
    }
    for (const auto& complaint : complaints) err << describe(complaint) << '\n';
    if (!complaints.empty()) return badFile;

    std::error_code error;
    std::filesystem::create_directories(options.directory, error);
    for (std::size_t i = 0; i < texts.languages.size(); ++i) {
        const auto path = std::filesystem::path(options.directory) / (texts.languages[i] + ".lng");
        if (!writeFile(path, languageFileBytes(texts, i))) return fail(err, path.string(), "cannot be written");
    }
    return 0;
}

}  // namespace

int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    Options options;
    if (!parseOptions(arguments, options)) return usage(err);
    return options.print.empty() ? make(options, err) : print(options.print, out, err);
}

}  // namespace kestrel::mklang
