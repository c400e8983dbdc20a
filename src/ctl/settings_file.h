// A file of settings: a line a parameter, a head that says of which machine, and a sum over it all.
// Texts parted by tabs, so that people can read it and programs compare it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "ctl/parameters.h"

namespace kestrel::ctl {

struct Entry {
    Item item;
    std::optional<std::uint32_t> raw;  ///< none: it could not be read
    int line = 0;                      ///< of the file
};

struct SettingsFile {
    std::string program;                    ///< that read the machine
    std::string date;                       ///< when
    std::optional<std::uint32_t> machine;   ///< its number
    std::map<Board, std::string> boards;    ///< that were there, with the name of their index file
    std::optional<std::uint32_t> decimals;  ///< of all money
    bool isComplete = true;                 ///< every value that was asked for is there
    std::vector<Entry> entries;             ///< each parameter once
};

std::string print(const SettingsFile& file);

/// Throws a RunTimeError that names the file, the line and what is wrong with it. Where the sum does not fit and the
/// file was not `edited` on purpose, that is wrong too.
SettingsFile parse(const std::string& text, const std::string& name, bool edited);

}  // namespace kestrel::ctl
