// Lamps that stand for bits of a parameter, as runs of consecutive bits on consecutive lamps.
// Inputs of the boards are active low, so that their lamps are lit by clear bits; outputs are lit by set bits.
#pragma once

#include <span>

#include "link/settings.h"
#include "pages/common/bits.h"
#include "platform/displays.h"

namespace kestrel {

/// Bit firstBit + i of the parameter belongs to lamp firstLamp + i, for i from 0 to count - 1.
struct LampRun {
    Setting setting;
    int firstBit;
    int count;
    int firstLamp;
};

enum class LitBy { SetBits, ClearBits };

/// Writes every lamp that belongs to parameter n; a parameter of no run is passed over.
template <std::size_t N>
void ShowLamps(ControlArray<Led, N>& lamps, std::span<const LampRun> runs, LitBy litBy, int n, ParamValue value) {
    for (const LampRun& run : runs) {
        if (!Arrived(n, run.setting)) continue;
        for (int i = 0; i < run.count; ++i)
            lamps[run.firstLamp + i].Active = HasBit(value, run.firstBit + i) == (litBy == LitBy::SetBits);
    }
}

}  // namespace kestrel
