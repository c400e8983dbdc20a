// The parameters of the machine configuration page, all on the hot-drink board but for its presence word.
// The board keeps each setting twice.
#pragma once

#include <array>

#include "catalogue/parameters.h"
#include "pages/machine/frm_con_mac.h"

namespace kestrel::conmac {

struct CountRow {
    int line;  ///< of the caption
    Setting setting;
    int highestShown;  ///< a count above is shown as this
};
inline constexpr int ValveSlider = 0;
inline constexpr int MixerSlider = 1;
inline constexpr int PowderSlider = 2;
inline constexpr std::array<CountRow, FrmConMac::Counts> CountRows = {
    {{54, hot_drink::MachineValves, 4}, {55, hot_drink::MachineMixers, 3}, {56, hot_drink::MachinePowders, 5}}};
constexpr const CountRow& countRow(int slider) { return CountRows[static_cast<std::size_t>(slider)]; }

struct ValveGroupRow {
    int line;               ///< of the frame's caption
    SettingRange settings;  ///< of all valves, of which the page shows the first ones
    int max;
    bool tenths;
};
inline constexpr std::array<ValveGroupRow, FrmConMac::ValveGroups> ValveGroupRows = {{
    {59, hot_drink::ValvePowder1, 5, false},
    {60, hot_drink::ValvePowder2, 5, false},
    {61, hot_drink::ValvePowder3, 5, false},
    {62, hot_drink::ValveDripTime, 255, true},
}};
inline constexpr std::size_t PowderGroups = 3;  ///< the first ones of these choose a powder

inline constexpr int WithColdPairing = 1;  ///< the kind of cooling unit that has one
inline constexpr int HighestSugarBox = 5;
inline constexpr int HighestColdPairing = 3;

}  // namespace kestrel::conmac
