// All process-wide state of a running program, a module a line: the program makes one session and a test makes its own.
// The state is born in this order and goes in the opposite one, so a module may count on those above it.
#pragma once

#include "link/line_session.h"

namespace kestrel {

class MainWindow;
struct LanguageState;
struct ConfigurationState;
struct RegistryState;
struct PuttingBack;
struct ModelState;

struct Session {
    Session();
    ~Session();

    LineSession line;
    // language
    Module<LanguageState> texts;
    // shell
    Module<ConfigurationState> configuration;
    Module<RegistryState> registry;
    Module<PuttingBack> puttingBack;
    Module<ModelState> models;
    Module<MainWindow> mainWindow;
};

}  // namespace kestrel
