// Text of readable tables taken apart.
#include "tools/table_text.h"

#include <algorithm>

namespace kestrel::tables {

std::optional<Range> rangeOf(std::string_view text) {
    const std::size_t dots = text.find("..");
    const auto first = wholeNumber<int>(text.substr(0, dots));
    const auto last = dots == std::string_view::npos ? first : wholeNumber<int>(text.substr(dots + 2));
    if (!first || !last || *last < *first) return {};
    return Range{*first, *last};
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> fields;
    for (;;) {
        const std::size_t end = text.find(separator);
        fields.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return fields;
        text.remove_prefix(end + 1);
    }
}

std::string inQuotes(std::string_view text) {
    std::string quoted(1, '"');
    quoted.append(text).push_back('"');
    return quoted;
}

std::string withBlanks(std::string_view header) {
    std::string shown(header);
    std::replace(shown.begin(), shown.end(), '\t', ' ');
    return shown;
}

LabelOrProblem labelOf(std::string_view text) {
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789_.";
    constexpr std::string_view ofCopy = ".copy";
    Label label;
    std::string_view name = text;
    label.copy = name.ends_with(ofCopy);
    if (label.copy) name.remove_suffix(ofCopy.size());
    const std::size_t bracket = name.find('[');
    if (bracket != std::string_view::npos) {
        if (name.back() == ']') label.indices = rangeOf(name.substr(bracket + 1, name.size() - bracket - 2));
        if (!label.indices) return {{}, "name " + inQuotes(text) + " does not end in indices like [1..8]"};
        name = name.substr(0, bracket);
    }
    if (name.empty() || name.find_first_not_of(letters) != std::string_view::npos) {
        return {{}, "name " + inQuotes(text) + " may have only small letters, digits, underscores and dots"};
    }
    label.stem = name;
    return {label, {}};
}

}  // namespace kestrel::tables
