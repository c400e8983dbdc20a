// A file of settings.
#include "ctl/settings_file.h"

#include <array>
#include <cstdio>
#include <set>
#include <string_view>

#include "ctl/words.h"
#include "platform/errors.h"
#include "simulator/commands.h"

namespace kestrel::ctl {

namespace {

constexpr std::string_view FirstLine = "kestrel-settings 1";
constexpr std::string_view SumKey = "sum";
constexpr const char* Nothing = "-";
constexpr std::uint32_t HighestDecimals = 3;
constexpr std::uint64_t HighestRaw = 0xFFFFFFFF;

/// The cyclic sum of 32 bits that archives use, over lines without their ends.
class Sum {
  public:
    void add(std::string_view line) {
        for (const char letter : line) add(static_cast<std::uint8_t>(letter));
        add(std::uint8_t{'\n'});
    }
    std::string text() const {
        std::array<char, 9> digits;
        std::snprintf(digits.data(), digits.size(), "%08X", ~sum_);
        return digits.data();
    }

  private:
    void add(std::uint8_t byte) {
        constexpr std::uint32_t Polynomial = 0xEDB88320;
        sum_ ^= byte;
        for (int bit = 0; bit < 8; ++bit) sum_ = sum_ & 1 ? sum_ >> 1 ^ Polynomial : sum_ >> 1;
    }
    std::uint32_t sum_ = 0xFFFFFFFF;
};

std::string textOf(const std::optional<std::uint32_t>& number) { return number ? std::to_string(*number) : Nothing; }

std::vector<std::string> fieldsOf(std::string_view line) {
    std::vector<std::string> fields;
    for (std::size_t from = 0; from <= line.size();) {
        const std::size_t end = std::min(line.find('\t', from), line.size());
        fields.emplace_back(line.substr(from, end - from));
        from = end + 1;
    }
    return fields;
}

class Reader {
  public:
    Reader(const std::string& name, bool edited) : name_(name), edited_(edited) {}

    SettingsFile read(std::string_view text) {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            std::string_view line = text.substr(0, end);
            text.remove_prefix(std::min(end + 1, text.size()));
            if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
            ++line_;
            take(line);
        }
        if (!hasSum_) fail(say(Word::FileIsCut));
        return std::move(file_);
    }

  private:
    [[noreturn]] void fail(const std::string& what) const {
        throw RunTimeError(error_number::TypeMismatch,
                           name_ + ": " + say(Word::Line, {std::to_string(line_)}) + ": " + what);
    }

    void take(std::string_view line) {
        if (line_ == 1 && line != FirstLine) fail(say(Word::NoSettingsFile));
        const std::vector<std::string> fields = fieldsOf(line);
        if (hasSum_) fail(say(Word::BehindTheEnd));
        if (fields[0] == SumKey) return takeSum(fields);
        sum_.add(line);
        if (line_ == 1 || line.empty() || line.front() == '#') return;
        fields.size() == 4 ? takeValue(fields) : takeHead(fields);
    }

    void takeSum(const std::vector<std::string>& fields) {
        hasSum_ = true;
        if (fields.size() != 2 || fields[1].size() != sum_.text().size()) fail(say(Word::FileIsCut));
        if (!edited_ && fields[1] != sum_.text()) fail(say(Word::SumIsWrong));
    }

    std::optional<std::uint32_t> numberIn(const std::string& text, std::uint64_t highest) const {
        if (text == Nothing) return {};
        const auto number = simulator::parseNumber(text, highest);
        if (!number) fail(say(Word::NoNumber, {text}));
        return static_cast<std::uint32_t>(*number);
    }

    void takeHead(const std::vector<std::string>& fields) {
        const std::string& key = fields[0];
        const bool isBoard = key == "board" && fields.size() == 3;
        if (!isBoard && fields.size() != 2) fail(say(Word::LineNotUnderstood));
        if (!seen_.insert(isBoard ? key + fields[1] : key).second) fail(say(Word::Twice, {key}));
        if (isBoard) {
            const auto board = BoardNamed(fields[1]);
            if (!board) fail(say(Word::NoSuchParameter, {fields[1]}));
            file_.boards[*board] = fields[2];
        } else if (key == "program") {
            file_.program = fields[1];
        } else if (key == "date") {
            file_.date = fields[1];
        } else if (key == "machine") {
            file_.machine = numberIn(fields[1], HighestRaw);
        } else if (key == "decimals") {
            file_.decimals = numberIn(fields[1], HighestDecimals);
        } else if (key == "complete" && (fields[1] == "yes" || fields[1] == "no")) {
            file_.isComplete = fields[1] == "yes";
        } else {
            fail(say(Word::LineNotUnderstood));
        }
    }

    void takeValue(const std::vector<std::string>& fields) {
        const auto item = FindItem(fields[0], fields[1]);
        const std::string name = fields[0] + ' ' + fields[1];
        if (!item) fail(say(Word::NoSuchParameter, {name}));
        if (!file_.boards.contains(item->board())) fail(say(Word::BoardNotInHead, {fields[0]}));
        if (!seen_.insert(name).second) fail(say(Word::Twice, {name}));
        const auto raw = numberIn(fields[3], HighestRaw);
        const std::string figure =
            raw ? FigureWithUnit(*item, *raw, static_cast<int>(file_.decimals.value_or(0))) : Nothing;
        if (fields[2] != figure) fail(say(Word::ValuesDisagree, {fields[2], fields[3], figure}));
        file_.entries.push_back({*item, raw, line_});
    }

    const std::string& name_;
    const bool edited_;
    SettingsFile file_;
    Sum sum_;
    std::set<std::string> seen_;
    int line_ = 0;
    bool hasSum_ = false;
};

}  // namespace

std::string print(const SettingsFile& file) {
    std::string text(FirstLine);
    text += "\nprogram\t" + file.program + "\ndate\t" + file.date + "\nmachine\t" + textOf(file.machine);
    for (const auto& [board, index] : file.boards) text += "\nboard\t" + BoardName(board) + '\t' + index;
    text += "\ndecimals\t" + textOf(file.decimals) + "\ncomplete\t" + (file.isComplete ? "yes" : "no") + '\n';
    for (const Entry& each : file.entries) {
        const std::string figure =
            each.raw ? FigureWithUnit(each.item, *each.raw, static_cast<int>(file.decimals.value_or(0))) : Nothing;
        text += BoardName(each.item.board()) + '\t' + each.item.name() + '\t' + figure + '\t' + textOf(each.raw) + '\n';
    }
    Sum sum;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = text.find('\n', from);
        sum.add(std::string_view(text).substr(from, end - from));
        from = end + 1;
    }
    return text + std::string(SumKey) + '\t' + sum.text() + '\n';
}

SettingsFile parse(const std::string& text, const std::string& name, bool edited) {
    return Reader(name, edited).read(text);
}

}  // namespace kestrel::ctl
