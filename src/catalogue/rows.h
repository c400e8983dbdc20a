// The whole catalogue at run time: every parameter with what people need to read and to set it.
// For programs that list or name parameters; pages use the constants of catalogue/parameters.h.
#pragma once

#include <span>
#include <string_view>

#include "catalogue/setting.h"

namespace kestrel {

/// A row of data/catalogue. `unit` and `scale` may be empty; what they can say stands in data/catalogue/master.tsv.
struct CatalogueRow {
    static constexpr int NoIndex = -1;

    std::string_view name;  ///< without indices
    int firstIndex;         ///< in the names of a range, name[firstIndex] and so on; NoIndex for a single parameter
    SettingRange settings;
    std::string_view unit;
    std::string_view scale;
    std::string_view group;
    std::string_view meaning;
};

/// Board by board, by rising numbers.
std::span<const CatalogueRow> Catalogue();

/// The unit of the shown value; empty where it has none.
inline std::string_view UnitOf(const Setting& setting) {
    for (const CatalogueRow& row : Catalogue())
        if (row.settings.board() == setting.board && row.settings.indexOf(setting.number) >= 0) return row.unit;
    return {};
}

}  // namespace kestrel
