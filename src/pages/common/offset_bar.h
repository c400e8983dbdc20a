// Bars for unsigned 16-bit amounts: a bar is signed, so its value is the raw amount minus 32768.
// What is shown and written is the raw amount.
#pragma once

#include "link/param_table.h"
#include "platform/basic_controls.h"

namespace kestrel {

inline constexpr int BarOffset = 32768;

/// Range -32768 to 32767, the large step given, text in raw amounts.
void DesignOffsetBar(ScrollBar& bar, int largeStep = 100);
/// Bar to the raw amount, kept inside its limits; the raw amount at which it then stands.
ParamValue SetOffsetBar(ScrollBar& bar, ParamValue raw);
/// The raw amount at which the bar stands.
constexpr unsigned RawOfBar(int barValue) { return static_cast<unsigned>(barValue + BarOffset); }

}  // namespace kestrel
