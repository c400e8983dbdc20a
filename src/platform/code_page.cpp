// The single-byte code page of the installation's text files.
#include "platform/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

namespace kestrel {

namespace {

constexpr char32_t Replacement = 0xFFFD;
constexpr unsigned FirstSpecial = 0x80;
constexpr const char* Utf8Mark = "\xEF\xBB\xBF";

/// Code page 1252 differs from Latin-1 in these 32 places.
constexpr std::array<char32_t, 32> Specials = {
    0x20AC, Replacement, 0x201A,      0x0192, 0x201E,      0x2026,      0x2020, 0x2021,      0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152,      Replacement, 0x017D, Replacement, Replacement, 0x2018, 0x2019,      0x201C, 0x201D, 0x2022,
    0x2013, 0x2014,      0x02DC,      0x2122, 0x0161,      0x203A,      0x0153, Replacement, 0x017E, 0x0178};

void append(std::string& utf8, char32_t code) {
    if (code < 0x80) {
        utf8 += static_cast<char>(code);
    } else if (code < 0x800) {
        utf8 += static_cast<char>(0xC0 | (code >> 6));
        utf8 += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        utf8 += static_cast<char>(0xE0 | (code >> 12));
        utf8 += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        utf8 += static_cast<char>(0x80 | (code & 0x3F));
    }
}

char toCodePage(char32_t code) {
    if (code < FirstSpecial || (code >= FirstSpecial + Specials.size() && code <= 0xFF)) return static_cast<char>(code);
    const auto* const found = std::find(Specials.begin(), Specials.end(), code);
    if (found == Specials.end() || code == Replacement) return '?';
    return static_cast<char>(FirstSpecial + static_cast<unsigned>(found - Specials.begin()));
}

/// Length of the sequence that starts with this byte; 1 for a byte that starts none.
int sequenceLength(std::uint8_t lead) {
    if (lead >= 0xF0) return 4;
    if (lead >= 0xE0) return 3;
    return lead >= 0xC0 ? 2 : 1;
}

}  // namespace

std::string textOfInstallation(const std::string& bytes) {
    if (bytes.starts_with(Utf8Mark)) return bytes.substr(3);
    std::string utf8;
    utf8.reserve(bytes.size() + bytes.size() / 8);
    for (const char c : bytes) {
        const auto byte = static_cast<std::uint8_t>(c);
        const bool special = byte >= FirstSpecial && byte < FirstSpecial + Specials.size();
        append(utf8, special ? Specials[byte - FirstSpecial] : byte);
    }
    return utf8;
}

std::string bytesForInstallation(const std::string& utf8) {
    std::string bytes;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<std::uint8_t>(utf8[i]);
        const int length = sequenceLength(lead);
        char32_t code = length == 1 ? lead : lead & (0x7FU >> length);
        for (int k = 1; k < length && i + static_cast<std::size_t>(k) < utf8.size(); ++k)
            code = (code << 6) | (static_cast<std::uint8_t>(utf8[i + static_cast<std::size_t>(k)]) & 0x3FU);
        bytes += toCodePage(code);
        i += static_cast<std::size_t>(length);
    }
    return bytes;
}

}  // namespace kestrel
