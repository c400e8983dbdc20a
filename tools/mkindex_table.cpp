// Reading of the tables that index files are made from: rows, ranges of rows, and every check on them.
// A row stands for one parameter or for a run of them that lie one behind another on the board.
#include <algorithm>
#include <charconv>
#include <optional>
#include <set>

#include "tools/mkindex_format.h"

namespace kestrel::mkindex {
namespace {

constexpr std::uint32_t addressEnd = 0x1000000;
constexpr std::string_view identityHeader = "number\tname\twidth\trefresh\taddress\tmeaning";
constexpr std::string_view parameterHeader = "number\tname\twidth\trefresh\taddress\tpreload\tmeaning";

struct Range {
    int first = 0;
    int last = 0;
    int count() const { return last - first + 1; }
};

struct Row {
    int line = 0;
    Range numbers;
    std::string label;  // the name as it is written in the table
    std::string name;   // without its range of indices
    std::optional<Range> indices;
    int width = 1;
    int refresh = 0;
    std::uint32_t address = 0;
    std::vector<std::uint32_t> preloads;  // one for all, or one for each number

    std::uint32_t end() const { return address + static_cast<std::uint32_t>(numbers.count() * width); }
};

template <typename Number>
std::optional<Number> wholeNumber(std::string_view text, int base = 10) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (text.empty() || text.front() == '-' || error != std::errc{} || end != text.data() + text.size()) return {};
    return value;
}

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

class Reader {
  public:
    explicit Reader(Layout layout) : layout_(layout) {}

    Table read(std::istream& in) {
        std::string text;
        for (line_ = 1; std::getline(in, text); ++line_) {
            if (!text.empty() && text.back() == '\r') text.pop_back();
            if (!text.empty() && text.front() != '#') takeLine(text);
        }
        if (!headerSeen_) {
            problem("the table has no header row");
        } else if (rows_.empty() && table_.problems.empty()) {
            problem("the table has no rows");
        }
        checkOverlaps();
        if (table_.problems.empty()) expand();
        std::stable_sort(table_.problems.begin(), table_.problems.end(),
                         [](const Problem& a, const Problem& b) { return a.line < b.line; });
        return std::move(table_);
    }

  private:
    void problem(const std::string& text) { table_.problems.push_back({line_, text}); }

    void takeLine(std::string_view text) {
        if (headerSeen_) return takeRow(text);
        headerSeen_ = true;
        const std::string_view header = layout_ == Layout::Identity ? identityHeader : parameterHeader;
        if (text != header) {
            std::string shown(header);
            std::replace(shown.begin(), shown.end(), '\t', ' ');
            problem("the header row must have these columns, parted by tabs: " + shown);
        }
    }

    void takeRow(std::string_view text) {
        const auto fields = split(text, '\t');
        const std::size_t expected = layout_ == Layout::Identity ? 6 : 7;
        if (fields.size() != expected) {
            return problem(std::to_string(expected) + " columns are needed, this row has " +
                           std::to_string(fields.size()));
        }
        Row row;
        row.line = line_;
        const std::size_t before = table_.problems.size();
        if (!takeNumbers(row, fields[0])) return;
        takeName(row, fields[1]);
        takeWidth(row, fields[2]);
        takeRefresh(row, fields[3]);
        takeAddress(row, fields[4]);
        if (layout_ == Layout::Parameters) takePreloads(row, fields[5]);
        if (table_.problems.size() == before) {
            checkExtent(row);
            rows_.push_back(row);
        }
    }

    bool takeNumbers(Row& row, std::string_view text) {
        const auto numbers = rangeOf(text);
        const int limit = layout_ == Layout::Identity ? maxIdentityNumber : maxParameterNumber;
        if (!numbers) {
            problem("number " + inQuotes(text) + " is neither N nor N..M");
        } else if (numbers->first < 1 || numbers->last > limit) {
            problem("number " + inQuotes(text) + " is not within 1 to " + std::to_string(limit));
        } else if (numbers->first <= lastNumber_) {
            problem("number " + std::to_string(numbers->first) + " does not come after " + std::to_string(lastNumber_));
        } else {
            row.numbers = *numbers;
            lastNumber_ = numbers->last;
            return true;
        }
        return false;
    }

    void takeName(Row& row, std::string_view text) {
        row.label = std::string(text);
        std::string_view stem = text;
        const std::size_t bracket = text.find('[');
        if (bracket != std::string_view::npos) {
            stem = text.substr(0, bracket);
            if (text.back() == ']') row.indices = rangeOf(text.substr(bracket + 1, text.size() - bracket - 2));
            if (!row.indices) return problem("name " + inQuotes(text) + " does not end in indices like [1..8]");
        }
        row.name = std::string(stem);
        constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789_.";
        if (stem.empty() || stem.find_first_not_of(letters) != std::string_view::npos) {
            return problem("name " + inQuotes(text) + " may have only small letters, digits, underscores and dots");
        }
        const int indices = row.indices ? row.indices->count() : 1;
        if (indices != row.numbers.count()) {
            return problem("name " + inQuotes(text) + " stands for " + std::to_string(indices) +
                           " parameters, the row for " + std::to_string(row.numbers.count()));
        }
        for (int offset = 0; offset < indices; ++offset) {
            if (!names_.insert(nameAt(row, offset)).second) {
                return problem("name " + inQuotes(nameAt(row, offset)) + " stands twice");
            }
        }
    }

    void takeWidth(Row& row, std::string_view text) {
        row.width = wholeNumber<int>(text).value_or(0);
        if (row.width != 1 && row.width != 2 && row.width != 4) {
            row.width = 1;
            problem("width " + inQuotes(text) + " is not 1, 2 or 4");
        }
    }

    void takeRefresh(Row& row, std::string_view text) {
        row.refresh = wholeNumber<int>(text).value_or(-1);
        if (row.refresh < 0 || row.refresh > 15) problem("refresh " + inQuotes(text) + " is not within 0 to 15");
    }

    void takeAddress(Row& row, std::string_view text) {
        const auto address = wholeNumber<std::uint32_t>(text, 16);
        if (!address || text.size() != 6)
            return problem("address " + inQuotes(text) + " is not six hexadecimal digits");
        row.address = *address;
    }

    void takePreloads(Row& row, std::string_view text) {
        const std::uint32_t largest = row.width == 4 ? 0xFFFFFFFF : (1U << (8 * row.width)) - 1;
        for (const std::string_view field : split(text, ',')) {
            const auto value = wholeNumber<std::uint32_t>(field);
            if (!value || *value > largest) {
                return problem("preload " + inQuotes(field) + " is not within 0 to " + std::to_string(largest));
            }
            row.preloads.push_back(*value);
        }
        const std::size_t count = row.preloads.size();
        if (count != 1 && count != static_cast<std::size_t>(row.numbers.count())) {
            problem("there are " + std::to_string(count) + " preloads for " + std::to_string(row.numbers.count()) +
                    " parameters");
        }
    }

    void checkExtent(const Row& row) {
        if (row.end() > addressEnd) problem("the addresses of " + row.label + " run beyond FFFFFF");
    }

    void checkOverlaps() {
        std::vector<const Row*> byAddress;
        for (const Row& row : rows_) byAddress.push_back(&row);
        std::sort(byAddress.begin(), byAddress.end(),
                  [](const Row* a, const Row* b) { return a->address < b->address; });
        const Row* farthest = nullptr;
        for (const Row* row : byAddress) {
            if (farthest && row->address < farthest->end()) {
                const auto [first, second] = std::minmax(row->line, farthest->line);
                const Row& later = row->line == second ? *row : *farthest;
                const Row& earlier = row->line == second ? *farthest : *row;
                table_.problems.push_back({second, "the addresses of " + later.label + " overlap those of " +
                                                       earlier.label + " in line " + std::to_string(first) + " from " +
                                                       hexText(row->address, 6) + " on"});
            }
            if (!farthest || row->end() > farthest->end()) farthest = row;
        }
    }

    // Unused numbers get addresses above all that the table uses, so that none can touch a parameter.
    void expand() {
        std::uint32_t freeAddress = 0;
        for (const Row& row : rows_) freeAddress = std::max(freeAddress, row.end());
        const auto fillTo = [&](int number) {
            while (static_cast<int>(table_.records.size()) < number) {
                Record unused;
                unused.number = static_cast<int>(table_.records.size()) + 1;
                unused.address = freeAddress++;
                table_.records.push_back(unused);
            }
        };
        for (const Row& row : rows_) {
            fillTo(row.numbers.first - 1);
            for (int offset = 0; offset < row.numbers.count(); ++offset)
                table_.records.push_back(recordAt(row, offset));
        }
        fillTo(layout_ == Layout::Identity ? maxIdentityNumber : lastNumber_ + 1);
        if (freeAddress > addressEnd) problem("no addresses are left for the numbers without a row");
    }

    static std::string nameAt(const Row& row, int offset) {
        return row.indices ? row.name + "[" + std::to_string(row.indices->first + offset) + "]" : row.name;
    }

    static Record recordAt(const Row& row, int offset) {
        Record record;
        record.number = row.numbers.first + offset;
        record.name = nameAt(row, offset);
        record.command = static_cast<std::uint8_t>(row.width - 1);
        record.refresh = static_cast<std::uint8_t>(row.refresh);
        record.address = row.address + static_cast<std::uint32_t>(offset * row.width);
        const auto place = static_cast<std::size_t>(row.preloads.size() == 1 ? 0 : offset);
        if (!row.preloads.empty()) record.preload = row.preloads[place];
        return record;
    }

    Layout layout_;
    Table table_;
    std::vector<Row> rows_;
    std::set<std::string> names_;
    int line_ = 0;
    int lastNumber_ = 0;
    bool headerSeen_ = false;
};

}  // namespace

Table readTable(std::istream& in, Layout layout) { return Reader(layout).read(in); }

}  // namespace kestrel::mkindex
