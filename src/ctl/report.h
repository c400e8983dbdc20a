// A report on sales and alarms as sections of rows, and its forms.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "ctl/output.h"

namespace kestrel::ctl {

struct ReportRow {
    std::vector<std::string> cells;  ///< the first is a name
    std::vector<Fields> objects;     ///< the same for scripts, a value each
};

struct ReportSection {
    std::string title;
    std::vector<std::string> heads;  ///< of the columns behind the first; may be empty
    std::vector<ReportRow> rows;
    bool hasWords = false;  ///< in its cells, and no figures
};

struct Report {
    std::string title;
    std::vector<std::pair<std::string, std::string>> about;  ///< which machine, when
    std::vector<ReportSection> sections;
};

std::string asText(const Report& report);
/// What it is about, then section, name and values; the heads of a section stand above it.
std::string asCsv(const Report& report);
/// A page of its own that prints on one or two sheets.
std::string asHtml(const Report& report);

}  // namespace kestrel::ctl
