// Where the fields and properties of a selection lie on the hot-drink board.
// Numbers here are the board's, worked out by hand; nothing is taken from the program's table.
#include "pages/beverage/recipe.h"

#include <gtest/gtest.h>

#include <set>

#include "support/world.h"

namespace kestrel {
namespace {

using testing::World;

TEST(Recipe, EveryParameterOfTheBlocksIsOneFieldOfOneSelection) {
    std::set<int> seen;
    for (int selection = 0; selection < 32; ++selection)
        for (int step = 0; step < RecipeSteps; ++step)
            for (int field = 0; field < RecipeFields; ++field) {
                const int n = RecipeParameter(selection, step, field);
                EXPECT_TRUE(seen.insert(n).second) << n;
                const auto place = RecipePlaceOf(n, selection);
                ASSERT_TRUE(place.has_value());
                EXPECT_EQ(place->step, step);
                EXPECT_EQ(place->field, field);
            }
    EXPECT_EQ(*seen.begin(), 7);
    EXPECT_EQ(*seen.rbegin(), 1062);
    EXPECT_EQ(seen.size(), 1056U);
}

TEST(Recipe, PowderTimesLieBeforePowderDelays) {
    struct Case {
        int selection, step, field, parameter;
    };
    const Case cases[] = {
        {0, 0, 5, 487}, {0, 0, 6, 775},  {0, 0, 7, 583},   {0, 0, 8, 871},  {0, 0, 9, 679},  {0, 0, 10, 967},
        {0, 2, 5, 551}, {0, 1, 6, 807},  {0, 2, 10, 1031}, {9, 0, 0, 16},   {9, 1, 0, 48},   {17, 2, 0, 88},
        {3, 1, 1, 138}, {17, 1, 4, 440}, {12, 2, 7, 659},  {31, 2, 9, 774}, {31, 1, 8, 934}, {31, 2, 10, 1062},
    };
    for (const Case& each : cases)
        EXPECT_EQ(RecipeParameter(each.selection, each.step, each.field), each.parameter) << each.parameter;
}

TEST(Recipe, AParameterOfAnotherSelectionIsNoFieldOfThisOne) {
    for (const int n : {6, 8, 38, 40, 1061, 1063, 1095, 1154}) EXPECT_FALSE(RecipePlaceOf(n, 0)) << n;
    EXPECT_TRUE(RecipePlaceOf(8, 1));
}

struct MaskCase {
    Mask mask;
    int first;
    int shadow;
    bool writesTheLastTwo;  ///< selections 30 and 31
};
constexpr MaskCase MaskCases[] = {
    {IncludedMask, 1071, 1075, false}, {CupMask, 1063, 1067, false},   {JugMask, 1087, 1091, false},
    {Step2Mask, 1127, 1135, false},    {Step3Mask, 1131, 1139, false}, {ColdMask, 1079, 1083, false},
    {FreeMask, 1455, 1459, true},
};

TEST(SelectionMasks, AChangeKeepsTheBitsOfTheOtherSelections) {
    struct Case {
        int selection;
        bool on;
        int byte;
        unsigned before, after;
    };
    const Case cases[] = {{0, true, 0, 0x00, 0x01},   {7, true, 0, 0x55, 0xD5},  {7, false, 0, 0xFF, 0x7F},
                          {8, true, 1, 0x80, 0x81},   {8, false, 1, 0xFF, 0xFE}, {17, true, 2, 0x01, 0x03},
                          {17, false, 2, 0xFF, 0xFD}, {29, true, 3, 0x00, 0x20}};
    World world;
    for (const MaskCase& mask : MaskCases)
        for (const Case& each : cases) {
            SelectionMasks masks;
            const auto place = SelectionMasks::placeOf(mask.first + each.byte);
            ASSERT_TRUE(place.has_value());
            EXPECT_EQ(place->mask, mask.mask);
            EXPECT_TRUE(place->holds(each.selection));
            masks.store(*place, each.before);
            masks.change(mask.mask, each.selection, each.on);
            EXPECT_EQ(masks.bit(mask.mask, each.selection), each.on);
            EXPECT_EQ(CurrentBank, 1);
            EXPECT_EQ(ParamRead(mask.first + each.byte, 1), each.after) << mask.first << " " << each.selection;
            EXPECT_EQ(ParamRead(mask.shadow + each.byte, 1), each.after) << mask.shadow << " " << each.selection;
        }
}

TEST(SelectionMasks, TheLastTwoSelectionsAreWrittenInOneMaskAlone) {
    for (const MaskCase& mask : MaskCases)
        for (const int selection : {30, 31}) {
            World world;
            SelectionMasks masks;
            masks.change(mask.mask, selection, true);
            const bool written = (ParamFlags(1, mask.first + 3) & flag::WriteDue) != 0;
            EXPECT_EQ(written, mask.writesTheLastTwo) << mask.first << " " << selection;
        }
}

TEST(SelectionMasks, ShadowsAreNeverRead) {
    for (const int n : {1067, 1075, 1083, 1091, 1094, 1095, 1126, 1135, 1142, 1454, 1459})
        EXPECT_FALSE(SelectionMasks::placeOf(n)) << n;
}

}  // namespace
}  // namespace kestrel
