// Files of the tools that read tables: a table with its mistakes told, a result written whole.
// What goes wrong is told on `err`, with the file and, for a mistake in a table, its line.
#pragma once

#include <filesystem>
#include <fstream>
#include <optional>
#include <ostream>
#include <string>

#include "tools/table_text.h"

namespace kestrel::tables {

/// What `read` makes of the file; nothing after all that is wrong with it has been told.
template <typename Read>
auto load(const std::string& path, std::ostream& err, Read read)
    -> std::optional<decltype(read(std::declval<std::istream&>()))> {
    std::ifstream in(path, std::ios::binary);
    if (in && !std::filesystem::is_directory(path)) {
        auto content = read(in);
        if (!in.bad()) {
            for (const Problem& problem : content.problems)
                err << path << ':' << problem.line << ": " << problem.text << '\n';
            if (content.problems.empty()) return content;
            return {};
        }
    }
    err << path << ": cannot be read\n";
    return {};
}

/// Writes beside the file's place and moves it there whole, so that a failure leaves the old one.
bool writeWhole(const std::string& path, const std::string& bytes, std::ostream& err);

}  // namespace kestrel::tables
