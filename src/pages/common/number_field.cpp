// Text boxes for whole numbers of the master.
#include "pages/common/number_field.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "link/settings.h"
#include "platform/platform.h"

namespace kestrel {

namespace {

/// The number that a text stands for: blanks, a sign, digits, the system's decimal separator, more digits, blanks.
std::optional<double> numberIn(const std::string& text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return std::nullopt;
    const bool negative = text[first] == '-';
    const auto begin = negative || text[first] == '+' ? first + 1 : first;
    std::string digits = text.substr(begin, text.find_last_not_of(' ') + 1 - begin);

    const std::string separator = platform().decimalSeparator();
    const auto fraction = std::min(digits.find(separator), digits.size());
    if (fraction < digits.size())
        digits = digits.substr(0, fraction) + "." + digits.substr(fraction + separator.size());
    bool anyDigit = false;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        const bool isDigit = digits[i] >= '0' && digits[i] <= '9';
        if (!isDigit && i != fraction) return std::nullopt;
        anyDigit = anyDigit || isDigit;
    }
    if (!anyDigit) return std::nullopt;
    double number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return negative ? -number : number;
}

}  // namespace

void DesignNumber(TextBox& box, const NumberField& field, int typedAtMost) {
    box.maxLength = typedAtMost;
    box.takesNumbers(field.taken, field.highest);
}

std::optional<std::uint32_t> CommitNumber(TextBox& box, const NumberField& field) {
    const std::string typed = box.Text;
    const auto boardsOwn = static_cast<std::uint32_t>(ParamRead(field.setting));
    const std::optional<double> number = numberIn(typed.substr(0, field.taken));
    if (!numberIn(typed) || !number) {
        box.putBack(std::to_string(boardsOwn));
        box.tellRefused(typed);
        return std::nullopt;
    }
    const double whole = std::nearbyint(*number);
    const bool taken = whole >= 0 && whole <= field.highest;
    const std::uint32_t value = taken ? static_cast<std::uint32_t>(whole) : boardsOwn;
    box.Text = std::to_string(value);
    if (!taken) box.tellRefused(typed);
    return value;
}

}  // namespace kestrel
