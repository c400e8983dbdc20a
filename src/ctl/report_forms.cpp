// The forms of a report.
#include <algorithm>

#include "ctl/report.h"

namespace kestrel::ctl {

namespace {

constexpr const char* Style =
    "@page{size:A4;margin:12mm}body{font:9pt/1.2 sans-serif;margin:1em}h1{font-size:15pt;margin:0}"
    "main{columns:2 24em;column-gap:2em}section{break-inside:avoid;margin:0 0 1em}section.long{break-inside:auto}"
    "h2{font-size:11pt;margin:.3em 0;border-bottom:1px solid;break-after:avoid}"
    "table{border-collapse:collapse;width:100%}"
    "th,td{padding:0 .3em;text-align:right;font-weight:normal;vertical-align:bottom}"
    "thead th{font-size:75%;color:#555}td:first-child{white-space:nowrap}"
    "th:first-child,td:first-child,.words th,.words td{text-align:left}tr:nth-child(even) td{background:#f2f2f2}"
    "@media print{body{margin:0}}";
constexpr std::size_t LongSection = 25;  ///< rows that need not stand in one column

/// Characters, not bytes.
std::size_t lengthOf(const std::string& text) {
    return static_cast<std::size_t>(std::ranges::count_if(text, [](char c) { return (c & 0xC0) != 0x80; }));
}

std::string escaped(const std::string& text) {
    std::string all;
    for (const char letter : text) {
        if (letter == '&')
            all += "&amp;";
        else if (letter == '<')
            all += "&lt;";
        else
            all += letter;
    }
    return all;
}

std::string inCsv(const std::string& text) {
    if (text.find_first_of(",\"\n") == std::string::npos) return text;
    std::string all = "\"";
    for (const char letter : text) all += letter == '"' ? "\"\"" : std::string(1, letter);
    return all + '"';
}

std::string rowOfCsv(const std::string& first, const std::vector<std::string>& cells) {
    std::string row = inCsv(first);
    for (const std::string& cell : cells) row += ',' + inCsv(cell);
    return row + '\n';
}

/// Above the names stands nothing.
std::vector<std::string> headLine(const ReportSection& section) {
    std::vector<std::string> line{""};
    line.insert(line.end(), section.heads.begin(), section.heads.end());
    return line;
}

/// In one line.
std::string aboutOf(const Report& report) {
    std::string text;
    for (const auto& [what, value] : report.about) text += (text.empty() ? "" : ", ") + what + ' ' + value;
    return text;
}

std::string rowOfHtml(const std::vector<std::string>& cells, const char* kind) {
    std::string row = "<tr>";
    for (const std::string& cell : cells) row += std::string("<") + kind + '>' + escaped(cell);
    return row + "\n";
}

}  // namespace

std::string asText(const Report& report) {
    std::string text = report.title + '\n' + aboutOf(report) + '\n';
    for (const ReportSection& section : report.sections) {
        std::vector<std::vector<std::string>> lines;
        if (!section.heads.empty()) lines.push_back(headLine(section));
        for (const ReportRow& row : section.rows) lines.push_back(row.cells);
        std::vector<std::size_t> widths;
        for (const auto& line : lines)
            for (std::size_t i = 0; i < line.size(); ++i) {
                if (i == widths.size()) widths.push_back(0);
                widths[i] = std::max(widths[i], lengthOf(line[i]));
            }
        text += '\n' + section.title + '\n';
        for (const auto& line : lines) {
            text += "  ";
            for (std::size_t i = 0; i < line.size(); ++i) {
                const std::string blanks(widths[i] - lengthOf(line[i]), ' ');
                const bool isLeft = i == 0 || section.hasWords;
                text += (i == 0 ? "" : "  ") + (isLeft ? line[i] + blanks : blanks + line[i]);
            }
            text.erase(text.find_last_not_of(' ') + 1);
            text += '\n';
        }
    }
    return text;
}

std::string asCsv(const Report& report) {
    std::string text;
    for (const auto& [what, value] : report.about) text += rowOfCsv(what, {value});
    for (const ReportSection& section : report.sections) {
        if (!section.heads.empty()) text += rowOfCsv(section.title, headLine(section));
        for (const ReportRow& row : section.rows) text += rowOfCsv(section.title, row.cells);
    }
    return text;
}

std::string asHtml(const Report& report) {
    std::string text = "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>" + escaped(report.title) +
                       "</title>\n<style>" + Style + "</style></head>\n<body><h1>" + escaped(report.title) +
                       "</h1>\n<p>" + escaped(aboutOf(report)) + "</p>\n<main>\n";
    for (const ReportSection& section : report.sections) {
        const char* const kind = section.hasWords ? "words" : section.rows.size() > LongSection ? "long" : "short";
        text += std::string("<section class=\"") + kind + "\"><h2>" + escaped(section.title) + "</h2><table>\n";
        if (!section.heads.empty()) text += "<thead>" + rowOfHtml(headLine(section), "th") + "</thead>";
        text += "<tbody>\n";
        for (const ReportRow& row : section.rows) text += rowOfHtml(row.cells, "td");
        text += "</tbody></table></section>\n";
    }
    return text + "</main></body></html>\n";
}

}  // namespace kestrel::ctl
