// The words that the views and the frame window say of themselves; every other text comes from the pages.
// They stand in the language table too, so that they follow the language of the pages.
#pragma once

#include <QString>

#include "platform/standing.h"

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
    OldSince,      ///< with %1 for a time of day
    WrongEntry,    ///< with %1 for what was typed
    ChangedFrom,   ///< with %1 for what stood there before
    Limits,        ///< with %1 and %2 for the ends of a range
    FiguresOnly,
    TooManyDecimals,
    TooManyFigures,
    ValuesFrom,  ///< with %1 for a time of day
};

/// The word in the active language; in English where the active language file has no such section or ends before it.
QString word(Word which);

/// What may be entered, such as "0.00 to 655.35".
QString limitsInWords(const EntryLimits& limits);
/// What is wrong with an entry; empty where nothing is.
QString objectionInWords(Objection objection, const EntryLimits& limits);
/// Two figures of a change that is on its way, and of one that the board did not take.
QString changing(const QString& from, const QString& to);
QString unlike(const QString& has, const QString& wanted);

/// A number that its control cannot show.
QString outOfRange(const QString& number);

}  // namespace kestrel::qt
