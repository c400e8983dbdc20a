// Reading index files: bare runs of records of 5 bytes (identity) or 9 bytes (parameters), without a header.
// The simulated boards accept only what a board can serve; a width beyond four bytes is refused.
#include "simulator/index_files.h"

#include <cctype>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

namespace kestrel::simulator {
namespace {

constexpr std::size_t identityRecordSize = 5;
constexpr std::size_t parameterRecordSize = 9;
constexpr int widestValue = 4;

[[noreturn]] void refuse(const std::filesystem::path& file, const std::string& why) {
    throw std::runtime_error(file.string() + ": " + why);
}

Bytes readWhole(const std::filesystem::path& file) {
    std::error_code trouble;
    std::ifstream in(file, std::ios::binary);
    const auto size = std::filesystem::file_size(file, trouble);
    if (!in || trouble) refuse(file, "cannot be opened");
    Bytes bytes(size);
    if (!in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size)))
        refuse(file, "cannot be read");
    return bytes;
}

// The first five bytes are the same in both layouts: third and second address byte, command, refresh, first address
// byte.
std::vector<IndexRecord> readRecords(const std::filesystem::path& file, std::size_t recordSize) {
    const Bytes bytes = readWhole(file);
    std::vector<IndexRecord> records;
    for (std::size_t at = 0; at + recordSize <= bytes.size(); at += recordSize) {
        IndexRecord record;
        record.address = static_cast<std::uint32_t>(bytes[at]) << 16 | static_cast<std::uint32_t>(bytes[at + 1]) << 8 |
                         bytes[at + 4];
        record.width = (bytes[at + 2] & 15) + 1;
        if (record.width > widestValue) {
            refuse(file, "record " + std::to_string(records.size() + 1) + " has a width of " +
                             std::to_string(record.width) + " bytes, more than 4");
        }
        for (std::size_t i = identityRecordSize; i < recordSize; ++i) {
            record.preload |= static_cast<std::uint32_t>(bytes[at + i]) << (8 * (i - identityRecordSize));
        }
        records.push_back(record);
    }
    return records;
}

std::string padded(int number, int digits) {
    std::string text = std::to_string(number);
    const auto width = static_cast<std::size_t>(digits);
    return text.size() < width ? std::string(width - text.size(), '0') + text : text.substr(text.size() - width);
}

// "W" and the four digits with which all of a board's file names begin.
std::string beginningOf(int number) { return std::string("W").append(padded(number, 4)); }

}  // namespace

std::vector<IndexRecord> readIdentityFile(const std::filesystem::path& file) {
    return readRecords(file, identityRecordSize);
}

std::vector<IndexRecord> readParameterFile(const std::filesystem::path& file) {
    return readRecords(file, parameterRecordSize);
}

std::optional<ParameterFileName> parseParameterFileName(std::string_view name) {
    // WttttAsrr.inx, with t and r digits and s one letter counted from "A"
    constexpr std::string_view pattern = "W0000AA00.inx";
    if (name.size() != pattern.size()) return std::nullopt;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const auto c = static_cast<unsigned char>(name[i]);
        const bool fits = pattern[i] == '0' ? std::isdigit(c) != 0 : i == 6 ? c >= 'A' : name[i] == pattern[i];
        if (!fits) return std::nullopt;
    }
    return ParameterFileName{std::stoi(std::string(name.substr(1, 4))), static_cast<unsigned char>(name[6]) - 'A',
                             std::stoi(std::string(name.substr(7, 2)))};
}

std::string composeParameterFileName(const ParameterFileName& name) {
    std::string text = beginningOf(name.type).append("A");
    text.push_back(static_cast<char>('A' + name.software));
    return text.append(padded(name.release, 2)).append(".inx");
}

int boardNumber(Board board) {
    constexpr std::array<int, boardCount> numbers{256, 292, 245};
    return numbers[indexOf(board)];
}

std::filesystem::path identityFile(const std::filesystem::path& directory, Board board) {
    return directory / beginningOf(boardNumber(board)).append(".inx");
}

std::filesystem::path findParameterFile(const std::filesystem::path& directory, Board board) {
    std::error_code error;
    std::string last;
    for (const auto& entry : std::filesystem::directory_iterator(directory, error)) {
        const std::string name = entry.path().filename().string();
        const auto parsed = parseParameterFileName(name);
        if (parsed && parsed->type == boardNumber(board) && name > last) last = name;
    }
    if (error) refuse(directory, "cannot be listed: " + error.message());
    if (last.empty()) refuse(directory, "has no parameter file " + beginningOf(boardNumber(board)) + "A*.inx");
    return directory / last;
}

}  // namespace kestrel::simulator
