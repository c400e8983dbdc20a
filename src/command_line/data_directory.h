// Where a program finds the data of its installation: index files, language files, pictures.
// An installation is portable, with programs and data in one directory, or the system's, with bin and share.
#pragma once

#include <filesystem>

namespace kestrel {

/// The executable of this process, all links followed; empty where the system does not tell.
std::filesystem::path ownExecutable();

/// The system's share/kestrel where the executable lies beside such a one, else the executable's own directory.
std::filesystem::path dataDirectory(const std::filesystem::path& executable);

}  // namespace kestrel
