// Reading of the tables that index files are made from: rows, ranges of rows, and every check on them.
// A row stands for one parameter or for a run of them that lie one behind another on the board.
#include <algorithm>
#include <optional>
#include <set>

#include "tools/mkindex_format.h"

namespace kestrel::mkindex {
namespace {

using namespace tables;

constexpr std::uint32_t addressEnd = 0x1000000;
constexpr std::string_view identityHeader = "number\tname\twidth\trefresh\taddress\tmeaning";
constexpr std::string_view parameterHeader = "name\twidth\trefresh\taddress\tpreload";

struct Row {
    int line = 0;
    Range numbers;
    std::string label;  // the name as it is written in the table
    Label name;
    int width = 1;
    int refresh = 0;
    std::uint32_t address = 0;
    std::vector<std::uint32_t> preloads;  // one for all, or one for each number

    std::uint32_t end() const { return address + static_cast<std::uint32_t>(numbers.count() * width); }
};

class Reader {
  public:
    Reader(Layout layout, const Catalogue* catalogue) : layout_(layout), catalogue_(catalogue) {}

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
            problem("the header row must have these columns, parted by tabs: " + withBlanks(header));
        }
    }

    void takeRow(std::string_view text) {
        const bool identity = layout_ == Layout::Identity;
        const auto fields = split(text, '\t');
        const std::size_t expected = identity ? 6 : 5;
        if (fields.size() != expected) {
            return problem(std::to_string(expected) + " columns are needed, this row has " +
                           std::to_string(fields.size()));
        }
        Row row;
        row.line = line_;
        const std::size_t before = table_.problems.size();
        const std::size_t name = identity ? 1 : 0;
        if (identity && !takeNumber(row, fields[0])) return;
        takeName(row, fields[name]);
        takeWidth(row, fields[name + 1]);
        takeRefresh(row, fields[name + 2]);
        takeAddress(row, fields[name + 3]);
        if (!identity) takePreloads(row, fields[name + 4]);
        if (table_.problems.size() == before) {
            checkExtent(row);
            rows_.push_back(row);
        }
    }

    bool takeNumber(Row& row, std::string_view text) {
        const auto number = wholeNumber<int>(text);
        if (!number) {
            problem("number " + inQuotes(text) + " is none");
        } else if (*number < 1 || *number > maxIdentityNumber) {
            problem("number " + inQuotes(text) + " is not within 1 to " + std::to_string(maxIdentityNumber));
        } else if (*number <= lastNumber_) {
            problem("number " + std::to_string(*number) + " does not come after " + std::to_string(lastNumber_));
        } else {
            lastNumber_ = *number;
            row.numbers = {*number, *number};
            return true;
        }
        return false;
    }

    /// In a table of parameters the name says which numbers the row is for.
    void takeName(Row& row, std::string_view text) {
        row.label = std::string(text);
        const auto [label, wrong] = labelOf(text);
        if (!label) return problem(wrong);
        row.name = *label;
        if (catalogue_) {
            const auto numbers = catalogue_->numbersOf(*label);
            if (!numbers) return problem("name " + inQuotes(text) + " is not in the catalogue");
            row.numbers = *numbers;
        } else if (label->count() != 1 || label->copy) {
            return problem("name " + inQuotes(text) + " stands for more than one record");
        }
        for (int offset = 0; offset < row.numbers.count(); ++offset) {
            const auto [name, isNew] = names_.insert(nameAt(row, offset));
            if (!isNew) return problem("name " + inQuotes(*name) + " stands twice");
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
        std::ranges::sort(rows_, {}, [](const Row& row) { return row.numbers.first; });
        if (catalogue_) lastNumber_ = rows_.back().numbers.last;
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
        const Label& name = row.name;
        const std::string index = name.indices ? "[" + std::to_string(name.indices->first + offset) + "]" : "";
        return name.stem + index + (name.copy ? ".copy" : "");
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

    const Layout layout_;
    const Catalogue* const catalogue_;  // of the parameters; none for an identity table
    Table table_;
    std::vector<Row> rows_;
    std::set<std::string> names_;
    int line_ = 0;
    int lastNumber_ = 0;
    bool headerSeen_ = false;
};

}  // namespace

Table readIdentityTable(std::istream& in) { return Reader(Layout::Identity, nullptr).read(in); }

Table readParameterTable(std::istream& in, const Catalogue& catalogue) {
    return Reader(Layout::Parameters, &catalogue).read(in);
}

}  // namespace kestrel::mkindex
