// What mkcatalogue writes: a header with a constant for each parameter, and a source file with all rows of the
// catalogues. See mkcatalogue_command.h.
#include "tools/mkcatalogue_command.h"

#include <filesystem>
#include <sstream>

#include "command_line/program_text.h"
#include "tools/catalogue.h"
#include "tools/table_files.h"

namespace kestrel::mkcatalogue {
namespace {

namespace fs = std::filesystem;
using namespace tables;

struct BoardCatalogue {
    std::string space;       // namespace of its constants
    std::string enumerator;  // of Board
    Catalogue catalogue;
};

std::string settingOf(const BoardCatalogue& board, const CatalogueRow& row) {
    const std::string copy = row.copies ? ", " + std::to_string(row.copies->first) : "";
    return "Setting{Board::" + board.enumerator + ", " + std::to_string(row.numbers.first) + copy + "}";
}

std::string rangeOf(const BoardCatalogue& board, const CatalogueRow& row) {
    return "SettingRange{" + settingOf(board, row) + ", " + std::to_string(row.numbers.count()) + "}";
}

std::string headerOf(const std::vector<BoardCatalogue>& boards) {
    std::ostringstream out;
    out << "// The parameters of the boards by name. Made by mkcatalogue from data/catalogue: change it there.\n"
           "// Names with indices are ranges, whose elements count from 0.\n"
           "#pragma once\n\n#include \"catalogue/setting.h\"\n\nnamespace kestrel {\n";
    for (const BoardCatalogue& board : boards) {
        out << "\nnamespace " << board.space << " {\n";
        for (const CatalogueRow& row : board.catalogue.rows) {
            out << "/// " << row.meaning << "\ninline constexpr " << (row.indices ? "SettingRange " : "Setting ")
                << constantName(row.name) << " = " << (row.indices ? rangeOf(board, row) : settingOf(board, row))
                << ";\n";
        }
        out << "}  // namespace " << board.space << '\n';
    }
    out << "\n}  // namespace kestrel\n";
    return out.str();
}

std::string kindOf(const CatalogueRow& row) { return "CatalogueRow::Kind::" + constantName(row.kind); }

std::string rangeOfValues(const CatalogueRow& row) {
    if (!row.values) return "0, CatalogueRow::NoLimit";
    return std::to_string(row.values->first) + ", " + std::to_string(row.values->last);
}

std::string literal(const std::string& text) {
    std::string quoted = "\"";
    for (const char letter : text) {
        if (letter == '"' || letter == '\\') quoted += '\\';
        quoted += letter;
    }
    return quoted + "\"";
}

std::string rowsOf(const std::vector<BoardCatalogue>& boards) {
    std::ostringstream out;
    out << "// All rows of the catalogues. Made by mkcatalogue from data/catalogue: change them there.\n"
           "#include \"catalogue/rows.h\"\n\nnamespace kestrel {\n\n"
           "std::span<const CatalogueRow> Catalogue() {\n    static constexpr CatalogueRow rows[] = {\n";
    for (const BoardCatalogue& board : boards) {
        for (const CatalogueRow& row : board.catalogue.rows) {
            out << "        {" << literal(row.name) << ", "
                << (row.indices ? std::to_string(row.indices->first) : "CatalogueRow::NoIndex") << ", "
                << rangeOf(board, row) << ", " << kindOf(row) << ", " << rangeOfValues(row) << ", " << row.bits << 'U';
            for (const std::string& text : {row.unit, row.scale, row.group, row.meaning}) out << ", " << literal(text);
            out << "},\n";
        }
    }
    out << "    };\n    return rows;\n}\n\n}  // namespace kestrel\n";
    return out.str();
}

int make(const std::vector<std::string>& catalogues, const fs::path& directory, std::ostream& err) {
    std::vector<BoardCatalogue> boards;
    bool sound = true;
    for (const std::string& path : catalogues) {
        const std::string name = fs::path(path).stem().string();
        const auto catalogue = load(path, err, readCatalogue);
        if (catalogue) boards.push_back({name, constantName(name), *catalogue});
        sound = sound && catalogue;
    }
    return sound && writeWhole((directory / "parameters.h").string(), headerOf(boards), err) &&
                   writeWhole((directory / "rows.cpp").string(), rowsOf(boards), err)
               ? 0
               : 1;
}

}  // namespace

int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    std::vector<std::string> catalogues;
    std::string directory;
    const ProgramText tool{"mkcatalogue",
                           "makes parameters.h and rows.cpp from the catalogues of the boards",
                           {"CATALOGUE.tsv... --out DIRECTORY"},
                           "Each catalogue is named after its board: master.tsv becomes the namespace master.\n",
                           {{"", "CATALOGUE.tsv", "", addTo(catalogues)},
                            {"--out", "DIRECTORY", "where the two files go", keepIn(directory)}},
                           {}};
    return runTool(tool, arguments, out, err, [&] {
        if (catalogues.empty()) throw BadOption("no catalogue is named");
        if (directory.empty()) throw BadOption("no directory is named: --out DIRECTORY");
        return make(catalogues, directory, err);
    });
}

}  // namespace kestrel::mkcatalogue
