// The words of finding, going back and helping, and of what a screen reader says beside the pages' own texts.
// They stand in the language table too, so that they follow the language of the pages.
#pragma once

#include <QString>

namespace kestrel::qt {

/// In the order of their lines in the language files.
enum class AccessWord {
    FindPage,
    ReadAgain,
    CopyPage,
    ShowChanges,
    PutLastBack,
    PageHelp,
    PageTabs,
    PutBack,
    Time,
    Page,
    Setting,
    Before,
    After,
    State,
    Confirmed,  ///< the fates of a change, in the order of Fate
    Waiting,
    Replaced,
    Withdrawn,
    NotTaken,
    Unknown,
    IsPutBack,
    NothingLit,
    Lit,
    NoChanges,
    NothingFound,
};

/// The word in the active language; in English where the active language file has no such line.
QString accessWord(AccessWord which);

}  // namespace kestrel::qt
