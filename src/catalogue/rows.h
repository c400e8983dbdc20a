// The whole catalogue at run time: every parameter with what people need to read and to set it.
// For programs that list or name parameters; pages use the constants of catalogue/parameters.h.
#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "catalogue/setting.h"

namespace kestrel {

/// A row of data/catalogue. `unit` and `scale` may be empty; what they can say stands in data/catalogue/master.tsv.
struct CatalogueRow {
    static constexpr int NoIndex = -1;
    static constexpr std::uint32_t NoLimit = std::numeric_limits<std::uint32_t>::max();
    enum class Kind { Setting, Own, Clock, Counter, Report, Order };

    std::string_view name;  ///< without indices
    int firstIndex;         ///< in the names of a range, name[firstIndex] and so on; NoIndex for a single parameter
    SettingRange settings;
    Kind kind;
    std::uint32_t lowest, highest;  ///< what a page lets the board's number be
    std::uint32_t bits;             ///< those that pages change; 0: all of them
    std::string_view unit;
    std::string_view scale;
    std::string_view group;
    std::string_view meaning;
};

/// Board by board, by rising numbers.
std::span<const CatalogueRow> Catalogue();

/// The row of a number, of a parameter or a copy, and which of its range it is; null and -1 for one without a meaning.
std::pair<const CatalogueRow*, int> FindParameter(Board board, int number);
/// "price[3]", "price[3].copy"; empty for a number without a meaning.
std::string ParameterName(Board board, int number);
/// The name of one of a row's parameters.
std::string ParameterName(const CatalogueRow& row, int index);
/// The unit of the shown value; empty where it has none.
inline std::string_view UnitOf(const Setting& setting) {
    const CatalogueRow* const row = FindParameter(setting.board, setting.number).first;
    return row ? row->unit : std::string_view();
}

}  // namespace kestrel
