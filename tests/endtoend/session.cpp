// A technician's session over a real line.
#include "session.h"

#include <stdexcept>

#include "link/link_engine.h"
#include "link/loaded_pages.h"
#include "link/recheck.h"
#include "pages/registry.h"
#include "platform/outside.h"
#include "qt/views/view.h"
#include "qt/window/child_window.h"
#include "qt/window/main_window_view.h"
#include "shell/frm_ser.h"
#include "shell/main_window.h"
#include "shell/start_up.h"
#include "shell/windows.h"

namespace kestrel::testing {

bool isLongRun() { return qEnvironmentVariableIsSet("KESTREL_LONG"); }

Session::Session(const QStringList& boardOptions) : board(installation.program(), boardOptions) { start(); }

Session::~Session() {
    stop();
    std::filesystem::current_path(startedIn);
}

void Session::start() {
    platform = std::make_unique<qt::QtPlatform>(
        qt::QtPlatform::Setup{.directory = installation.program(), .devices = {{1, board.device()}, {2, second}}});
    setPlatform(platform.get());
    RegisterPages(AllPages());
    MDIForm_Load("Kestrel");
}

void Session::stop() {
    ClosePages();
    FrmSer_Unload();
    platform.reset();  // the window lets go of its model before that goes
    setPlatform(nullptr);
    process.reset();
    process = std::make_unique<kestrel::Session>();
}

std::string Session::notice() { return MDIForm1().StatusBar1.Panels(1).Text; }

void Session::choose(MenuItem& entry) {
    entry.UserClick();
    EXPECT_TRUE(eventually([] { return !AnyActWaits(); }));
}

void Session::close(Page& page) {
    const std::string name = page.name();
    page.UserClose();
    EXPECT_TRUE(eventually([&] { return FindLoadedPage(name) == nullptr; }));
}

FrmTempi& Session::openTimes(int within) {
    choose(MDIForm1().entry("smnuTempi"));
    auto& page = dynamic_cast<FrmTempi&>(*FindLoadedPage("FrmTempi"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return page.arrivals() >= 18; }, within));
    return page;
}

bool Session::showsTheBoards(FrmTempi& page) {
    constexpr std::pair<int, int> shown[FrmTempi::Bars] = {{1, 1143}, {1, 1144}, {1, 1145}, {1, 1146},
                                                           {1, 1147}, {2, 58},   {1, 1439}, {1, 1441}};
    for (int i = 0; i < FrmTempi::Bars; ++i) {
        const int held = board.value(shown[i].first, shown[i].second).value_or(-1);
        const QString figure = QString::number(held / 10) + QLocale().decimalPoint() + QString::number(held % 10);
        if (page.Label1[i].Caption.get() != figure.toStdString()) return false;
        if (page.HScroll1[i].Value != std::min(held, page.HScroll1[i].Max.get())) return false;
    }
    return true;
}

QWidget& Session::widgetOf(Page& page, const Control& control) {
    for (QWidget* widget : platform->mainWindow().childOf(page).findChildren<QWidget*>())
        if (const auto* view = dynamic_cast<qt::ViewBase*>(widget); view && view->shows(control)) return *widget;
    throw std::runtime_error("no view shows the control");
}

QWidget& Session::firstBar(FrmTempi& page) {
    QWidget& bar = widgetOf(page, page.HScroll1[0]);
    bar.setFocus();
    return bar;
}

QStringList Session::writesOf(int value) {
    return {QStringLiteral("hot-drink %1 %2").arg(BrewingWater).arg(value),
            QStringLiteral("hot-drink %1 %2").arg(BrewingWaterShadow).arg(value)};
}

bool Session::stepIsConfirmed(FrmTempi& page, int within) {
    const ScrollBar& bar = page.HScroll1[0];
    const auto isAtRest = [&] {
        const bool noStepIsOnItsWay = bar.shownValue() == bar.Value && !bar.waiting();
        return !LineIsClosed() && !WritesAreHeld() && noStepIsOnItsWay && bar.Enabled;
    };
    EXPECT_TRUE(QTest::qWaitFor(isAtRest, within));
    const bool up = bar.Value < 100;
    const int value = bar.Value + (up ? 1 : -1);
    QTest::keyClick(&firstBar(page), up ? Qt::Key_Right : Qt::Key_Left);
    const auto isConfirmed = [&] {
        return bar.Value == value && !bar.waiting() && board.value(HotDrinkBoard, BrewingWater) == value &&
               board.value(HotDrinkBoard, BrewingWaterShadow) == value;
    };
    return QTest::qWaitFor(isConfirmed, within);
}

}  // namespace kestrel::testing
