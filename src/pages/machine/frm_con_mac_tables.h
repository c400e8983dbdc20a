// The parameters of the machine configuration page, all on the hot-drink board but for its presence word.
// The board keeps each setting twice: parameter and shadow.
#pragma once

#include <array>

#include "pages/machine/frm_con_mac.h"

namespace kestrel::conmac {

inline constexpr int Bank = 1;

struct CountRow {
    int line;  ///< of the caption
    int parameter;
    int shadow;
    int highestShown;  ///< a count above is shown as this
};
inline constexpr int ValveSlider = 0;
inline constexpr int MixerSlider = 1;
inline constexpr int PowderSlider = 2;
inline constexpr std::array<CountRow, FrmConMac::Counts> CountRows = {
    {{54, 1154, 1159, 4}, {55, 1155, 1160, 3}, {56, 1156, 1161, 5}}};
constexpr const CountRow& countRow(int slider) { return CountRows[static_cast<std::size_t>(slider)]; }

/// Settings of which there are several: parameter and shadow of the first one, the others follow.
struct Series {
    int parameter;
    int shadow;
    constexpr bool has(int n, int count) const { return n >= parameter && n < parameter + count; }
};
inline constexpr Series SugarBoxes = {1157, 1162};
inline constexpr Series Mixers = {1304, 1337};
inline constexpr Series DoubleProducts = {1329, 1362};
inline constexpr Series ColdPairings = {1334, 1367};

struct ValveGroupRow {
    int line;  ///< of the frame's caption
    Series series;
    int max;
    bool tenths;
};
inline constexpr std::array<ValveGroupRow, FrmConMac::ValveGroups> ValveGroupRows = {{
    {59, {1309, 1342}, 5, false},
    {60, {1314, 1347}, 5, false},
    {61, {1319, 1352}, 5, false},
    {62, {1324, 1357}, 255, true},
}};
inline constexpr std::size_t PowderGroups = 3;  ///< the first ones of these choose a powder

inline constexpr int CoolingKind = 1153;
inline constexpr int WithColdPairing = 1;  ///< the kind of cooling unit that has one
inline constexpr int HighestSugarBox = 5;
inline constexpr int HighestColdPairing = 3;

}  // namespace kestrel::conmac
