// The monkey in front of the demo: kestrel-monkey SECONDS [SEED [FAULTS]]. It is over when a sanitizer, a crash or a
// program that stands still ends it, or the time.
#include <QApplication>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

#include "monkey.h"
#include "pages/registry.h"
#include "platform/platform.h"
#include "qt/io/display.h"
#include "qt/window/program.h"
#include "shell/options.h"
#include "shell/session.h"
#include "shell/windows.h"

int main(int argc, char** argv) {
    using namespace kestrel;
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 0;
    if (seconds <= 0) {
        std::fprintf(stderr, "Usage: kestrel-monkey SECONDS [SEED [FAULTS]]\n");
        return EndedByBadOption;
    }
    const auto seed = static_cast<unsigned>(argc > 2 ? std::atoi(argv[2]) : 1);
    const Session session;
    RegisterPages(AllPages());
    Options options;
    options.demo = true;
    options.faults = argc > 3 ? argv[3] : "";
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    qt::chooseEventLoop();
    int ownName = 1;
    QApplication application(ownName, argv);
    std::unique_ptr<qt::testing::Monkey> monkey;
    QTimer::singleShot(2000, &application, [&] {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->inherits("QMainWindow")) monkey = std::make_unique<qt::testing::Monkey>(*window, seed, seconds);
    });
    qt::runProgram(application, options);
}
