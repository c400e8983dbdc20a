// What a beverage is on the hot-drink board.
#include "pages/beverage/recipe.h"

namespace kestrel {

namespace {

constexpr int FirstRecipeParameter = 7;
constexpr int SelectionsOfBlock = 32;  ///< that the board's tables are laid out for
constexpr int Blocks = RecipeSteps * RecipeFields;

/// The block of each field in steps 1, 2, 3. All powder times lie before all powder delays.
constexpr std::array<std::array<int, RecipeSteps>, RecipeFields> BlockOf = {{
    {0, 1, 2},
    {3, 4, 5},
    {6, 7, 8},
    {9, 10, 11},
    {12, 13, 14},
    {15, 16, 17},
    {24, 25, 26},
    {18, 19, 20},
    {27, 28, 29},
    {21, 22, 23},
    {30, 31, 32},
}};

struct MaskRow {
    int first;        ///< of four parameters
    int shadow;       ///< of as many
    int lastWritten;  ///< highest selection whose bit is ever written
};
constexpr std::array<MaskRow, Masks> MaskRows = {{
    {1071, 1075, 29},
    {1063, 1067, 29},
    {1087, 1091, 29},
    {1127, 1135, 29},
    {1131, 1139, 29},
    {1079, 1083, 29},
    {1455, 1459, 31},
}};

const MaskRow& rowOf(Mask mask) { return MaskRows[static_cast<std::size_t>(mask)]; }

constexpr int BitsOfByte = 8;
constexpr int BytesOfMask = 4;

constexpr std::array<ParamRun, 8> BeforeTheRecipe = {{
    {1, EventMaxParameter},
    {1, ColdModeParameter},
    {1, 1071, 1074},
    {1, 1087, 1090},
    {1, 1079, 1082},
    {1, 1063, 1066},
    {1, 1127, 1130},
    {1, 1131, 1134},
}};
/// Nothing is taken from any of these but 1455 to 1458.
constexpr std::array<ParamRun, 5> BehindTheRecipe = {{
    {1, 1298},
    {1, 1455, 1458},
    {1, 1083, 1086},
    {1, 1067, 1070},
    {1, 1135, 1142},
}};

}  // namespace

int RecipeParameter(int selection, int step, int field) {
    const int block = BlockOf[static_cast<std::size_t>(field)][static_cast<std::size_t>(step)];
    return selection + FirstRecipeParameter + SelectionsOfBlock * block;
}

std::optional<RecipePlace> RecipePlaceOf(int parameter, int selection) {
    for (int field = 0; field < RecipeFields; ++field)
        for (int step = 0; step < RecipeSteps; ++step)
            if (RecipeParameter(selection, step, field) == parameter) return RecipePlace{step, field};
    return std::nullopt;
}

std::optional<SelectionMasks::Place> SelectionMasks::placeOf(int parameter) {
    for (int mask = 0; mask < Masks; ++mask) {
        const int byte = parameter - rowOf(static_cast<Mask>(mask)).first;
        if (byte >= 0 && byte < BytesOfMask) return Place{static_cast<Mask>(mask), byte};
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
    WriteTwice(1, row.first + byte, row.shadow + byte, stored);
}

void EachParameterOfSelection(int selection, void (*subscribe)(std::span<const ParamRun>)) {
    const auto single = [subscribe](int n) {
        const ParamRun run(1, n);
        subscribe({&run, 1});
    };
    subscribe(BeforeTheRecipe);
    for (int block = 0; block < Blocks; ++block) single(selection + FirstRecipeParameter + SelectionsOfBlock * block);
    single(JugCountParameter + selection);
    subscribe(BehindTheRecipe);
}

}  // namespace kestrel
