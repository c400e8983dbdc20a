// Numbers with decimals as texts in the user's way of writing: what bars, labels, charts and displays show.
// A raw number with d decimals is the number divided by 10 to the power of d.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kestrel {

inline constexpr int MostDecimals = 3;

/// "12.5" of 125 with 1 decimal, with the system's decimal separator; 0 to 3 decimals, any other number of them gives
/// no text.
std::string formatScaled(std::int64_t raw, int decimals);
/// The same with a separator of the caller's own.
std::string formatScaled(std::int64_t raw, int decimals, const std::string& separator);

/// The same of a number as it is. Halves go away from zero.
std::string FormatDecimals(double value, int decimals);

/// A number with as many decimals as it needs, 3 at most.
std::string formatShort(double value);

/// The raw number of a typed text; blanks round it, either separator and fewer decimals are taken. Nothing where the
/// text is no number, has more decimals or is too long.
std::optional<std::int64_t> parseScaled(const std::string& text, int decimals);

}  // namespace kestrel
