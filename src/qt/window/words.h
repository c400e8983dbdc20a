// The words that the views and the frame window say of themselves; every other text comes from the pages.
// They stand in the language table too, so that they follow the language of the pages.
#pragma once

#include <QString>

namespace kestrel::qt {

/// In the order of their lines in the language files.
enum class Word {
    NextWindow,
    PreviousWindow,
    Cascade,
    Tile,
    CloseAll,
    SendLamp,
    ReceiveLamp,
    ErrorLamp,
    Yes,
    No,
    WaitingForTheBoard,
    On,
    Off,
    OutOfRange,
    NoTime,
    Pause,
    Fit,
    Follow,
    Paused,
    NoSamples,
    Chart,
    CloseWindow,
    NoDevice,
    NotReadYet,
    NotTaken,      ///< with %1 for what the user set and %2 for what the board has
    CopyNotTaken,  ///< with %1 for what the user set
};

/// The word in the active language; in English where the active language file has no such section or ends before it.
QString word(Word which);

/// A number that its control cannot show.
QString outOfRange(const QString& number);

}  // namespace kestrel::qt
