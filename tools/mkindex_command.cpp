// The two jobs of mkindex: make an index file from a table, print an index file as text.
// A file is written beside its place and moved there whole, so that a failure leaves the old one.
#include "tools/mkindex_command.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>

#include "tools/mkindex_format.h"

namespace kestrel::mkindex {
namespace {

namespace fs = std::filesystem;

constexpr const char* usage =
    "usage: mkindex [--identity | --parameters] TABLE.tsv FILE.inx\n"
    "       mkindex [--identity | --parameters] --print FILE.inx [TABLE.tsv]\n"
    "Makes an index file from a table, or prints one as text. A file named W and four digits has the\n"
    "identity layout, every other one the parameter layout; the options overrule the name.\n";

struct CommandLine {
    bool print = false;
    std::optional<Layout> layout;
    std::vector<std::string> files;
};

/// The table of a file, or nothing after all that is wrong has been told.
std::optional<Table> loadTable(const std::string& path, Layout layout, std::ostream& err) {
    std::ifstream in(path, std::ios::binary);
    if (!in || fs::is_directory(path)) {
        err << path << ": cannot be read\n";
        return {};
    }
    Table table = readTable(in, layout);
    if (in.bad()) {
        err << path << ": cannot be read\n";
        return {};
    }
    for (const Problem& problem : table.problems) err << path << ':' << problem.line << ": " << problem.text << '\n';
    if (!table.problems.empty()) return {};
    return table;
}

bool writeWhole(const std::string& path, const std::string& bytes) {
    const std::string aside = path + ".new";
    std::error_code failure;
    {
        std::ofstream out(aside, std::ios::binary | std::ios::trunc);
        out << bytes;
        out.close();
        if (!out) failure = std::make_error_code(std::errc::io_error);
    }
    if (!failure) fs::rename(aside, path, failure);
    if (!failure) return true;
    std::error_code ignored;
    fs::remove(aside, ignored);
    return false;
}

int make(const std::string& source, const std::string& target, Layout layout, std::ostream& err) {
    const auto table = loadTable(source, layout, err);
    if (!table) return 1;
    if (writeWhole(target, encode(table->records, layout))) return 0;
    err << target << ": cannot be written\n";
    return 1;
}

int show(const std::vector<std::string>& files, Layout layout, std::ostream& out, std::ostream& err) {
    std::ifstream in(files[0], std::ios::binary);
    if (!in || fs::is_directory(files[0])) {
        err << files[0] << ": cannot be read\n";
        return 1;
    }
    const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    std::map<int, std::string> names;
    if (files.size() == 2) {
        const auto table = loadTable(files[1], layout, err);
        if (!table) return 1;
        for (const Record& record : table->records) names[record.number] = record.name;
    }
    print(out, bytes, layout, names);
    return 0;
}

int refuse(std::ostream& err, const std::string& text) {
    err << "mkindex: " << text << '\n' << usage;
    return 2;
}

}  // namespace

int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    CommandLine line;
    for (const std::string& argument : arguments) {
        if (argument == "--help") {
            out << usage;
            return 0;
        }
        if (argument == "--print") {
            line.print = true;
        } else if (argument == "--identity") {
            line.layout = Layout::Identity;
        } else if (argument == "--parameters") {
            line.layout = Layout::Parameters;
        } else if (argument.starts_with("-")) {
            return refuse(err, "unknown option " + argument);
        } else {
            line.files.push_back(argument);
        }
    }
    const std::size_t fewest = line.print ? 1 : 2;
    if (line.files.size() < fewest || line.files.size() > 2) return refuse(err, "wrong number of files");
    const std::string& index = line.print ? line.files[0] : line.files[1];
    const Layout layout = line.layout.value_or(layoutOfName(fs::path(index).filename().string()));
    return line.print ? show(line.files, layout, out, err) : make(line.files[0], line.files[1], layout, err);
}

}  // namespace kestrel::mkindex
