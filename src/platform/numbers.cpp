// Whole numbers that stand for decimal fractions.
#include "platform/numbers.h"

#include <cstdlib>

#include "platform/platform.h"

namespace kestrel {

namespace {

constexpr std::size_t LongestNumber = 15;

}  // namespace

std::string formatScaled(std::int64_t raw, int decimals) {
    std::string digits = std::to_string(std::llabs(raw));
    const auto fraction = static_cast<std::size_t>(decimals > 0 ? decimals : 0);
    if (digits.size() <= fraction) digits.insert(0, fraction + 1 - digits.size(), '0');
    if (fraction > 0) digits.insert(digits.size() - fraction, platform().decimalSeparator());
    return raw < 0 ? "-" + digits : digits;
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
