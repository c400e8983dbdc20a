// The index files of an installation, as the simulated boards read them: where each parameter lies in a board.
// Every function throws std::runtime_error, with the file's name in the text, when a file cannot be used.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include "simulator/types.h"

namespace kestrel::simulator {

struct IndexRecord {
    std::uint32_t address = 0;  // 24 bits; the byte that goes first over the line is the lowest
    int width = 1;              // bytes of the value, 1 to 4
    std::uint32_t preload = 0;  // 0 in an identity file
};

// Element 0 is record 1. The fraction of a partial record at the end is ignored.
std::vector<IndexRecord> readIdentityFile(const std::filesystem::path& file);
std::vector<IndexRecord> readParameterFile(const std::filesystem::path& file);

// What the name of a parameter file tells of its board.
struct ParameterFileName {
    int type;      // four digits
    int software;  // the letter, "A" is 0
    int release;   // two digits
};
std::optional<ParameterFileName> parseParameterFileName(std::string_view name);
std::string composeParameterFileName(const ParameterFileName& name);

// The number in the names of a board's files, and the identity file that follows from it.
int boardNumber(Board board);
std::filesystem::path identityFile(const std::filesystem::path& directory, Board board);

// The board's alphabetically last parameter file in the directory.
std::filesystem::path findParameterFile(const std::filesystem::path& directory, Board board);

}  // namespace kestrel::simulator
