// The parameters of the catalogue one by one, by name, and their values for people and for files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "catalogue/rows.h"

namespace kestrel::ctl {

/// Where a value stands on a machine: a parameter, or a copy of one.
struct Place {
    Board board;
    int number;
    bool operator==(const Place&) const = default;
    bool operator<(const Place& other) const { return std::tie(board, number) < std::tie(other.board, other.number); }
};

constexpr Place PlaceOf(const Setting& setting) { return {setting.board, setting.number}; }

struct Item {
    const CatalogueRow* row;
    int index;  ///< in the row

    Setting setting() const { return row->settings[index]; }
    Board board() const { return row->settings.board(); }
    Place place() const { return PlaceOf(setting()); }
    bool hasCopy() const { return row->settings.hasCopies(); }
    Place copy() const { return PlaceOf(CopyOf(setting())); }
    std::string name() const { return ParameterName(*row, index); }
    bool isMoney() const { return row->scale == "money"; }
    /// Whether two values are the same setting: bits that no page changes do not count.
    bool areSame(std::uint32_t one, std::uint32_t other) const;
    /// What is to be written for a wanted value where the machine has this one.
    std::uint32_t blend(std::uint32_t wanted, std::uint32_t present) const;
};

/// All of the catalogue, in its order.
const std::vector<Item>& AllItems();
/// Nothing where the board has no parameter of that name.
std::optional<Item> FindItem(const std::string& board, const std::string& name);
/// By "price[3]", "inputs" for all of a row, "hot-drink:inputs" for those of one board; none where nothing has the
/// name.
std::vector<Item> ItemsNamed(const std::string& text);
/// The groups that have settings, in the order of the catalogue.
std::vector<std::string> SettableGroups();

/// "master", "hot-drink", "sector".
std::string BoardName(Board board);
std::optional<Board> BoardNamed(const std::string& name);

/// The value as people read it, without its unit.
std::string Figure(const Item& item, std::uint32_t raw, int decimals, const std::string& separator = ".");
/// The same with the unit behind it.
std::string FigureWithUnit(const Item& item, std::uint32_t raw, int decimals, const std::string& separator = ".");

}  // namespace kestrel::ctl
