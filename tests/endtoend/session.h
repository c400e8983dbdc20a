// A technician's session over a real line: the program in this process, the machine in a process of its own.
// The real platform and serial port run here.
#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <functional>
#include <memory>

#include "board_process.h"
#include "installation.h"
#include "pages/beverage/frm_tempi.h"
#include "platform/menu.h"
#include "qt/io/qt_platform.h"
#include "shell/session.h"
#include "witness.h"

namespace kestrel::testing {

/// Whether KESTREL_LONG stands in the environment: the numbers of a soak test, many minutes instead of seconds.
bool isLongRun();

class Session : public ::testing::Test {
  protected:
    static constexpr int Soon = 20'000;  ///< milliseconds, on a machine with much else to do
    static constexpr const char* SecondLine = "second";
    static constexpr int HotDrinkBoard = 1;
    static constexpr int BrewingWater = 1143;  ///< the first bar of the page of times
    static constexpr int BrewingWaterShadow = 1148;

    explicit Session(const QStringList& boardOptions = {});
    ~Session() override;
    void start();
    void stop();

    static bool eventually(const std::function<bool()>& holds) { return QTest::qWaitFor(holds, Soon); }
    /// What the status bar says of the port; empty while all is well.
    static std::string notice();

    /// An act of the user, which waits for the end of an exchange, and its end.
    static void choose(MenuItem& entry);
    static void close(Page& page);
    /// With all values there.
    FrmTempi& openTimes(int within = Soon);
    /// Whether every bar of the page and the figure beside it say what the boards hold.
    bool showsTheBoards(FrmTempi& page);
    QWidget& widgetOf(Page& page, const Control& control);
    /// The widget of the first bar, with the keyboard's focus.
    QWidget& firstBar(FrmTempi& page);
    /// What the board hears when the first bar is set.
    static QStringList writesOf(int value);
    /// When all is at rest, presses a key on the first bar and waits until the board holds the new value twice and the
    /// page shows it.
    bool stepIsConfirmed(FrmTempi& page, int within = Soon);

    const std::filesystem::path startedIn = std::filesystem::current_path();
    Installation installation;
    BoardProcess board;
    /// Port 2: nothing is there unless a test puts something at its path.
    const std::filesystem::path second = installation.program() / SecondLine;
    /// The process-wide state of the program that runs here.
    std::unique_ptr<kestrel::Session> process = std::make_unique<kestrel::Session>();
    std::unique_ptr<qt::QtPlatform> platform;
    Witness witness;
};

}  // namespace kestrel::testing
