// A board's catalogue as the tools read it: what each parameter is, and which numbers a name stands for.
// Reading collects every mistake with its line, so that one run shows all that is wrong with a catalogue.
#pragma once

#include <cstdint>
#include <istream>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/table_text.h"

namespace kestrel::tables {

/// An index file holds at most 32767 records, and its last one is never read, so one number less can be used.
constexpr int maxParameterNumber = 32766;

struct CatalogueRow {
    int line = 0;
    Range numbers;
    std::string name;  ///< without its indices
    std::optional<Range> indices;
    std::optional<Range> copies;
    std::string unit;
    std::string scale;
    std::string kind;
    std::optional<Range> values;  ///< what a page lets the board's number be
    std::uint32_t bits = 0;       ///< those that pages change; 0: all of them
    std::string group;
    std::string meaning;
};

/// What a catalogue says; to be used if and only if `problems` is empty.
struct Catalogue {
    std::vector<CatalogueRow> rows;
    std::vector<Problem> problems;

    /// The numbers that a label stands for, all of a row or a part of it; nothing for one that the catalogue lacks.
    std::optional<Range> numbersOf(const Label& label) const;
};

Catalogue readCatalogue(std::istream& in);

/// The name of a row's constant: "clock.set_hour" is ClockSetHour.
std::string constantName(std::string_view name);

}  // namespace kestrel::tables
