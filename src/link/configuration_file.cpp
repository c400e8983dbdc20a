// The two-line configuration file.
#include "link/configuration_file.h"

#include <algorithm>

#include "platform/errors.h"
#include "platform/platform.h"

namespace kestrel {

namespace {

constexpr const char* PortPrefix = "Com=";
constexpr const char* LanguagePrefix = "Lingua=";
constexpr std::size_t LanguagePrefixLength = 7;
constexpr const char* FamilyFile = "kestrel.ini";
constexpr const char* LineEnd = "\r\n";

/// Takes the next line out of the text. False at its end.
bool takeLine(const std::string& text, std::size_t& from, std::string& line) {
    if (from >= text.size()) return false;
    const auto end = std::min(text.find('\n', from), text.size());
    line = text.substr(from, end - from);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    from = end + 1;
    return true;
}

std::string ownName() { return platform().programName() + ".ini"; }
std::filesystem::path ownFile() { return platform().configurationDirectory() / ownName(); }

}  // namespace

ConfigurationLines ConfigurationLines::own() {
    try {
        return ConfigurationLines(ownFile());
    } catch (const RunTimeError& error) {
        if (error.number() != error_number::FileNotFound) throw;
        return ConfigurationLines(platform().programDirectory() / ownName());
    }
}

ConfigurationLines ConfigurationLines::ofFamily() {
    const auto family = platform().familyDirectory();
    if (!family) throw RunTimeError(error_number::PathNotFound, "There is no family");
    return ConfigurationLines(*family / FamilyFile);
}

ConfigurationLines::ConfigurationLines(const std::filesystem::path& file) {
    const std::string text = platform().readFile(file);
    std::size_t from = 0;
    if (takeLine(text, from, first_)) ++count_;
    if (takeLine(text, from, second_)) ++count_;
}

const std::string& ConfigurationLines::line(int number) const {
    if (number > count_) throw RunTimeError(error_number::PastEndOfFile, "Input past end of file");
    return number == 1 ? first_ : second_;
}

int ConfigurationLines::port() const {
    const std::string& text = line(1);
    if (text.empty() || text.back() < '0' || text.back() > '9')
        throw RunTimeError(error_number::TypeMismatch, "The first line of the configuration names no port");
    return text.back() - '0';
}

std::string ConfigurationLines::language() const {
    const std::string& text = line(2);
    if (text.size() < LanguagePrefixLength)
        throw RunTimeError(error_number::TypeMismatch, "The second line of the configuration names no language");
    return text.substr(LanguagePrefixLength);
}

void WriteConfigurationFile(int port, const std::string& language) {
    platform().writeFile(ownFile(), PortPrefix + std::to_string(port) + LineEnd + LanguagePrefix + language + LineEnd);
}

}  // namespace kestrel
