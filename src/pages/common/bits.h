// Single bits of parameters that carry several settings.
// A page changes its own bits and keeps the others as the board sent them.
#pragma once

#include "link/param_table.h"

namespace kestrel {

/// `bit` counts from 0.
constexpr bool HasBit(ParamValue value, int bit) { return ((value >> bit) & 1) != 0; }

constexpr unsigned WithBits(unsigned value, unsigned mask, bool on) { return on ? value | mask : value & ~mask; }

/// Position of a two-position switch that shows these bits.
constexpr int PositionOf(unsigned value, unsigned mask) { return (value & mask) != 0 ? 1 : 0; }

}  // namespace kestrel
