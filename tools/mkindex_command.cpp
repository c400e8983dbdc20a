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

struct Work {
    bool print = false;
    std::optional<Layout> layout;
    std::string catalogue;
    std::vector<std::string> files;
};

ProgramText textFor(Work& work) {
    const auto layOut = [&work](Layout layout) {
        return [&work, layout](const std::string&) { work.layout = layout; };
    };
    return {"mkindex",
            "makes an index file from a table, or prints one as text",
            {"[--identity | --parameters] [--catalogue CATALOGUE.tsv] TABLE.tsv FILE.inx",
             "[--identity | --parameters] [--catalogue CATALOGUE.tsv] --print FILE.inx [TABLE.tsv]"},
            "A file named W and four digits has the identity layout, every other one the parameter layout;\n"
            "the options overrule the name. A table of parameters needs the board's catalogue, which has\n"
            "their numbers.\n",
            {
                {"", "FILE", "", addTo(work.files)},
                {"--print", "", "print an index file, with the names of its table where one is given",
                 setTo(work.print, true)},
                {"--identity", "", "the file has the identity layout", layOut(Layout::Identity)},
                {"--parameters", "", "the file has the parameter layout", layOut(Layout::Parameters)},
                {"--catalogue", "CATALOGUE.tsv", "the parameters of the board", keepIn(work.catalogue)},
            },
            {}};
}

/// The table of a file, or nothing after all that is wrong has been told.
std::optional<Table> loadTable(const std::string& path, const Work& work, std::ostream& err) {
    if (work.layout == Layout::Identity) return tables::load(path, err, readIdentityTable);
    const auto catalogue = tables::load(work.catalogue, err, tables::readCatalogue);
    if (!catalogue) return {};
    return tables::load(path, err, [&](std::istream& in) { return readParameterTable(in, *catalogue); });
}

int make(const Work& work, std::ostream& err) {
    const auto table = loadTable(work.files[0], work, err);
    return table && tables::writeWhole(work.files[1], encode(table->records, *work.layout), err) ? 0 : 1;
}

int show(const Work& work, std::ostream& out, std::ostream& err) {
    const std::vector<std::string>& files = work.files;
    std::ifstream in(files[0], std::ios::binary);
    if (!in || fs::is_directory(files[0])) {
        err << files[0] << ": cannot be read\n";
        return 1;
    }
    const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    std::map<int, std::string> names;
    if (files.size() == 2) {
        const auto table = loadTable(files[1], work, err);
        if (!table) return 1;
        for (const Record& record : table->records) names[record.number] = record.name;
    }
    print(out, bytes, *work.layout, names);
    return 0;
}

/// What the command line does not say follows from the names of the files.
void complete(Work& work) {
    const std::size_t fewest = work.print ? 1 : 2;
    if (work.files.size() < fewest || work.files.size() > 2)
        throw BadOption("wrong number of files (--help tells which are needed)");
    const std::string& index = work.print ? work.files[0] : work.files[1];
    if (!work.layout) work.layout = layoutOfName(fs::path(index).filename().string());
    if (work.layout == Layout::Parameters && work.files.size() == 2 && work.catalogue.empty())
        throw BadOption("a table of parameters needs a catalogue: --catalogue CATALOGUE.tsv");
}

}  // namespace

ProgramText programText() {
    Work none;
    return textFor(none);
}

int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    Work work;
    return runTool(textFor(work), arguments, out, err, [&] {
        complete(work);
        return work.print ? show(work, out, err) : make(work, err);
    });
}

}  // namespace kestrel::mkindex
