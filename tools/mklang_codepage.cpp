// Conversion between UTF-8 and Windows-1252.
// Windows-1252 is Latin-1 but for the bytes 0x80 to 0x9F, which a table holds.
#include "tools/mklang_codepage.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace kestrel::mklang {

namespace {

constexpr char32_t noCharacter = 0xFFFD;

constexpr std::size_t tableStart = 0x80;
constexpr std::array<char32_t, 32> table{
    0x20AC, noCharacter, 0x201A,      0x0192, 0x201E,      0x2026,      0x2020, 0x2021,      0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152,      noCharacter, 0x017D, noCharacter, noCharacter, 0x2018, 0x2019,      0x201C, 0x201D, 0x2022,
    0x2013, 0x2014,      0x02DC,      0x2122, 0x0161,      0x203A,      0x0153, noCharacter, 0x017E, 0x0178};

// Takes one character off the front of the text; nothing when the text does not begin with a valid sequence.
std::optional<char32_t> takeCharacter(std::string_view& text) {
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t length = first < 0x80 ? 1 : first >> 5 == 0x06 ? 2 : first >> 4 == 0x0E ? 3 : 0;
    if (length == 0 || text.size() < length) return std::nullopt;
    constexpr std::array<char32_t, 4> smallest{0, 0, 0x80, 0x800};
    char32_t character = length == 1 ? first : first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if (next >> 6 != 0x02) return std::nullopt;
        character = character << 6 | (next & 0x3FU);
    }
    if (character < smallest[length]) return std::nullopt;
    text.remove_prefix(length);
    return character;
}

void appendUtf8(std::string& text, char32_t character) {
    const auto append = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (character < 0x80) {
        append(character);
    } else if (character < 0x800) {
        append(0xC0 | character >> 6);
        append(0x80 | (character & 0x3F));
    } else {
        append(0xE0 | character >> 12);
        append(0x80 | (character >> 6 & 0x3F));
        append(0x80 | (character & 0x3F));
    }
}

bool isLatin1(char32_t character) {
    return character < tableStart || (character >= tableStart + table.size() && character <= 0xFF);
}

}  // namespace

std::optional<std::string> toWindows1252(std::string_view utf8) {
    std::string bytes;
    while (!utf8.empty()) {
        const auto character = takeCharacter(utf8);
        if (!character || *character == noCharacter) return std::nullopt;
        const auto place = std::find(table.begin(), table.end(), *character);
        if (!isLatin1(*character) && place == table.end()) return std::nullopt;
        const auto byte = isLatin1(*character) ? *character : static_cast<char32_t>(place - table.begin()) + tableStart;
        bytes.push_back(static_cast<char>(byte));
    }
    return bytes;
}

std::string fromWindows1252(std::string_view bytes) {
    std::string utf8;
    for (const char c : bytes) {
        const char32_t byte = static_cast<unsigned char>(c);
        appendUtf8(utf8, isLatin1(byte) ? byte : table[byte - tableStart]);
    }
    return utf8;
}

}  // namespace kestrel::mklang
