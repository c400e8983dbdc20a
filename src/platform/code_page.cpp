// The single-byte code page of the installation's text files: Latin-1 but for the bytes 80 to 9F, which a table holds.
#include "platform/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace kestrel {

namespace {

constexpr char32_t Replacement = 0xFFFD;
constexpr std::size_t FirstSpecial = 0x80;
constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

constexpr std::array<char32_t, 32> Specials = {
    0x20AC, Replacement, 0x201A,      0x0192, 0x201E,      0x2026,      0x2020, 0x2021,      0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152,      Replacement, 0x017D, Replacement, Replacement, 0x2018, 0x2019,      0x201C, 0x201D, 0x2022,
    0x2013, 0x2014,      0x02DC,      0x2122, 0x0161,      0x203A,      0x0153, Replacement, 0x017E, 0x0178};

bool isLatin1(char32_t code) { return code < FirstSpecial || (code >= FirstSpecial + Specials.size() && code <= 0xFF); }

void append(std::string& utf8, char32_t code) {
    const auto add = [&utf8](char32_t byte) { utf8 += static_cast<char>(byte); };
    if (code < 0x80) {
        add(code);
    } else if (code < 0x800) {
        add(0xC0 | code >> 6);
        add(0x80 | (code & 0x3F));
    } else {
        add(0xE0 | code >> 12);
        add(0x80 | (code >> 6 & 0x3F));
        add(0x80 | (code & 0x3F));
    }
}

/// Takes one character off the front of the text; nothing when the text does not begin with a valid sequence. The code
/// page has none of more than three bytes.
std::optional<char32_t> takeCharacter(std::string_view& utf8) {
    const auto lead = static_cast<std::uint8_t>(utf8.front());
    const std::size_t length = lead < 0x80 ? 1 : lead >> 5 == 0x06 ? 2 : lead >> 4 == 0x0E ? 3 : 0;
    if (length == 0 || utf8.size() < length) return std::nullopt;
    constexpr std::array<char32_t, 4> Smallest{0, 0, 0x80, 0x800};
    char32_t code = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<std::uint8_t>(utf8[i]);
        if (next >> 6 != 0x02) return std::nullopt;
        code = code << 6 | (next & 0x3FU);
    }
    if (code < Smallest[length]) return std::nullopt;
    utf8.remove_prefix(length);
    return code;
}

std::optional<char> byteOf(char32_t code) {
    if (isLatin1(code)) return static_cast<char>(code);
    const auto* const found = std::find(Specials.begin(), Specials.end(), code);
    if (found == Specials.end() || code == Replacement) return std::nullopt;
    return static_cast<char>(FirstSpecial + static_cast<std::size_t>(found - Specials.begin()));
}

}  // namespace

std::string textOfInstallation(std::string_view bytes) {
    if (bytes.starts_with(Utf8Mark)) return std::string(bytes.substr(Utf8Mark.size()));
    std::string utf8;
    utf8.reserve(bytes.size() + bytes.size() / 8);
    for (const char c : bytes) {
        const auto byte = static_cast<std::uint8_t>(c);
        append(utf8, isLatin1(byte) ? byte : Specials[byte - FirstSpecial]);
    }
    return utf8;
}

std::optional<std::string> bytesForInstallation(std::string_view utf8) {
    std::string bytes;
    while (!utf8.empty()) {
        const auto code = takeCharacter(utf8);
        const auto byte = code ? byteOf(*code) : std::nullopt;
        if (!byte) return std::nullopt;
        bytes += *byte;
    }
    return bytes;
}

}  // namespace kestrel
