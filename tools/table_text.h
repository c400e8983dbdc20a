// Text of readable tables taken apart: columns, whole numbers, ranges and names with indices.
// What the tools that read tables of parameters share.
#pragma once

#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::tables {

struct Problem {
    int line;
    std::string text;
};

struct Range {
    int first = 0;
    int last = 0;
    int count() const { return last - first + 1; }
    bool has(const Range& part) const { return first <= part.first && part.last <= last; }
};

/// A name as tables write it: "price[1..30]", "clock.hour", and with ".copy" behind it the copy of either.
struct Label {
    std::string stem;
    std::optional<Range> indices;
    bool copy = false;

    int count() const { return indices ? indices->count() : 1; }
};

template <typename Number>
std::optional<Number> wholeNumber(std::string_view text, int base = 10) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (text.empty() || text.front() == '-' || error != std::errc{} || end != text.data() + text.size()) return {};
    return value;
}

/// N or N..M.
std::optional<Range> rangeOf(std::string_view text);
std::vector<std::string_view> split(std::string_view text, char separator);
std::string inQuotes(std::string_view text);
/// A header row as people read it: blanks for tabs.
std::string withBlanks(std::string_view header);

/// The label, or what is wrong with it.
struct LabelOrProblem {
    std::optional<Label> label;
    std::string problem;
};
LabelOrProblem labelOf(std::string_view text);

}  // namespace kestrel::tables
