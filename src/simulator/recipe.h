// How the hot-drink board keeps the recipes of its selections, and how long one takes to dispense.
// A recipe has three steps of eleven fields; a field of a step is a run of parameters, one a selection.
#pragma once

#include <array>

#include "simulator/world.h"

namespace kestrel::simulator {

inline constexpr int stepCount = 3;
inline constexpr int powderCount = 3;  // powder solenoids of a step

struct PowderDose {
    std::uint32_t time = 0;  // tenths of a second, as all times here
    std::uint32_t delay = 0;
};

struct RecipeStep {
    std::uint32_t valve = 0;  // 0: the recipe ends before this step; in the first step 5 and 6 are the brewers
    std::uint32_t time = 0;
    std::uint32_t delay = 0;
    std::uint32_t mixerTime = 0;
    std::uint32_t mixerDelay = 0;
    std::array<PowderDose, powderCount> powders{};
};
using Recipe = std::array<RecipeStep, stepCount>;

inline constexpr std::uint32_t firstBrewer = 5;
inline constexpr std::uint32_t secondBrewer = 6;

// `selection` is 0 to 17.
Recipe readRecipe(const World& world, int selection);
void writeRecipe(World& world, int selection, const Recipe& recipe);

// How long step `step` (0 to 2) runs, in tenths; 0 when it does not run.
std::uint32_t stepTime(const World& world, const Recipe& recipe, int step, bool withPowders);

}  // namespace kestrel::simulator
