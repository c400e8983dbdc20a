// The words about a port and what to check when nothing answers on it.
// They stand in the language table, so that they follow the language of the pages.
#pragma once

#include <string>

namespace kestrel {

/// By their lines in the language files.
enum class PortWord {
    IsMachineOn = 690,
    IsCableIn,
    Tried,
    OpenDemo,
    NoBoard,
    Gone,
    Closed,
    NotThere,
    InUse,
    InUseBy,
    NoPermission,
    NeedsGroup,
    LogInAgain
};

/// The word in the active language; in English where the active language file has no such line.
std::string portWord(PortWord which);

}  // namespace kestrel
