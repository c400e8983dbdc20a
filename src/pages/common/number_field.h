// Text boxes for whole numbers of the master: what is typed is tested, cut, limited, and put back where it is refused.
// Enter and leaving the box both commit.
#pragma once

#include <cstdint>
#include <optional>

#include "catalogue/setting.h"
#include "platform/basic_controls.h"

namespace kestrel {

struct NumberField {
    Setting setting;        ///< whose value stands in for a refused one
    std::size_t taken;      ///< so many leading characters of the text count; at most 9
    std::uint32_t highest;  ///< a number above, or below 0, gives the board's own value
};

/// The box takes the field's numbers alone, and up to so many characters.
void DesignNumber(TextBox& box, const NumberField& field, int typedAtMost);

/// Reads the box and puts into it what it now stands for. The value to be written; nothing where the text is no number.
/// A fraction is rounded, halves to the even number.
std::optional<std::uint32_t> CommitNumber(TextBox& box, const NumberField& field);

}  // namespace kestrel
