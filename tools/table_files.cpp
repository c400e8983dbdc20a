// Files of the tools that read tables.
#include "tools/table_files.h"

#include <system_error>

namespace kestrel::tables {

namespace fs = std::filesystem;

bool writeWhole(const std::string& path, const std::string& bytes, std::ostream& err) {
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
    err << path << ": cannot be written\n";
    return false;
}

}  // namespace kestrel::tables
