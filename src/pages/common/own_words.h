// What the pages say of themselves, beside the captions that the boards' language files have.
// These words stand in the language table too, so that they follow the language.
#pragma once

#include <string>

namespace kestrel {

/// In the order of their lines in the language files.
enum class Own {
    Inputs,
    Outputs,
    LockedOutputs,
    Chosen,           ///< the caption of a button follows
    CheckAfterwards,  ///< the title of a page follows
    Sum,
    TimeAxis,
    ChartReading,
    HowLongAgo,
    Today,
    Yesterday,
    DaysAgo,  ///< with %1, as the next three
    WeeksAgo,
    MonthsAgo,
    YearsAgo,
    Copy,
    ShowCode,
    Valves,
    ColdPairing,
    ColdPairingOf,
    CreditLimits,
    NoYes,
    LaneValve,
    LaneMixer,
    LanePowder1,
    LanePowder2,
    LanePowder3,
    FirstBrewer,
    SecondBrewer,
    PlusNine,
    FreeBeverage,
    Hours,
    Minutes,
    DayOfMonth,
    Month,
    Year,
    PowerBoardRevision,
    ClosePage,
    NoAnswer,
};

/// The word in the active language; in English where the active language file has no such words.
std::string OwnWord(Own which);

}  // namespace kestrel
