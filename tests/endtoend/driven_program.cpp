// The program with somebody at its keyboard.
#include "driven_program.h"

#include <QAbstractButton>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <csignal>
#include <functional>
#include <map>

#include "language/port_words.h"
#include "link/loaded_pages.h"
#include "moments.h"
#include "pages/registry.h"
#include "platform/errors.h"
#include "platform/platform.h"
#include "qt/io/deliver.h"
#include "qt/io/qt_platform.h"
#include "qt/window/main_window_view.h"
#include "qt/window/program.h"
#include "shell/main_window.h"
#include "shell/session.h"
#include "shell/windows.h"

namespace kestrel::testing {

namespace {

qt::MainWindowView& window() { return dynamic_cast<qt::QtPlatform&>(platform()).mainWindow(); }

char letterOf(const QAction& entry) {
    const QString text = entry.text();
    return text[text.indexOf(u'&') + 1].toLatin1();
}

/// The last one that a search tries, so that it is still open when that fails.
constexpr int Port = 4;

void leaveByKeys() {
    const QAction& file = *window().menuBar()->actions().first();
    const QAction& exit = *file.menu()->actions().last();
    QTest::keyClick(&window(), letterOf(file), Qt::AltModifier);
    QTest::keyClick(QApplication::activePopupWidget(), letterOf(exit));
}

void meetTrouble() {
    when(*qApp, isBoxOpen, confirmBox);
    qt::deliver([] { throw RunTimeError(error_number::Overflow, "Overflow"); });
}

void closeWindow() { window().close(); }

bool isPageFilled() { return FindLoadedPage("FrmTempi")->arrivals() >= 18; }

void workAndLeave() {
    for (const char* entry : {"ssmnuTotali", "smnuGrafico", "smnuTempi"}) MDIForm1().entry(entry).UserClick();
    window().resize(window().size() / 2);
    MDIForm1().smnuLingue(1).UserClick();
    when(*qApp, isPageFilled, closeWindow);
}

void chooseDemo() {
    for (QAbstractButton* button : QApplication::activeModalWidget()->findChildren<QAbstractButton*>())
        if (button->text().remove(u'&').toStdString() == portWord(PortWord::OpenDemo)) return button->click();
}

void sendSignal() { std::raise(SIGTERM); }

}  // namespace

void runDriven(QApplication& application, const std::string& act, const std::string& directory,
               const std::string& device) {
    struct Cue {
        std::function<bool()> isTime;
        std::function<void()> act;
    };
    const std::map<std::string, Cue> cues = {
        {"menu", {isRunning, leaveByKeys}},
        {"close", {isRunning, closeWindow}},
        {"close-identifying", {isIdentifying, closeWindow}},
        {"signal-identifying", {isIdentifying, sendSignal}},
        {"signal-in-box", {isBoxOpen, sendSignal}},
        {"work", {isRunning, workAndLeave}},
        {"demo", {isBoxOpen, chooseDemo}},
        {"trouble", {isRunning, meetTrouble}},
    };
    const Session session;
    when(*qApp, cues.at(act).isTime, cues.at(act).act);
    RegisterPages(AllPages());
    Options options;
    options.directory = directory;
    options.devices = {{Port, device}};
    qt::runProgram(application, options);
}

}  // namespace kestrel::testing
