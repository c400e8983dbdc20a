// The files of the machine by the standard library and POSIX.
// Failures are run-time errors with the number of their kind and the system's reason as text.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kestrel::posix {

std::string readWholeFile(const std::filesystem::path& file);
/// Replaces the file whole: at any moment either the old text or the new one stands there. What is no file, such as a
/// terminal or a pipe, is written to as it is.
void writeWholeFile(const std::filesystem::path& file, const std::string& content);
std::vector<std::string> listFilesEnding(const std::filesystem::path& directory, const std::string& ending);
void enterDirectory(const std::filesystem::path& directory);

}  // namespace kestrel::posix
