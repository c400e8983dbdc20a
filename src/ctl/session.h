// All process-wide state of a program that has a line and no window, a module a line.
// Born in this order and gone in the opposite one; the platform is there before and after.
#pragma once

#include "platform/module.h"

namespace kestrel {

struct Speaker;
struct OpenBoxes;
struct Door;
struct OpenGestures;
struct LanguageState;
struct Listening;
struct Attending;
struct LinkState;
struct IdentityState;
struct IndexState;
struct ParamState;
struct ChangeState;
struct RecheckState;
struct LeavingState;
struct PageState;
struct FirstValuesState;
struct SilenceState;
struct History;
struct WordState;

namespace ctl {

struct Session {
    Session();
    ~Session();

    // platform
    Module<Speaker> speaker;
    Module<OpenBoxes> boxes;
    Module<Door> outside;
    Module<OpenGestures> gestures;
    // language
    Module<LanguageState> texts;
    // link
    Module<Listening> observer;
    Module<Attending> attendant;
    Module<LinkState> link;
    Module<IdentityState> identification;
    Module<IndexState> indexFiles;
    Module<History> history;
    Module<ParamState> mirror;
    Module<ChangeState> changes;
    Module<RecheckState> recheck;
    Module<LeavingState> leaving;
    Module<FirstValuesState> firstValues;
    Module<SilenceState> silence;
    Module<PageState> pages;
    // ctl
    Module<WordState> words;
};

}  // namespace ctl
}  // namespace kestrel
