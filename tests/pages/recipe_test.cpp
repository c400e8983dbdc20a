// Where the properties of a selection lie on the hot-drink board.
// Numbers here are the board's, worked out by hand; nothing is taken from the program's table.
#include "pages/beverage/recipe.h"

#include <gtest/gtest.h>

#include "support/bare_mirror.h"

namespace kestrel::testing {
namespace {

TEST(SelectionMasks, AChangeKeepsTheOtherBitsAndTheLastTwoSelectionsAreChangedInOneMaskAlone) {
    struct {
        Mask mask;
        int first, shadow, lastSelection;
    } const masks[] = {{IncludedMask, 1071, 1075, 29}, {CupMask, 1063, 1067, 29},   {JugMask, 1087, 1091, 29},
                       {Step2Mask, 1127, 1135, 29},    {Step3Mask, 1131, 1139, 29}, {ColdMask, 1079, 1083, 29},
                       {FreeMask, 1455, 1459, 31}};
    struct {
        int selection, byte;
        unsigned before;
        bool on;
        unsigned after;
    } const changes[] = {{0, 0, 0x00, true, 0x01},   {7, 0, 0xFF, false, 0x7F}, {8, 1, 0x80, true, 0x81},
                         {17, 2, 0xFF, false, 0xFD}, {29, 3, 0x04, true, 0x24}, {30, 3, 0x80, true, 0xC0},
                         {31, 3, 0xFF, false, 0x7F}};
    for (const auto& row : masks) {
        BareMirror mirror;
        for (const auto& change : changes) {
            SelectionMasks bytes;
            for (const int n : {row.first + change.byte, row.shadow + change.byte}) ParamFlags(1, n) = 0;
            const auto place = SelectionMasks::placeOf(row.first + change.byte);
            ASSERT_TRUE(place && place->mask == row.mask && place->holds(change.selection));
            bytes.store(*place, change.before);
            bytes.change(row.mask, change.selection, change.on);
            const bool taken = change.selection <= row.lastSelection;
            EXPECT_EQ(bytes.bit(row.mask, change.selection), change.on == taken);
            for (const int n : {row.first + change.byte, row.shadow + change.byte}) {
                EXPECT_EQ((ParamFlags(1, n) & flag::WriteDue) != 0, taken) << n;
                EXPECT_TRUE(!taken || ParamRead(n, 1) == change.after) << n;
            }
        }
    }
    for (const int n : {1067, 1075, 1083, 1091, 1094, 1095, 1126, 1135, 1142, 1454, 1459})
        EXPECT_FALSE(SelectionMasks::placeOf(n)) << n << " is a shadow or no mask at all";
}

}  // namespace
}  // namespace kestrel::testing
