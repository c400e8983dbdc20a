// Names of numbers, for programs that show traffic or lists.
#include "catalogue/rows.h"

namespace kestrel {

std::pair<const CatalogueRow*, int> FindParameter(Board board, int number) {
    for (const CatalogueRow& row : Catalogue()) {
        if (row.settings.board() != board) continue;
        if (const int index = row.settings.indexOf(number); index >= 0) return {&row, index};
        if (!row.settings.hasCopies()) continue;
        if (const int index = CopyOf(row.settings).indexOf(number); index >= 0) return {&row, index};
    }
    return {nullptr, -1};
}

std::string ParameterName(const CatalogueRow& row, int index) {
    const std::string name(row.name);
    return row.firstIndex == CatalogueRow::NoIndex ? name : name + '[' + std::to_string(row.firstIndex + index) + ']';
}

std::string ParameterName(Board board, int number) {
    const auto [row, index] = FindParameter(board, number);
    if (!row) return {};
    const bool isCopy = row->settings.indexOf(number) < 0;
    return ParameterName(*row, index) + (isCopy ? ".copy" : "");
}

}  // namespace kestrel
