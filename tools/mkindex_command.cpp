// The two jobs of mkindex: make an index file from a table, print an index file as text.
#include "tools/mkindex_command.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <vector>

#include "tools/mkindex_format.h"
#include "tools/table_files.h"

namespace kestrel::mkindex {
namespace {

namespace fs = std::filesystem;

constexpr const char* usage =
    "usage: mkindex [--identity | --parameters] [--catalogue CATALOGUE.tsv] TABLE.tsv FILE.inx\n"
    "       mkindex [--identity | --parameters] [--catalogue CATALOGUE.tsv] --print FILE.inx [TABLE.tsv]\n"
    "Makes an index file from a table, or prints one as text. A file named W and four digits has the\n"
    "identity layout, every other one the parameter layout; the options overrule the name. A table\n"
    "of parameters needs the board's catalogue, which has their numbers.\n";

struct CommandLine {
    bool print = false;
    std::optional<Layout> layout;
    std::string catalogue;
    std::vector<std::string> files;
};

/// The table of a file, or nothing after all that is wrong has been told.
std::optional<Table> loadTable(const std::string& path, const CommandLine& line, std::ostream& err) {
    if (line.layout == Layout::Identity) return tables::load(path, err, readIdentityTable);
    const auto catalogue = tables::load(line.catalogue, err, tables::readCatalogue);
    if (!catalogue) return {};
    return tables::load(path, err, [&](std::istream& in) { return readParameterTable(in, *catalogue); });
}

int make(const CommandLine& line, std::ostream& err) {
    const auto table = loadTable(line.files[0], line, err);
    return table && tables::writeWhole(line.files[1], encode(table->records, *line.layout), err) ? 0 : 1;
}

int show(const CommandLine& line, std::ostream& out, std::ostream& err) {
    const std::vector<std::string>& files = line.files;
    std::ifstream in(files[0], std::ios::binary);
    if (!in || fs::is_directory(files[0])) {
        err << files[0] << ": cannot be read\n";
        return 1;
    }
    const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    std::map<int, std::string> names;
    if (files.size() == 2) {
        const auto table = loadTable(files[1], line, err);
        if (!table) return 1;
        for (const Record& record : table->records) names[record.number] = record.name;
    }
    print(out, bytes, *line.layout, names);
    return 0;
}

int refuse(std::ostream& err, const std::string& text) {
    err << "mkindex: " << text << '\n' << usage;
    return 2;
}

}  // namespace

int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    CommandLine line;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
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
        } else if (argument == "--catalogue" && i + 1 < arguments.size()) {
            line.catalogue = arguments[++i];
        } else if (argument.starts_with("-")) {
            return refuse(err, "unknown option " + argument);
        } else {
            line.files.push_back(argument);
        }
    }
    const std::size_t fewest = line.print ? 1 : 2;
    if (line.files.size() < fewest || line.files.size() > 2) return refuse(err, "wrong number of files");
    const std::string& index = line.print ? line.files[0] : line.files[1];
    if (!line.layout) line.layout = layoutOfName(fs::path(index).filename().string());
    if (line.layout == Layout::Parameters && line.files.size() == 2 && line.catalogue.empty()) {
        return refuse(err, "a table of parameters needs a catalogue");
    }
    return line.print ? show(line, out, err) : make(line, err);
}

}  // namespace kestrel::mkindex
