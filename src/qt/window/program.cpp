// The run of the program on Qt.
#include "qt/window/program.h"

#include <QIcon>
#include <memory>
#include <stdexcept>

#include "command_line/data_directory.h"
#include "demo/demo_port.h"
#include "link/leaving.h"
#include "platform/errors.h"
#include "program_version.h"
#include "qt/io/deliver.h"
#include "qt/io/end_signals.h"
#include "qt/io/qt_platform.h"
#include "qt/io/text.h"
#include "qt/style/style.h"
#include "qt/views/pictures.h"
#include "qt/window/main_window_view.h"
#include "qt/window/tour.h"
#include "shell/start_up.h"
#include "shell/windows.h"

namespace kestrel::qt {

namespace {

constexpr const char* DemoTitle = "Kestrel (demo)";

Theme lookOf(kestrel::Theme theme) {
    switch (theme) {
        case kestrel::Theme::Light:
            return Theme::Light;
        case kestrel::Theme::Dark:
            return Theme::Dark;
        case kestrel::Theme::Contrast:
            return Theme::Contrast;
        case kestrel::Theme::System:
            break;
    }
    return Theme::System;
}

void setUpApplication(QApplication& application, const Options& options, const std::filesystem::path& directory) {
    QApplication::setApplicationName(QString::fromLatin1(ProgramTitle));
    // Closing the main window ends the process by the program's own way.
    QApplication::setQuitOnLastWindowClosed(false);
    usePicturesOf(directory);
    applyLook(application, lookOf(options.theme));
    QApplication::setWindowIcon(QIcon(pictureFile(QStringLiteral("kestrel"))));
}

/// The toolkit, asked last, loses a name that is no text, and the user could not be told of it.
std::filesystem::path executable() {
    const std::filesystem::path known = ownExecutable();
    return known.empty() ? toPath(QApplication::applicationFilePath()) : known;
}

std::shared_ptr<simulator::Machine> switchOn(const simulator::MachineOptions& options) {
    try {
        return std::make_shared<simulator::Machine>(options);
    } catch (const std::runtime_error& error) {
        throw RunTimeError(error_number::FileNotFound, error.what());
    }
}

/// The program and its arguments that open the demo of the same installation in the same look.
QStringList demoCall(const Options& options, const QString& directory) {
    QStringList call{QApplication::applicationFilePath(), QStringLiteral("--demo"), QStringLiteral("--directory"),
                     directory};
    if (options.theme == kestrel::Theme::Light) call += {QStringLiteral("--theme"), QStringLiteral("light")};
    if (options.theme == kestrel::Theme::Contrast) call += {QStringLiteral("--theme"), QStringLiteral("contrast")};
    if (options.theme == kestrel::Theme::Dark) call += {QStringLiteral("--theme"), QStringLiteral("dark")};
    return call;
}

QtPlatform::Setup setUpMachine(const Options& options, const std::filesystem::path& directory) {
    QtPlatform::Setup setup;
    setup.directory = directory;
    setup.isOfTheSystem = directory == dataDirectory(executable()) && directory != executable().parent_path();
    setup.devices = options.devices;
    setup.isUnattended = !options.tour.empty();
    if (!options.demo) {
        if (isText(directory)) setup.demo = demoCall(options, pathToQt(directory));
        return setup;
    }
    simulator::MachineOptions machine;
    machine.directory = directory;
    machine.faults = simulator::parseFaults(options.faults);
    setup.simulated = [machine] { return std::make_unique<DemoPort>(switchOn(machine)); };
    return setup;
}

}  // namespace

void runProgram(QApplication& application, const Options& options) {
    const std::filesystem::path directory = options.directory.empty() ? dataDirectory(executable()) : options.directory;
    setUpApplication(application, options, directory);
    QtPlatform machine(setUpMachine(options, directory));
    setPlatform(&machine);
    machine.mainWindow().onUserClose(MDIForm_Unload);
    const auto endInGoodOrder = [&machine] { machine.endProcess(0); };
    onEndSignal([endInGoodOrder] { deliver([&] { EndWhenSettled(endInGoodOrder, false); }); });
    QObject::connect(&application, &QApplication::aboutToQuit, &application, endInGoodOrder);
    deliver([&] {
        MDIForm_Load(options.demo ? DemoTitle : ProgramTitle);
        for (const std::string& page : options.pages) ShowPage(page);
        if (!options.tour.empty()) EndProcess(runTour(machine.mainWindow(), options.tour) ? 0 : EndedByTrouble);
    });
    EndProcess(QApplication::exec());
}

}  // namespace kestrel::qt
