// The two-line configuration file: "Com=" and a digit, "Lingua=" and the stem of a language file.
// Lines are taken by their place; the prefixes are not checked on reading.
#pragma once

#include <filesystem>
#include <string>

namespace kestrel {

inline constexpr int FirstPort = 1;

/// The two lines of a file, or those that it has. A file that cannot be read is a run-time error.
class ConfigurationLines {
  public:
    /// The program's own file; until there is one, what the installation begins with.
    static ConfigurationLines own();
    /// The file of the family. Where there is no family it cannot be read.
    static ConfigurationLines ofFamily();

    /// The last character of line 1 as a number; a missing line or another character is a run-time error.
    int port() const;
    /// What follows the first seven characters of line 2; a missing or shorter line is a run-time error.
    std::string language() const;

  private:
    explicit ConfigurationLines(const std::filesystem::path& file);
    const std::string& line(int number) const;
    std::string first_;
    std::string second_;
    int count_ = 0;
};

/// Replaces the program's own file.
void WriteConfigurationFile(int port, const std::string& language);

}  // namespace kestrel
