// Values that the system keeps as 16-bit numbers.
// A larger one is a run-time error: the page that was told of it leaves its handler and shows what it showed.
#pragma once

#include <cstdint>
#include <limits>
#include <string>

#include "link/param_table.h"
#include "platform/errors.h"

namespace kestrel {

inline std::int16_t ToInt16(ParamValue value) {
    using Limits = std::numeric_limits<std::int16_t>;
    if (value < Limits::min() || value > Limits::max())
        throw RunTimeError(error_number::Overflow, std::to_string(value) + " does not fit into 16 bits");
    return static_cast<std::int16_t>(value);
}

}  // namespace kestrel
