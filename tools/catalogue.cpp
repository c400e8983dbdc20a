// Reading of a board's catalogue, and every check on it.
#include "tools/catalogue.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace kestrel::tables {
namespace {

constexpr std::string_view header = "number\tname\tcopy\tunit\tscale\tkind\trange\tgroup\tmeaning";
constexpr std::array<std::string_view, 5> scales{"", "/10", "money", "bits", "signed/256"};
constexpr std::array<std::string_view, 6> kinds{"setting", "own", "clock", "counter", "report", "order"};
constexpr std::array<std::string_view, 12> groups{"prices",   "recipes", "times",        "payment",
                                                  "options",  "clock",   "temperatures", "machine",
                                                  "counters", "alarms",  "commands",     "status"};

bool isScale(std::string_view text) {
    const bool offset = !text.empty() && (text.front() == '+' || text.front() == '-');
    return std::ranges::count(scales, text) != 0 || (offset && wholeNumber<int>(text.substr(1)));
}

/// The bits of a list such as 0-2,5; nothing where it is none.
std::optional<std::uint32_t> bitsOf(std::string_view text) {
    std::uint32_t bits = 0;
    for (const std::string_view part : split(text, ',')) {
        const auto dash = std::min(part.find('-'), part.size());
        const auto first = wholeNumber<unsigned>(part.substr(0, dash));
        const auto last = dash == part.size() ? first : wholeNumber<unsigned>(part.substr(dash + 1));
        if (!first || !last || *first > *last || *last > 31) return {};
        for (unsigned bit = *first; bit <= *last; ++bit) bits |= 1U << bit;
    }
    return bits;
}

class Reader {
  public:
    Catalogue read(std::istream& in) {
        std::string text;
        for (line_ = 1; std::getline(in, text); ++line_) {
            if (!text.empty() && text.back() == '\r') text.pop_back();
            if (text.empty() || text.front() == '#') continue;
            if (headerSeen_) {
                takeRow(split(text, '\t'));
            } else if (headerSeen_ = true; text != header) {
                problem("the header row must have these columns, parted by tabs: " + withBlanks(header));
            }
        }
        if (!headerSeen_) problem("the catalogue has no header row");
        return std::move(catalogue_);
    }

  private:
    void problem(const std::string& text) { catalogue_.problems.push_back({line_, text}); }

    void takeRow(const std::vector<std::string_view>& fields) {
        if (fields.size() != 9) {
            return problem("9 columns are needed, this row has " + std::to_string(fields.size()));
        }
        CatalogueRow row;
        row.line = line_;
        const std::size_t before = catalogue_.problems.size();
        if (const auto numbers = takeNumbers("number", fields[0])) row.numbers = *numbers;
        takeName(row, fields[1]);
        if (!fields[2].empty()) row.copies = takeNumbers("copy", fields[2]);
        row.unit = fields[3];
        row.scale = fields[4];
        row.kind = fields[5];
        takeRange(row, fields[6]);
        row.group = fields[7];
        row.meaning = fields[8];
        if (!isScale(row.scale)) problem("scale " + inQuotes(row.scale) + " is none that programs know");
        if (std::ranges::count(kinds, row.kind) == 0)
            problem("kind " + inQuotes(row.kind) + " is none that programs know");
        if (std::ranges::count(groups, row.group) == 0) {
            problem("group " + inQuotes(row.group) + " is none that programs know");
        }
        if (row.meaning.empty()) problem("there is no meaning");
        if (catalogue_.problems.size() != before) return;
        checkCounts(row, fields[1]);
        checkOrder(row);
        catalogue_.rows.push_back(row);
    }

    std::optional<Range> takeNumbers(const char* column, std::string_view text) {
        const auto numbers = rangeOf(text);
        if (!numbers) {
            problem(std::string(column) + ' ' + inQuotes(text) + " is neither N nor N..M");
        } else if (numbers->first < 1 || numbers->last > maxParameterNumber) {
            problem(std::string(column) + ' ' + inQuotes(text) + " is not within 1 to " +
                    std::to_string(maxParameterNumber));
        } else {
            return numbers;
        }
        return {};
    }

    void takeRange(CatalogueRow& row, std::string_view text) {
        constexpr std::string_view ofBits = "bits ";
        if (text.empty()) return;
        if (text.starts_with(ofBits)) {
            const auto bits = bitsOf(text.substr(ofBits.size()));
            if (!bits) return problem("range " + inQuotes(text) + " names no bits");
            row.bits = *bits;
        } else if (row.values = rangeOf(text); !row.values || text.find("..") == text.npos) {
            problem("range " + inQuotes(text) + " is neither N..M nor bits");
        }
    }

    void takeName(CatalogueRow& row, std::string_view text) {
        const auto [label, wrong] = labelOf(text);
        if (!label) return problem(wrong);
        if (label->copy || !std::isalpha(static_cast<unsigned char>(label->stem.front()))) {
            return problem("name " + inQuotes(text) + " begins with no letter or ends in .copy");
        }
        row.name = label->stem;
        row.indices = label->indices;
        const auto [other, isNew] = names_.emplace(constantName(row.name), line_);
        if (!isNew) {
            problem("name " + inQuotes(row.name) + " stands in line " + std::to_string(other->second) + " already");
        }
    }

    void checkCounts(const CatalogueRow& row, std::string_view label) {
        const int count = row.numbers.count();
        const int indices = row.indices ? row.indices->count() : 1;
        if (indices != count) {
            problem("name " + inQuotes(label) + " stands for " + std::to_string(indices) + " parameters, the row for " +
                    std::to_string(count));
        }
        if (row.copies && row.copies->count() != count) {
            problem("there are " + std::to_string(row.copies->count()) + " copies of " + std::to_string(count) +
                    " parameters");
        }
        take(row.numbers);
        if (row.copies) take(*row.copies);
    }

    /// A number, of a parameter or of a copy, has one meaning.
    void take(const Range& numbers) {
        for (int number = numbers.first; number <= numbers.last; ++number) {
            const auto [other, isNew] = lineOf_.emplace(number, line_);
            if (isNew) continue;
            return problem("number " + std::to_string(number) + " has a meaning in line " +
                           std::to_string(other->second) + " already");
        }
    }

    void checkOrder(const CatalogueRow& row) {
        if (row.numbers.first < lastFirst_) {
            problem("number " + std::to_string(row.numbers.first) + " does not come after " +
                    std::to_string(lastFirst_));
        }
        lastFirst_ = row.numbers.first;
    }

    Catalogue catalogue_;
    std::map<std::string, int> names_;
    std::map<int, int> lineOf_;
    int line_ = 0;
    int lastFirst_ = 0;
    bool headerSeen_ = false;
};

}  // namespace

std::optional<Range> Catalogue::numbersOf(const Label& label) const {
    const auto row = std::ranges::find(rows, label.stem, &CatalogueRow::name);
    if (row == rows.end() || (label.copy && !row->copies)) return {};
    const Range& numbers = label.copy ? *row->copies : row->numbers;
    if (!label.indices || !row->indices) {
        if (label.indices || row->indices) return {};
        return numbers;
    }
    if (!row->indices->has(*label.indices)) return {};
    const int offset = label.indices->first - row->indices->first;
    return Range{numbers.first + offset, numbers.first + offset + label.indices->count() - 1};
}

Catalogue readCatalogue(std::istream& in) { return Reader().read(in); }

std::string constantName(std::string_view name) {
    std::string constant;
    bool capital = true;
    for (const char letter : name) {
        const bool separates = letter == '.' || letter == '_';
        if (!separates) {
            constant += capital ? static_cast<char>(std::toupper(static_cast<unsigned char>(letter))) : letter;
        }
        capital = separates;
    }
    return constant;
}

}  // namespace kestrel::tables
