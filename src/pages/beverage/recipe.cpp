// What a beverage is on the hot-drink board.
#include "pages/beverage/recipe.h"

namespace kestrel {

namespace {

/// Each field in steps 1, 2, 3: a parameter for each selection.
constexpr std::array<std::array<SettingRange, RecipeSteps>, RecipeFields> Fields = {{
    {hot_drink::Step1Valve, hot_drink::Step2Valve, hot_drink::Step3Valve},
    {hot_drink::Step1ValveTime, hot_drink::Step2ValveTime, hot_drink::Step3ValveTime},
    {hot_drink::Step1ValveDelay, hot_drink::Step2ValveDelay, hot_drink::Step3ValveDelay},
    {hot_drink::Step1MixerTime, hot_drink::Step2MixerTime, hot_drink::Step3MixerTime},
    {hot_drink::Step1MixerDelay, hot_drink::Step2MixerDelay, hot_drink::Step3MixerDelay},
    {hot_drink::Step1Powder1Time, hot_drink::Step2Powder1Time, hot_drink::Step3Powder1Time},
    {hot_drink::Step1Powder1Delay, hot_drink::Step2Powder1Delay, hot_drink::Step3Powder1Delay},
    {hot_drink::Step1Powder2Time, hot_drink::Step2Powder2Time, hot_drink::Step3Powder2Time},
    {hot_drink::Step1Powder2Delay, hot_drink::Step2Powder2Delay, hot_drink::Step3Powder2Delay},
    {hot_drink::Step1Powder3Time, hot_drink::Step2Powder3Time, hot_drink::Step3Powder3Time},
    {hot_drink::Step1Powder3Delay, hot_drink::Step2Powder3Delay, hot_drink::Step3Powder3Delay},
}};
/// In this order they are subscribed, which is that of their numbers: all powder times before all powder delays.
constexpr std::array<int, RecipeFields> SubscribedFields = {0, 1, 2, 3, 4, 5, 7, 9, 6, 8, 10};

struct MaskRow {
    SettingRange bytes;
    int lastWritten;  ///< highest selection whose bit is ever written
};
constexpr std::array<MaskRow, Masks> MaskRows = {{
    {hot_drink::MaskIncluded, 29},
    {hot_drink::MaskCup, 29},
    {hot_drink::MaskJug, 29},
    {hot_drink::MaskStep2, 29},
    {hot_drink::MaskStep3, 29},
    {hot_drink::MaskCold, 29},
    {hot_drink::MaskFree, 31},
}};

const MaskRow& rowOf(Mask mask) { return MaskRows[static_cast<std::size_t>(mask)]; }

constexpr int BitsOfByte = 8;

constexpr std::array<ParamRun, 8> BeforeTheRecipe = {{
    hot_drink::MachineValves,
    hot_drink::CoolingKind,
    hot_drink::MaskIncluded,
    hot_drink::MaskJug,
    hot_drink::MaskCold,
    hot_drink::MaskCup,
    hot_drink::MaskStep2,
    hot_drink::MaskStep3,
}};
/// Nothing is taken from any of these but the free selections.
constexpr std::array<ParamRun, 6> BehindTheRecipe = {{
    hot_drink::BrewingOptions,
    hot_drink::MaskFree,
    CopyOf(hot_drink::MaskCold),
    CopyOf(hot_drink::MaskCup),
    CopyOf(hot_drink::MaskStep2),
    CopyOf(hot_drink::MaskStep3),
}};

}  // namespace

Setting RecipeSetting(int selection, int step, int field) {
    return Fields[static_cast<std::size_t>(field)][static_cast<std::size_t>(step)][selection];
}

std::optional<RecipePlace> RecipePlaceOf(int parameter, int selection) {
    for (int field = 0; field < RecipeFields; ++field)
        for (int step = 0; step < RecipeSteps; ++step)
            if (RecipeSetting(selection, step, field).number == parameter) return RecipePlace{step, field};
    return std::nullopt;
}

std::optional<SelectionMasks::Place> SelectionMasks::placeOf(int parameter) {
    for (int mask = 0; mask < Masks; ++mask) {
        const int byte = rowOf(static_cast<Mask>(mask)).bytes.indexOf(parameter);
        if (byte >= 0) return Place{static_cast<Mask>(mask), byte};
    }
    return std::nullopt;
}

void SelectionMasks::store(Place place, ParamValue value) {
    bytes_[static_cast<std::size_t>(place.mask)][static_cast<std::size_t>(place.byte)] =
        static_cast<std::uint8_t>(value);
}

bool SelectionMasks::bit(Mask mask, int selection) const {
    const auto byte = static_cast<std::size_t>(selection / BitsOfByte);
    return (bytes_[static_cast<std::size_t>(mask)][byte] >> (selection % BitsOfByte)) & 1;
}

void SelectionMasks::change(Mask mask, int selection, bool on) {
    const MaskRow& row = rowOf(mask);
    if (selection > row.lastWritten) return;
    const int byte = selection / BitsOfByte;
    std::uint8_t& stored = bytes_[static_cast<std::size_t>(mask)][static_cast<std::size_t>(byte)];
    const unsigned bit = 1U << (selection % BitsOfByte);
    stored = static_cast<std::uint8_t>(on ? stored | bit : stored & ~bit);
    WriteTwice(row.bytes[byte], stored);
}

void EachParameterOfSelection(int selection, void (*subscribe)(const ParamRun&)) {
    for (const ParamRun& run : BeforeTheRecipe) subscribe(run);
    for (const int field : SubscribedFields)
        for (int step = 0; step < RecipeSteps; ++step) subscribe(RecipeSetting(selection, step, field));
    subscribe(hot_drink::JugPortions[selection]);
    for (const ParamRun& run : BehindTheRecipe) subscribe(run);
}

}  // namespace kestrel
