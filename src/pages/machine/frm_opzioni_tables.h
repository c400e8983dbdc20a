// The parameters of the options page. The boards keep almost every option twice: parameter and copy.
// Toggles are bits of five bytes; a change of one writes its whole byte.
#pragma once

#include <array>

#include "pages/common/number_field.h"
#include "pages/machine/frm_opzioni.h"

namespace kestrel::opzioni {

inline constexpr std::size_t SaleByte = 0;
inline constexpr std::size_t PaymentByte = 1;
inline constexpr std::size_t BrewingByte = 2;
inline constexpr std::size_t MachineByte = 3;
inline constexpr std::size_t SectorByte = 4;
inline constexpr std::array<Setting, FrmOpzioni::OptionBytes> ByteSettings = {
    master::SaleOptions, master::PaymentOptions, hot_drink::BrewingOptions, hot_drink::MachineOptions,
    sector::SectorOptions};

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
    Setting setting;
};
inline constexpr std::array<BarRow, FrmOpzioni::Bars> BarRows = {{
    {285, 180, master::OverpayTimeout},
    {291, 255, hot_drink::WashingDose},
    {292, 255, hot_drink::ProbeLowest},
    {293, 255, hot_drink::ProbeHighest},
}};

struct FieldRow {
    int line;
    int caption;  ///< index of its caption in Label6
    NumberField field;
};
inline constexpr std::array<FieldRow, FrmOpzioni::Fields> FieldRows = {{
    {286, 6, {master::MachineNumber, 6, 999999}},
    {287, 7, {master::MachineLocation, 5, 65535}},
    {284, 8, {master::TelephoneCode, 3, 999}},
    {296, 9, {master::MachineCustomer, 5, 65535}},
}};

struct RevisionRow {
    const char* caption;
    Setting revision;  ///< tenths
};
inline constexpr std::array<RevisionRow, FrmOpzioni::Boards> RevisionRows = {
    {{"Rev. master", master::FirmwareRevision},
     {"Rev. potenza", hot_drink::FirmwareRevision},
     {"Rev. cedar", sector::FirmwareRevision}}};
inline constexpr std::size_t PowerBoard = 1;  ///< of these rows

inline constexpr unsigned PaymentSystemBits = 7;  ///< of the payment byte: none or one of them is set
inline constexpr unsigned ExecutiveBit = 2;
inline constexpr unsigned MdbBit = 4;

inline constexpr ParamValue HasEightLanguages = 8;  ///< of the machine's state

}  // namespace kestrel::opzioni
