// Numbers with decimals as texts.
#include "platform/numbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "platform/platform.h"

namespace kestrel {

namespace {

constexpr std::size_t LongestNumber = 15;
constexpr std::array<double, 4> PowersOfTen = {1, 10, 100, 1000};
constexpr double Highest = 1e18;  ///< raw; what is beyond is no figure that a board sends

bool hasPattern(int decimals) { return decimals >= 0 && decimals < static_cast<int>(PowersOfTen.size()); }

}  // namespace

std::string formatScaled(std::int64_t raw, int decimals) {
    return formatScaled(raw, decimals, decimals > 0 ? platform().decimalSeparator() : std::string());
}

std::string formatScaled(std::int64_t raw, int decimals, const std::string& separator) {
    if (!hasPattern(decimals)) return {};
    std::string digits = std::to_string(std::llabs(raw));
    const auto fraction = static_cast<std::size_t>(decimals);
    if (digits.size() <= fraction) digits.insert(0, fraction + 1 - digits.size(), '0');
    if (fraction > 0) digits.insert(digits.size() - fraction, separator);
    return raw < 0 ? "-" + digits : digits;
}

std::string FormatDecimals(double value, int decimals) {
    if (!hasPattern(decimals)) return {};
    const double raw = value * PowersOfTen[static_cast<std::size_t>(decimals)];
    return std::abs(raw) < Highest ? formatScaled(std::llround(raw), decimals) : std::to_string(value);
}

std::string formatShort(double value) {
    int decimals = 0;
    for (const double power : PowersOfTen)
        if (std::abs(std::round(value * power) / power - value) > 1e-6) ++decimals;
    return FormatDecimals(value, std::min(decimals, static_cast<int>(PowersOfTen.size()) - 1));
}

std::optional<std::int64_t> parseScaled(const std::string& text, int decimals) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos || text.size() > LongestNumber) return std::nullopt;
    const std::string number = text.substr(first, text.find_last_not_of(' ') + 1 - first);
    const bool negative = number.front() == '-';
    std::int64_t raw = 0;
    int digits = 0;
    int fraction = -1;
    for (const char c : number.substr(negative || number.front() == '+' ? 1 : 0)) {
        if ((c == '.' || c == ',') && fraction < 0) {
            fraction = 0;
        } else if (c >= '0' && c <= '9') {
            raw = raw * 10 + (c - '0');
            ++digits;
            if (fraction >= 0) ++fraction;
        } else {
            return std::nullopt;
        }
    }
    if (digits == 0 || fraction > decimals) return std::nullopt;
    for (int i = fraction < 0 ? 0 : fraction; i < decimals; ++i) raw *= 10;
    return negative ? -raw : raw;
}

}  // namespace kestrel
