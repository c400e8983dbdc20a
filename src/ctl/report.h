// A report on sales and alarms as sections of rows, and its forms.
#pragma once

#include <string>
#include <vector>

#include "ctl/output.h"

namespace kestrel::ctl {

struct ReportRow {
    std::vector<std::string> cells;  ///< the first is a name
    Fields fields;                   ///< the same for scripts
};

struct ReportSection {
    std::string title;
    std::vector<std::string> heads;  ///< of the columns behind the first; may be empty
    std::vector<ReportRow> rows;
};

struct Report {
    std::string title;
    std::string about;  ///< which machine, when
    std::vector<ReportSection> sections;
};

std::string asText(const Report& report);
/// Section, name and values; fields that need it in quotes.
std::string asCsv(const Report& report);
/// A page of its own that prints on one or two sheets.
std::string asHtml(const Report& report);

}  // namespace kestrel::ctl
