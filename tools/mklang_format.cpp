// Reads and checks language sources and lays out .lng files.
// Every complaint names the row that has to be mended, so that all of them can be mended in one go.
#include "tools/mklang_format.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <set>
#include <utility>

#include "platform/code_page.h"

namespace kestrel::mklang {

namespace {

constexpr std::string_view commentMark = "#";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

// One source while it is read.
struct Source {
    const std::string& name;
    int line = 0;
    std::size_t languages = 0;  // 0 until the header has been read
    std::vector<Complaint>& complaints;

    void complain(const std::string& message) { complaints.push_back({name, line, message}); }
};

std::vector<std::string> splitAtTabs(const std::string& line) {
    std::vector<std::string> fields(1);
    for (const char c : line) {
        if (c == '\t') {
            fields.emplace_back();
        } else {
            fields.back().push_back(c);
        }
    }
    return fields;
}

std::optional<int> parseNumber(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

bool isLanguageLine(int number) { return number >= 1 && number <= lastLanguageLine; }

// The N of "max N" in a note.
std::optional<std::size_t> maximumLength(std::string_view note) {
    constexpr std::string_view key = "max ";
    const auto start = note.find(key);
    if (start == std::string_view::npos) return std::nullopt;
    std::string_view digits = note.substr(start + key.size());
    digits = digits.substr(0, std::min(digits.size(), digits.find_first_not_of("0123456789")));
    const auto number = parseNumber(digits);
    if (!number) return std::nullopt;
    return static_cast<std::size_t>(*number);
}

// A stem becomes a file name and a menu entry: plain letters mean the same on every file system.
bool isFileStem(std::string_view name) {
    return !name.empty() && std::all_of(name.begin(), name.end(),
                                        [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); });
}

bool readHeader(const std::vector<std::string>& fields, Source& source, LanguageTexts& texts) {
    if (fields.size() < 3 || fields.front() != "line" || fields.back() != "note") {
        source.complain("the header must be: line, the languages, note");
        return false;
    }
    const std::vector<std::string> languages(fields.begin() + 1, fields.end() - 1);
    for (const std::string& language : languages) {
        if (isFileStem(language)) continue;
        source.complain("\"" + language + "\" cannot be a file name; use the letters A to Z");
        return false;
    }
    if (std::set<std::string>(languages.begin(), languages.end()).size() != languages.size()) {
        source.complain("a language has two columns");
        return false;
    }
    if (texts.languages.empty()) texts.languages = languages;
    if (texts.languages != languages) {
        source.complain("the languages differ from those of the source before");
        return false;
    }
    source.languages = languages.size();
    return true;
}

/// French has a blank before these signs, and a line must not end there.
bool breaksBeforeASign(std::string_view text, std::string_view language) {
    if (language != "Francais") return false;
    for (auto blank = text.find(' '); blank < text.size() - 1; blank = text.find(' ', blank + 1))
        if (std::string_view(":;?!").find(text[blank + 1]) != std::string_view::npos) return true;
    return false;
}

bool checkText(const std::string& text, const std::string& language, std::string_view note, Source& source) {
    if (text.find_first_not_of(' ') == std::string::npos) {
        source.complain("no text in " + language);
        return false;
    }
    const auto bytes = bytesForInstallation(text);
    if (!bytes) {
        source.complain(language + " has a character outside Windows-1252, or is not UTF-8");
        return false;
    }
    const auto isControl = [](unsigned char c) { return c < ' ' || c == 0x7F; };
    if (std::any_of(bytes->begin(), bytes->end(), isControl)) {
        source.complain(language + " has a control character");
        return false;
    }
    if (breaksBeforeASign(text, language)) {
        source.complain(language + " has a blank before a sign that is no no-break blank");
        return false;
    }
    const auto maximum = maximumLength(note);
    if (maximum && bytes->size() > *maximum) {
        source.complain(language + " has " + std::to_string(bytes->size()) + " characters, the most is " +
                        std::to_string(*maximum));
        return false;
    }
    if (note.find("no comma") != std::string_view::npos && text.find(',') != std::string::npos) {
        source.complain(language + " has a comma, but stands in a list separated by commas");
        return false;
    }
    return true;
}

void readRow(const std::vector<std::string>& fields, Source& source, LanguageTexts& texts) {
    if (fields.size() != source.languages + 2) {
        source.complain("the row has " + std::to_string(fields.size()) + " columns, the header " +
                        std::to_string(source.languages + 2));
        return;
    }
    const auto number = parseNumber(fields.front());
    if (!number || !isLanguageLine(*number)) {
        source.complain("\"" + fields.front() + "\" is no line number from 1 to " + std::to_string(lastLanguageLine));
        return;
    }
    if (const auto earlier = texts.places.find(*number); earlier != texts.places.end()) {
        source.complain("line " + fields.front() + " stands at " + earlier->second + " already");
        return;
    }
    std::vector<std::string> row(fields.begin() + 1, fields.end() - 1);
    bool good = true;
    for (std::size_t i = 0; i < row.size(); ++i) {
        good = checkText(row[i], texts.languages[i], fields.back(), source) && good;
    }
    const auto marks = std::count_if(row.begin(), row.end(), [](const auto& t) { return t.starts_with(sectionMark); });
    if (marks != 0 && static_cast<std::size_t>(marks) != row.size()) {
        source.complain("a section mark must stand in every language or in none");
        good = false;
    }
    texts.places[*number] = source.name + ":" + std::to_string(source.line);
    if (good) texts.rows[*number] = std::move(row);
}

// "a" or "a..b" as a pair of line numbers.
std::optional<std::pair<int, int>> parseRange(std::string_view text) {
    const auto dots = text.find("..");
    const auto first = parseNumber(text.substr(0, dots));
    const auto last = dots == std::string_view::npos ? first : parseNumber(text.substr(dots + 2));
    if (!first || !last || !isLanguageLine(*first) || !isLanguageLine(*last) || *first > *last) return std::nullopt;
    return std::pair(*first, *last);
}

bool hasText(const LanguageTexts& texts, int number) {
    const auto row = texts.rows.find(number);
    return row != texts.rows.end() && !row->second.front().starts_with(sectionMark);
}

// The next line without its end, whichever kind it is.
bool nextLine(std::istream& in, std::string& line) {
    if (!std::getline(in, line)) return false;
    if (line.ends_with('\r')) line.pop_back();
    return true;
}

}  // namespace

std::string describe(const Complaint& complaint) {
    const std::string place = complaint.line == 0 ? "" : ":" + std::to_string(complaint.line);
    return complaint.file + place + ": " + complaint.message;
}

void readLanguageSource(std::istream& in, const std::string& name, LanguageTexts& texts,
                        std::vector<Complaint>& complaints) {
    Source source{name, 0, 0, complaints};
    std::string line;
    while (nextLine(in, line)) {
        ++source.line;
        if (source.line == 1 && line.starts_with(byteOrderMark)) line.erase(0, byteOrderMark.size());
        if (line.empty() || line.starts_with(commentMark)) continue;
        const auto fields = splitAtTabs(line);
        if (source.languages != 0) {
            readRow(fields, source, texts);
        } else if (!readHeader(fields, source, texts)) {
            return;
        }
    }
    source.line = 0;
    if (source.languages == 0) source.complain("the source has no header");
}

void checkUsedLines(std::istream& in, const std::string& name, const LanguageTexts& texts,
                    std::vector<Complaint>& complaints) {
    std::string line;
    for (int lineNumber = 1; nextLine(in, line); ++lineNumber) {
        line.erase(std::min(line.size(), line.find(commentMark)));
        line.erase(line.find_last_not_of(" \t") + 1);
        if (line.empty()) continue;
        const auto range = parseRange(line);
        if (!range) {
            complaints.push_back({name, lineNumber, "\"" + line + "\" is no line number and no range a..b"});
            continue;
        }
        for (int number = range->first; number <= range->second; ++number) {
            if (hasText(texts, number)) continue;
            complaints.push_back({name, lineNumber, "line " + std::to_string(number) + " has no text"});
        }
    }
}

std::string languageFileBytes(const LanguageTexts& texts, std::size_t language) {
    std::string bytes;
    int line = 1;
    for (const auto& [number, row] : texts.rows) {
        for (; line < number; ++line) bytes += "\r\n";
        bytes += bytesForInstallation(row[language]).value() + "\r\n";
        ++line;
    }
    return bytes;
}

std::string printLanguageFile(std::string_view bytes) {
    const std::string text = textOfInstallation(bytes);
    std::string printed;
    int number = 0;
    for (std::size_t from = 0, end = 0; from < text.size(); from = end + 1) {
        end = std::min(text.find('\n', from), text.size());
        std::string_view line = std::string_view(text).substr(from, end - from);
        if (line.ends_with('\r')) line.remove_suffix(1);
        printed.append(std::to_string(++number)).append("\t").append(line).append("\n");
    }
    return printed;
}

}  // namespace kestrel::mklang
