// A technician's session over a real line: start, a page that fills, a change that the board confirms, a pulled plug.
// The real platform and serial port run here; the machine is a process of its own.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>

#include "board_process.h"
#include "installation.h"
#include "link/fan_out.h"
#include "link/link_engine.h"
#include "link/param_table.h"
#include "pages/beverage/frm_tempi.h"
#include "pages/registry.h"
#include "platform/qt/bar_view.h"
#include "platform/qt/child_window.h"
#include "platform/qt/main_window_view.h"
#include "platform/qt/qt_platform.h"
#include "shell/frm_ser.h"
#include "shell/main_window.h"
#include "shell/start_up.h"
#include "support/processor_time.h"

namespace kestrel::testing {
namespace {

constexpr int Soon = 5000;
constexpr int HotDrinkBoard = 1;
constexpr int BrewingWater = 1143;
constexpr int BrewingWaterShadow = 1148;

class Session : public ::testing::Test {
  protected:
    Session() {
        platform = std::make_unique<qt::QtPlatform>(
            qt::QtPlatform::Setup{.directory = installation.program(), .devices = {{1, board.device()}}});
        setPlatform(platform.get());
        RegisterPages(AllPages());
        MDIForm_Load("Kestrel");
    }
    ~Session() override {
        ClosePages();
        FrmSer_Unload();
        ResetLink();
        platform.reset();  // the window lets go of its model before that goes
        setPlatform(nullptr);
        ResetProgram();
        std::filesystem::current_path(startedIn);
    }

    static bool eventually(const std::function<bool()>& holds) { return QTest::qWaitFor(holds, Soon); }

    FrmTempi& openTimes() {
        MDIForm1().entry("smnuTempi").UserClick();
        auto& page = dynamic_cast<FrmTempi&>(*FindLoadedPage("FrmTempi"));
        EXPECT_TRUE(eventually([&] { return page.arrivals() >= 18; }));
        return page;
    }
    /// The widget of the first bar, with the keyboard's focus.
    QWidget& firstBar(FrmTempi& page) {
        for (QWidget* widget : platform->mainWindow().childOf(page).findChildren<QWidget*>())
            if (dynamic_cast<qt::BarView*>(widget)) {
                widget->setFocus();
                return *widget;
            }
        throw std::runtime_error("no bar");
    }
    QStringList writes(int parameter) {
        return board.exchanges({QStringLiteral("hot-drink"), QStringLiteral("write"), QString::number(parameter)});
    }

    const std::filesystem::path startedIn = std::filesystem::current_path();
    Installation installation;
    BoardProcess board{installation.program()};
    std::unique_ptr<qt::QtPlatform> platform;
};

TEST_F(Session, FindsThreeBoardsAndFillsAPage) {
    EXPECT_TRUE(BoardPresent(0) && BoardPresent(1) && BoardPresent(2));
    EXPECT_GT(RecordCount(1), BrewingWater) << "the index file that the board's identity names";
    EXPECT_EQ(platform->mainWindow().windowTitle(), QStringLiteral("Kestrel"));
    FrmTempi& page = openTimes();
    EXPECT_EQ(page.HScroll1[0].Value, board.value(HotDrinkBoard, BrewingWater));
    EXPECT_TRUE(platform->mainWindow().childOf(page).isVisible());
}

TEST_F(Session, ShowsAChangeOnlyWhenTheBoardHasConfirmedIt) {
    FrmTempi& page = openTimes();
    const std::string before = page.Label1[0].Caption;
    const int value = page.HScroll1[0].Value;
    board.tell("fault slow=1");
    QWidget& bar = firstBar(page);
    QTest::keyClick(&bar, Qt::Key_Right);
    QTest::keyClick(&bar, Qt::Key_Right);
    ASSERT_TRUE(eventually([&] { return page.HScroll1[0].Value == value + 2; })) << "one gesture of two steps";
    EXPECT_TRUE(page.HScroll1[0].waiting());
    EXPECT_EQ(page.Label1[0].Caption.get(), before) << "the figure is the board's, and the board has not answered";
    QElapsedTimer clock;
    clock.start();
    ASSERT_TRUE(eventually([&] { return page.Label1[0].Caption.get() != before; }));
    EXPECT_GE(clock.elapsed(), 100) << "the least that a slow board takes";
    EXPECT_FALSE(page.HScroll1[0].waiting());
    EXPECT_TRUE(eventually([&] { return writes(BrewingWater).size() == 1; }));
    EXPECT_EQ(board.value(HotDrinkBoard, BrewingWater), value + 2);
}

TEST_F(Session, WritesAChangeOnceToTheSettingAndOnceToItsShadow) {
    FrmTempi& page = openTimes();
    const int value = page.HScroll1[0].Value;
    QTest::keyClick(&firstBar(page), Qt::Key_Right);
    ASSERT_TRUE(eventually([&] { return !writes(BrewingWaterShadow).isEmpty(); }));
    EXPECT_TRUE(eventually([&] { return !page.HScroll1[0].waiting(); }));
    EXPECT_EQ(writes(BrewingWater).size(), 1);
    EXPECT_EQ(writes(BrewingWaterShadow).size(), 1);
    EXPECT_EQ(board.value(HotDrinkBoard, BrewingWater), value + 1);
    EXPECT_EQ(board.value(HotDrinkBoard, BrewingWaterShadow), value + 1);
}

TEST_F(Session, SurvivesAPulledPlugAndGoesOnWhenItIsBack) {
    FrmTempi& page = openTimes();
    board.tell("unplug");
    ASSERT_TRUE(eventually([] { return !MDIForm1().StatusBar1.Panels(1).Text.get().empty(); }));
    EXPECT_NE(MDIForm1().StatusBar1.Panels(1).ToolTip.get(), "") << "and why";
    const double before = processorSeconds();
    QTest::qWait(1500);
    EXPECT_LT(processorSeconds() - before, 0.05 * 1.5);
    board.tell("plug");
    ASSERT_TRUE(eventually([] { return MDIForm1().StatusBar1.Panels(1).Text.get().empty(); }));
    const int value = page.HScroll1[0].Value;
    QTest::keyClick(&firstBar(page), Qt::Key_Left);
    EXPECT_TRUE(eventually([&] { return board.value(HotDrinkBoard, BrewingWater) == value - 1; }));
}

TEST_F(Session, StaysAliveOnABadLineAndIsRightAfterwards) {
    FrmTempi& page = openTimes();
    board.tell("fault noise=1,extra=0.3,drop=0.2,flip=0.2");
    QElapsedTimer clock;
    qint64 longest = 0;
    QTimer heart;
    QObject::connect(&heart, &QTimer::timeout, &heart, [&] { longest = std::max(longest, clock.restart()); });
    clock.start();
    heart.start(10);
    MDIForm1().entry("ssmnuTotali").UserClick();
    QTest::qWait(1500);
    heart.stop();
    EXPECT_LT(longest, 150) << "the window must answer";
    board.tell("fault lost=0");
    board.tell("set 1 1143 77");
    MDIForm1().entry("smnuTempi").UserClick();
    page.UserClose();
    EXPECT_EQ(openTimes().HScroll1[0].Value, 77);
}

}  // namespace
}  // namespace kestrel::testing
