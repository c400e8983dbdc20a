// The parameters of the options page. The boards keep almost every option twice: parameter and shadow.
// Toggles are bits of five bytes; a change of one writes its whole byte.
#pragma once

#include <array>

#include "pages/common/number_field.h"
#include "pages/machine/frm_opzioni.h"

namespace kestrel::opzioni {

struct OwnSetting {
    int bank;
    int parameter;
    int shadow;
};

inline constexpr std::size_t SaleByte = 0;
inline constexpr std::size_t PaymentByte = 1;
inline constexpr std::size_t BrewingByte = 2;
inline constexpr std::size_t MachineByte = 3;
inline constexpr std::size_t SectorByte = 4;
inline constexpr std::array<OwnSetting, FrmOpzioni::OptionBytes> ByteSettings = {
    {{0, 84, 86}, {0, 85, 87}, {1, 1298, 1300}, {1, 1299, 1301}, {2, 59, 274}}};

struct ToggleRow {
    int index;
    int line;  ///< of its caption
    std::size_t byte;
    int bit;
};
inline constexpr std::array<ToggleRow, 15> ToggleRows = {{
    {0, 262, BrewingByte, 0},
    {1, 263, MachineByte, 1},
    {2, 264, BrewingByte, 2},
    {3, 265, BrewingByte, 3},
    {4, 266, BrewingByte, 4},
    {5, 267, MachineByte, 2},
    {8, 268, SectorByte, 3},
    {9, 269, SaleByte, 2},
    {10, 270, SaleByte, 1},
    {11, 271, SaleByte, 7},
    {12, 272, PaymentByte, 5},
    {13, 273, MachineByte, 0},
    {14, 274, SectorByte, 0},
    {21, 282, SectorByte, 1},
    {22, 283, SectorByte, 2},
}};
/// Masters of this revision keep the credit time-out themselves: the toggle then stands for a bit that is written and
/// never shown from the board.
inline constexpr int CreditTimeout = 8;
inline constexpr int RevisionWithCreditTimeout = 20;
inline constexpr ToggleRow CreditTimeoutOnMaster = {CreditTimeout, 268, SaleByte, 4};

struct BarRow {
    int line;
    int max;
    OwnSetting setting;
};
inline constexpr std::array<BarRow, FrmOpzioni::Bars> BarRows = {{
    {285, 180, {0, 354, 355}},
    {291, 255, {1, 1302, 1303}},
    {292, 255, {1, 1443, 1445}},
    {293, 255, {1, 1444, 1446}},
}};

inline constexpr OwnSetting DisplayLanguage = {0, 350, 351};
inline constexpr OwnSetting Decimals = {0, 359, 360};  ///< what the master makes of it is told by another parameter
inline constexpr OwnSetting CoolingKind = {1, 1153, 1158};

struct FieldRow {
    int line;
    int caption;  ///< index of its caption in Label6
    NumberField field;
};
inline constexpr std::array<FieldRow, FrmOpzioni::Fields> FieldRows = {{
    {286, 6, {356, 6, 999999}},
    {287, 7, {357, 5, 65535}},
    {284, 8, {358, 3, 999}},
    {296, 9, {361, 5, 65535}},
}};

struct RevisionRow {
    const char* caption;
    int bank;
    int parameter;  ///< tenths
};
inline constexpr std::array<RevisionRow, FrmOpzioni::Boards> RevisionRows = {
    {{"Rev. master", 0, 158}, {"Rev. potenza", 1, 1203}, {"Rev. cedar", 2, 283}}};
inline constexpr std::size_t PowerBoard = 1;  ///< of these rows

inline constexpr unsigned PaymentSystemBits = 7;  ///< of the payment byte: none or one of them is set
inline constexpr unsigned ExecutiveBit = 2;
inline constexpr unsigned MdbBit = 4;

inline constexpr int FeaturesParameter = 7;
inline constexpr ParamValue HasEightLanguages = 8;

}  // namespace kestrel::opzioni
