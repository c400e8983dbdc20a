// The parameters of the catalogue one by one.
#include "ctl/parameters.h"

#include <algorithm>
#include <map>
#include <sstream>

#include "platform/numbers.h"
#include "simulator/exchange.h"

namespace kestrel::ctl {

namespace {

constexpr int FractionBits = 8;  // of a signed fixed-point number

const std::map<std::string, Item>& itemsByName() {
    static const std::map<std::string, Item> items = [] {
        std::map<std::string, Item> all;
        for (const Item& item : AllItems()) all.emplace(BoardName(item.board()) + ':' + item.name(), item);
        return all;
    }();
    return items;
}

std::string hexadecimal(std::uint32_t raw) {
    std::ostringstream text;
    text << "0x" << std::hex << std::uppercase << raw;
    return text.str();
}

}  // namespace

bool Item::areSame(std::uint32_t one, std::uint32_t other) const {
    return row->bits == 0 ? one == other : ((one ^ other) & row->bits) == 0;
}

std::uint32_t Item::blend(std::uint32_t wanted, std::uint32_t present) const {
    return row->bits == 0 ? wanted : (wanted & row->bits) | (present & ~row->bits);
}

const std::vector<Item>& AllItems() {
    static const std::vector<Item> items = [] {
        std::vector<Item> all;
        for (const CatalogueRow& row : Catalogue())
            for (int i = 0; i < row.settings.size(); ++i) all.push_back({&row, i});
        return all;
    }();
    return items;
}

std::optional<Item> FindItem(const std::string& board, const std::string& name) {
    const auto found = itemsByName().find(board + ':' + name);
    return found == itemsByName().end() ? std::nullopt : std::optional(found->second);
}

std::vector<Item> ItemsNamed(const std::string& text) {
    const std::size_t colon = text.find(':');
    const std::string board = colon == std::string::npos ? "" : text.substr(0, colon);
    const std::string name = colon == std::string::npos ? text : text.substr(colon + 1);
    std::vector<Item> found;
    for (const Item& item : AllItems()) {
        const bool isNamed = item.name() == name || item.row->name == name;
        if (isNamed && (board.empty() || board == BoardName(item.board()))) found.push_back(item);
    }
    return found;
}

std::vector<std::string> SettableGroups() {
    std::vector<std::string> groups;
    for (const CatalogueRow& row : Catalogue())
        if (row.kind == CatalogueRow::Kind::Setting && std::ranges::count(groups, row.group) == 0)
            groups.emplace_back(row.group);
    return groups;
}

std::string BoardName(Board board) { return std::string(simulator::nameOf(board)); }

std::optional<Board> BoardNamed(const std::string& name) {
    for (const Board board : simulator::allBoards)
        if (BoardName(board) == name) return board;
    return {};
}

std::string Figure(const Item& item, std::uint32_t raw, int decimals, const std::string& separator) {
    const std::string_view scale = item.row->scale;
    const std::int64_t value = raw;
    if (scale == "/10") return formatScaled(value, 1, separator);
    if (scale == "money") return formatScaled(value, decimals, separator);
    if (scale == "bits") return hexadecimal(raw);
    if (scale == "signed/256")
        return formatScaled(static_cast<std::int16_t>(raw) * 10 / (1 << FractionBits), 1, separator);
    return std::to_string(scale.empty() ? value : value + std::stoi(std::string(scale)));
}

std::string FigureWithUnit(const Item& item, std::uint32_t raw, int decimals, const std::string& separator) {
    const bool hasUnit = !item.row->unit.empty() && !item.isMoney();
    return Figure(item, raw, decimals, separator) + (hasUnit ? ' ' + std::string(item.row->unit) : "");
}

}  // namespace kestrel::ctl
