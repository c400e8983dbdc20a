// The recipe parameters.
// The blocks do not lie in the order of the fields: all powder times come before all powder delays.
#include "simulator/recipe.h"

#include <algorithm>

namespace kestrel::simulator {
namespace {

constexpr int blockLength = 32;

// Number of a field's block in the first step; the blocks of steps two and three follow it.
constexpr int valveBlock = 0;
constexpr int timeBlock = 3;
constexpr int delayBlock = 6;
constexpr int mixerTimeBlock = 9;
constexpr int mixerDelayBlock = 12;
constexpr std::array<int, powderCount> powderTimeBlocks{15, 18, 21};
constexpr std::array<int, powderCount> powderDelayBlocks{24, 27, 30};

// Calls `use` with every field of the step and the parameter that holds it.
template <typename Step, typename Use>
void forEachField(int selection, int step, Step& fields, Use use) {
    const auto parameter = [&](int block) { return hot_drink::recipe + selection + blockLength * (block + step); };
    use(parameter(valveBlock), fields.valve);
    use(parameter(timeBlock), fields.time);
    use(parameter(delayBlock), fields.delay);
    use(parameter(mixerTimeBlock), fields.mixerTime);
    use(parameter(mixerDelayBlock), fields.mixerDelay);
    for (std::size_t p = 0; p < powderCount; ++p) {
        use(parameter(powderTimeBlocks[p]), fields.powders[p].time);
        use(parameter(powderDelayBlocks[p]), fields.powders[p].delay);
    }
}

}  // namespace

Recipe readRecipe(const World& world, int selection) {
    Recipe recipe;
    for (int step = 0; step < stepCount; ++step) {
        forEachField(selection, step, recipe[static_cast<std::size_t>(step)],
                     [&](int parameter, std::uint32_t& field) { field = world.get(Board::HotDrink, parameter); });
    }
    return recipe;
}

void writeRecipe(World& world, int selection, const Recipe& recipe) {
    for (int step = 0; step < stepCount; ++step) {
        forEachField(selection, step, recipe[static_cast<std::size_t>(step)],
                     [&](int parameter, std::uint32_t field) { world.set(Board::HotDrink, parameter, field); });
    }
}

std::uint32_t stepTime(const World& world, const Recipe& recipe, int step, bool withPowders) {
    for (int earlier = 0; earlier <= step; ++earlier) {
        if (recipe[static_cast<std::size_t>(earlier)].valve == 0) return 0;
    }
    const RecipeStep& fields = recipe[static_cast<std::size_t>(step)];
    if (step == 0 && fields.valve == firstBrewer)
        return fields.time + world.get(Board::HotDrink, hot_drink::coffeeInfusion);
    if (step == 0 && fields.valve == secondBrewer)
        return fields.time + world.get(Board::HotDrink, hot_drink::teaInfusion);
    std::uint32_t longest = fields.delay + fields.time;
    if (!withPowders) return longest;
    longest = std::max(longest, fields.mixerDelay + fields.mixerTime);
    for (const PowderDose& powder : fields.powders) longest = std::max(longest, powder.delay + powder.time);
    return longest;
}

}  // namespace kestrel::simulator
