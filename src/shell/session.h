// All process-wide state of a running program, a module a line: the program makes one session and a test makes its own.
// The state is born in this order and goes in the opposite one, so a module may count on those above it.
#pragma once

#include "platform/module.h"

namespace kestrel {

class MainWindow;
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
struct ConfigurationState;
struct RegistryState;
struct PuttingBack;
struct ModelState;

/// What is known of the boards on the line, and what is on its way to them: with other boards all of it begins anew.
struct BoardsOnTheLine {
    BoardsOnTheLine();
    ~BoardsOnTheLine();

    Module<ParamState> mirror;
    Module<ChangeState> changes;
    Module<RecheckState> recheck;
    Module<LeavingState> leaving;
};

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
    Module<BoardsOnTheLine> boards;
    Module<FirstValuesState> firstValues;
    Module<SilenceState> silence;
    Module<PageState> pages;
    // shell
    Module<ConfigurationState> configuration;
    Module<RegistryState> registry;
    Module<PuttingBack> puttingBack;
    Module<ModelState> models;
    Module<MainWindow> mainWindow;
};

}  // namespace kestrel
