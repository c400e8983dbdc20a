// The files of the machine: whole reads, whole writes, lists by ending.
// Failures are run-time errors: 53 not found, 75 access, 76 no such directory; the text names the file and the reason.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kestrel::qt {

std::string readWholeFile(const std::filesystem::path& file);
/// Whether the file, or a new one in its directory, can be written by this user.
bool canBeWritten(const std::filesystem::path& file);
/// Where the user's own configuration of this program belongs; it need not be there.
std::filesystem::path userDirectory();
/// The new text is written aside, brought to the disk and put in place of the old one, with its permissions. On a
/// failure the old file stands and nothing else is left. Where the directory takes no new file the old one is written
/// over, and put back on a failure. A directory that is missing is made.
void writeWholeFile(const std::filesystem::path& file, const std::string& content);
/// Names, in order of name, of the plain files whose name ends so; those that are no text are passed over.
std::vector<std::string> listFilesEnding(const std::filesystem::path& directory, const std::string& ending);
void enterDirectory(const std::filesystem::path& directory);

}  // namespace kestrel::qt
