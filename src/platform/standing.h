// Where a control stands between its user and the board, and what can be wrong with what the user enters.
// The same on every page; views tell it by form, by colour and in words.
#pragma once

#include <string>

namespace kestrel {

enum class Standing {
    Confirmed,  ///< it shows what the board has, or stands for no value of a board
    Unread,     ///< it stands for a value that has not come since the page was opened
    Waiting,    ///< the user changed it, and the board has not answered
    NotTaken,   ///< the user's change or entry came to nothing
    Old,        ///< the line is interrupted, or the board silent: its value is from before
};

/// What became of a change that the board did not take, or of an entry that is no value of the control.
struct NotTaken {
    std::string wanted;         ///< what the user set, as the control shows it
    bool copyOnly = false;      ///< the board took it, but not its second copy of it
    bool isWrongEntry = false;  ///< it was never sent
};

/// What is wrong with a text that the user is entering.
enum class Objection {
    None,
    NoNumber,
    TooFine,     ///< more decimals than the value has
    OutOfRange,  ///< of the limits
    TooLong,     ///< the last figures will not count
};

/// What may be entered, as texts of the control's own scale; both empty where anything may.
struct EntryLimits {
    std::string lowest;
    std::string highest;
    std::string unit;  ///< of both, or empty
};

}  // namespace kestrel
