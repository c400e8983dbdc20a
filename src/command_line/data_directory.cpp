// Where a program finds the data of its installation.
#include "command_line/data_directory.h"

#include <system_error>

#include "program_version.h"

namespace kestrel {

namespace fs = std::filesystem;

fs::path ownExecutable() {
    std::error_code trouble;
    const fs::path executable = fs::read_symlink("/proc/self/exe", trouble);
    return trouble ? fs::path() : executable;
}

fs::path dataDirectory(const fs::path& executable) {
    const fs::path own = executable.parent_path();
    std::error_code trouble;
    const fs::path shared = fs::canonical(own / DataFromPrograms, trouble);
    return !trouble && fs::is_directory(shared, trouble) ? shared : own;
}

}  // namespace kestrel
