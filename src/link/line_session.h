// The process-wide state of every program that has a line, a module a line: that of the platform and of the link.
// Born in this order and gone in the opposite one, so a module may count on those above it.
#pragma once

#include "platform/module.h"

namespace kestrel {

struct Speaker;
struct OpenBoxes;
struct Door;
struct OpenGestures;
struct Listening;
struct Attending;
struct LinkState;
struct IdentityState;
struct IndexState;
struct History;
struct ParamState;
struct ChangeState;
struct RecheckState;
struct LeavingState;
struct FirstValuesState;
struct SilenceState;
struct PageState;

/// What is known of the boards on the line, and what is on its way to them: with other boards all of it begins anew.
struct BoardsOnTheLine {
    BoardsOnTheLine();
    ~BoardsOnTheLine();

    Module<ParamState> mirror;
    Module<ChangeState> changes;
    Module<RecheckState> recheck;
    Module<LeavingState> leaving;
};

struct LineSession {
    LineSession();
    ~LineSession();

    // platform
    Module<Speaker> speaker;
    Module<OpenBoxes> boxes;
    Module<Door> outside;
    Module<OpenGestures> gestures;
    // link
    Module<Listening> observer;
    Module<Attending> attendant;
    Module<LinkState> link;
    Module<IdentityState> identification;
    Module<IndexState> indexFiles;
    Module<History> history;
    Module<BoardsOnTheLine> boards;
    Module<FirstValuesState> firstValues;
    Module<SilenceState> silence;
    Module<PageState> pages;
};

}  // namespace kestrel
