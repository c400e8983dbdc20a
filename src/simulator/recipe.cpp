// The recipe parameters.
#include "simulator/recipe.h"

#include <algorithm>

namespace kestrel::simulator {
namespace {

// Where the fields of a step are kept, one parameter a selection.
struct StepSettings {
    SettingRange valve, time, delay, mixerTime, mixerDelay;
    std::array<SettingRange, powderCount> powderTime, powderDelay;
};
constexpr std::array<StepSettings, stepCount> steps{{
    {hot_drink::Step1Valve,
     hot_drink::Step1ValveTime,
     hot_drink::Step1ValveDelay,
     hot_drink::Step1MixerTime,
     hot_drink::Step1MixerDelay,
     {hot_drink::Step1Powder1Time, hot_drink::Step1Powder2Time, hot_drink::Step1Powder3Time},
     {hot_drink::Step1Powder1Delay, hot_drink::Step1Powder2Delay, hot_drink::Step1Powder3Delay}},
    {hot_drink::Step2Valve,
     hot_drink::Step2ValveTime,
     hot_drink::Step2ValveDelay,
     hot_drink::Step2MixerTime,
     hot_drink::Step2MixerDelay,
     {hot_drink::Step2Powder1Time, hot_drink::Step2Powder2Time, hot_drink::Step2Powder3Time},
     {hot_drink::Step2Powder1Delay, hot_drink::Step2Powder2Delay, hot_drink::Step2Powder3Delay}},
    {hot_drink::Step3Valve,
     hot_drink::Step3ValveTime,
     hot_drink::Step3ValveDelay,
     hot_drink::Step3MixerTime,
     hot_drink::Step3MixerDelay,
     {hot_drink::Step3Powder1Time, hot_drink::Step3Powder2Time, hot_drink::Step3Powder3Time},
     {hot_drink::Step3Powder1Delay, hot_drink::Step3Powder2Delay, hot_drink::Step3Powder3Delay}},
}};

// Calls `use` with every field of the step and the parameter that holds it.
template <typename Step, typename Use>
void forEachField(int selection, int step, Step& fields, Use use) {
    const StepSettings& kept = steps[static_cast<std::size_t>(step)];
    use(kept.valve[selection], fields.valve);
    use(kept.time[selection], fields.time);
    use(kept.delay[selection], fields.delay);
    use(kept.mixerTime[selection], fields.mixerTime);
    use(kept.mixerDelay[selection], fields.mixerDelay);
    for (std::size_t p = 0; p < powderCount; ++p) {
        use(kept.powderTime[p][selection], fields.powders[p].time);
        use(kept.powderDelay[p][selection], fields.powders[p].delay);
    }
}

}  // namespace

Recipe readRecipe(const World& world, int selection) {
    Recipe recipe;
    for (int step = 0; step < stepCount; ++step) {
        forEachField(selection, step, recipe[static_cast<std::size_t>(step)],
                     [&](const Setting& parameter, std::uint32_t& field) { field = world.get(parameter); });
    }
    return recipe;
}

void writeRecipe(World& world, int selection, const Recipe& recipe) {
    for (int step = 0; step < stepCount; ++step) {
        forEachField(selection, step, recipe[static_cast<std::size_t>(step)],
                     [&](const Setting& parameter, std::uint32_t field) { world.set(parameter, field); });
    }
}

std::uint32_t stepTime(const World& world, const Recipe& recipe, int step, bool withPowders) {
    for (int earlier = 0; earlier <= step; ++earlier) {
        if (recipe[static_cast<std::size_t>(earlier)].valve == 0) return 0;
    }
    const RecipeStep& fields = recipe[static_cast<std::size_t>(step)];
    if (step == 0 && fields.valve == firstBrewer) return fields.time + world.get(hot_drink::TimeCoffeeInfusion);
    if (step == 0 && fields.valve == secondBrewer) return fields.time + world.get(hot_drink::TimeTeaInfusion);
    std::uint32_t longest = fields.delay + fields.time;
    if (!withPowders) return longest;
    longest = std::max(longest, fields.mixerDelay + fields.mixerTime);
    for (const PowderDose& powder : fields.powders) longest = std::max(longest, powder.delay + powder.time);
    return longest;
}

}  // namespace kestrel::simulator
