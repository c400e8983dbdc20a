// The texts of the active language, by line number, and the files that they come from.
// Pages read the table directly; nothing here knows of menus or windows.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestrel {

inline constexpr int LanguageLines = 800;

/// Line 1 to 800 of the active language file, as UTF-8; entry 0 is never used and is empty.
/// A line out of 0..800 is a programming error.
const std::string& LanguageTable(int line);

/// What a line begins with that marks a section; nothing more of it is ever compared.
inline constexpr std::string_view SectionMark = ";--";

/// Names of the language files of the program's directory, in the order of the directory. A mere ending names no
/// language.
std::vector<std::string> FindLanguageFiles();

/// The lines of a language file of the program's directory, as UTF-8. One that cannot be read is a run-time error.
std::vector<std::string> LanguageFileLines(const std::string& file);

/// Fills the table from a file of the program's directory, which is in the single-byte code page. Entries beyond the
/// end of a shorter file keep what they held; more than 800 lines, or a file that cannot be read, is a run-time error.
void LoadLanguage(const std::string& file);

/// Reads two files in step and loads the candidate as it goes. True when every section mark of the reference stands
/// on the same line of the candidate; the table then holds the candidate's lines, else those read so far. A candidate
/// of more than 800 lines is refused unread, since no start could load it.
bool CheckLanguageFile(const std::string& reference, const std::string& candidate);

}  // namespace kestrel
