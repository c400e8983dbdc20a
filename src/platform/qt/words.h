// The words that the views and the frame window say of themselves; every other text comes from the pages.
// They stand in one place so that a language table can take them over.
#pragma once

#include <QString>

namespace kestrel::qt::words {

inline const QString WaitingForTheBoard = QStringLiteral("waiting for the board");
inline const QString On = QStringLiteral("on");
inline const QString Off = QStringLiteral("off");
inline const QString OutOfRange = QStringLiteral("%1, out of range");
inline const QString NoTime = QStringLiteral("no time");
inline const QString Increase = QStringLiteral("one step up");
inline const QString Decrease = QStringLiteral("one step down");
inline const QString Pause = QStringLiteral("Pause (Space)");
inline const QString Fit = QStringLiteral("Show all (F)");
inline const QString Follow = QStringLiteral("Follow (End)");
inline const QString Paused = QStringLiteral("paused");
inline const QString NoSamples = QStringLiteral("no values yet");
inline const QString Chart = QStringLiteral("chart");

// The frame window's own commands and lamps.
inline const QString NextWindow = QStringLiteral("Next");
inline const QString PreviousWindow = QStringLiteral("Previous");
inline const QString Cascade = QStringLiteral("Cascade");
inline const QString Tile = QStringLiteral("Tile");
inline const QString CloseAll = QStringLiteral("Close All");
inline const QString SendLamp = QStringLiteral("Send");
inline const QString ReceiveLamp = QStringLiteral("Receive");
inline const QString ErrorLamp = QStringLiteral("Error");

}  // namespace kestrel::qt::words
