// The program: reads the command line, wires the floors together and runs.
// What it does is said by shell/start_up; what it runs on by platform/qt.
#include <QApplication>
#include <QIcon>
#include <cstdio>
#include <memory>
#include <optional>

#include "pages/registry.h"
#include "platform/qt/deliver.h"
#include "platform/qt/demo_port.h"
#include "platform/qt/display.h"
#include "platform/qt/end_signals.h"
#include "platform/qt/main_window_view.h"
#include "platform/qt/pictures.h"
#include "platform/qt/qt_platform.h"
#include "platform/qt/style.h"
#include "platform/qt/text.h"
#include "platform/qt/tour.h"
#include "platform/trouble.h"
#include "shell/options.h"
#include "shell/start_up.h"

namespace {

using namespace kestrel;

constexpr const char* ProgramTitle = "Kestrel";
constexpr const char* DemoTitle = "Kestrel (demo)";
constexpr const char* DemoDevice = "simulated machine";

qt::Theme lookOf(Theme theme) {
    switch (theme) {
        case Theme::Light:
            return qt::Theme::Light;
        case Theme::Dark:
            return qt::Theme::Dark;
        case Theme::System:
            break;
    }
    return qt::Theme::System;
}

simulator::FaultPlan faultsOf(const Options& options) {
    try {
        return simulator::parseFaults(options.faults);
    } catch (const std::invalid_argument& error) {
        throw BadOption(std::string("--fault: ") + error.what());
    }
}

void refuseUnknownPages(const Options& options) {
    for (const std::string& page : options.pages)
        if (!PageIsRegistered(page)) throw BadOption("--open: there is no page \"" + page + "\"");
}

void setUpApplication(QApplication& application, const Options& options, const std::filesystem::path& directory) {
    QApplication::setApplicationName(QString::fromLatin1(ProgramTitle));
    QApplication::setQuitOnLastWindowClosed(
        false);  // closing the main window ends the process by the program's own way
    qt::setPictureFolder(qt::pathToQt(directory / "pictures"));
    qt::applyLook(application, lookOf(options.theme));
    QApplication::setWindowIcon(QIcon(qt::pictureFile(QStringLiteral("kestrel"))));
}

qt::QtPlatform::Setup setUpMachine(const Options& options, const std::filesystem::path& directory) {
    qt::QtPlatform::Setup setup;
    setup.directory = directory;
    setup.devices = options.devices;
    setup.isUnattended = !options.tour.empty();
    if (!options.demo) return setup;
    simulator::MachineOptions machine;
    machine.directory = directory;
    machine.faults = faultsOf(options);
    setup.simulated = [machine] {
        return std::make_unique<qt::DemoPort>(std::make_shared<simulator::Machine>(machine));
    };
    setup.simulatedName = DemoDevice;
    return setup;
}

[[noreturn]] void run(QApplication& application, const Options& options) {
    const std::filesystem::path directory =
        options.directory.empty() ? qt::toPath(QApplication::applicationDirPath()) : options.directory;
    setUpApplication(application, options, directory);
    qt::QtPlatform machine(setUpMachine(options, directory));
    setPlatform(&machine);
    machine.mainWindow().onUserClose(MDIForm_Unload);
    const auto endInGoodOrder = [&machine] { machine.endProcess(0); };
    qt::onEndSignal(endInGoodOrder);
    QObject::connect(&application, &QApplication::aboutToQuit, &application, endInGoodOrder);
    qt::deliver([&] {
        MDIForm_Load(options.demo ? DemoTitle : ProgramTitle);
        for (const std::string& page : options.pages) ShowPage(page);
        if (!options.tour.empty()) EndProcess(qt::runTour(machine.mainWindow(), options.tour) ? 0 : EndedByTrouble);
    });
    EndProcess(QApplication::exec());
}

std::optional<int> answerWithoutDisplay(const Options& options) {
    if (options.version) {
        std::printf("kestrel %s\n", KESTREL_VERSION);
        return 0;
    }
    if (options.help) {
        std::printf("%s", usage().c_str());
        return 0;
    }
    refuseUnknownPages(options);
    faultsOf(options);
    return std::nullopt;
}

}  // namespace

int main(int argc, char** argv) {
    RegisterPages(AllPages());
    Options options;
    try {
        options = parseOptions({argv + 1, argv + argc});
        if (const auto status = answerWithoutDisplay(options)) return *status;
    } catch (const BadOption& error) {
        std::fprintf(stderr, "kestrel: %s\n", error.what());
        return EndedByBadOption;
    }
    if (!qt::prepareDisplay(options.tour.empty())) return EndedByTrouble;
    try {
        if (!options.tour.empty()) qt::prepareTourDirectory(options.tour);
    } catch (const RunTimeError& error) {
        std::fprintf(stderr, "kestrel: --tour: %s\n", error.what());
        return EndedByTrouble;
    }
    int ownName = 1;  // the other arguments are the program's, not the toolkit's
    const qt::FatalMessagesInOneLine whileRunning;
    QApplication application(ownName, argv);
    run(application, options);
}
