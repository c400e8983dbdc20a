// Whole numbers that stand for decimal fractions, as texts in the user's way of writing.
// A raw number with d decimals is the number divided by 10 to the power of d.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kestrel {

/// "12.5" of 125 with 1 decimal, with the system's decimal separator.
std::string formatScaled(std::int64_t raw, int decimals);

/// The raw number of a typed text; blanks round it, either separator and fewer decimals are taken. Nothing where the
/// text is no number, has more decimals or is too long.
std::optional<std::int64_t> parseScaled(const std::string& text, int decimals);

}  // namespace kestrel
