// Language sources (rows of UTF-8 texts, a column a language) and the .lng files made from them.
// A .lng file is Windows-1252 with CR LF ends; its line N is the text of row N, empty where no row has that number.
#pragma once

#include <cstddef>
#include <istream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::mklang {

// The program's table has entries for the lines 1 to 800.
inline constexpr int lastLanguageLine = 800;
// A text that begins so is no text but the start of a section; it must stand on the same line in every language.
inline constexpr std::string_view sectionMark = ";--";

// One thing wrong in a source, at a line of that source counted from 1 (0: the whole file).
struct Complaint {
    std::string file;
    int line = 0;
    std::string message;
};

// "file:line: message", or "file: message" when no line is to blame.
std::string describe(const Complaint& complaint);

// The texts of all sources read so far.
struct LanguageTexts {
    std::vector<std::string> languages;            // file stems, in the order of the columns
    std::map<int, std::vector<std::string>> rows;  // line number to UTF-8 texts, one a language
    std::map<int, std::string> places;             // line number to "file:line" of its row
};

// Adds the rows of one source. The source is tab-separated UTF-8: a header "line", the file stem of each language,
// "note", then a row a line number. Lines that begin with # and empty lines count for nothing. A note may hold "max N"
// (no text of the row is longer than N characters) and "no comma" (the text becomes part of a comma-separated list). A
// bad row is complained of and left out; the other rows are read all the same.
void readLanguageSource(std::istream& in, const std::string& name, LanguageTexts& texts,
                        std::vector<Complaint>& complaints);

// Reads a list of line numbers that the program shows ("a" or "a..b" a line, # begins a comment) and complains of each
// one that has no text.
void checkUsedLines(std::istream& in, const std::string& name, const LanguageTexts& texts,
                    std::vector<Complaint>& complaints);

// The bytes of the .lng file of one language, from line 1 to the last row.
std::string languageFileBytes(const LanguageTexts& texts, std::size_t language);

// A .lng file as text for people: the line number, a tab and the UTF-8 text of each line. Takes LF and CR LF ends.
std::string printLanguageFile(std::string_view bytes);

}  // namespace kestrel::mklang
