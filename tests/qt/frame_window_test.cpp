// The frame window: pages come to the front, tell of it and go; menus and status bar follow their models.
// The pages are small ones of the test's own; their views are the real ones.
#include <gtest/gtest.h>

#include <QLabel>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QStatusBar>
#include <QTest>
#include <map>
#include <memory>

#include "qt/io/qt_platform.h"
#include "qt/style/palette.h"
#include "qt/window/child_window.h"
#include "qt/window/main_window_view.h"
#include "shell/main_window.h"
#include "shell/session.h"

namespace kestrel::qt {
namespace {

class SmallPage : public Window {
  public:
    using Window::Window;
    Layout Arrange() override { return Row{Label1}; }
    void Form_Activate() override { ++activations; }

    Label Label1;
    int activations = 0;
};

class FrameWindow : public ::testing::Test {
  protected:
    FrameWindow() {
        setPlatform(&platform);
        view().resize(800, 600);
        platform.showMainWindow();
    }
    ~FrameWindow() override {
        while (!pages.empty()) unload(pages.begin()->first);
        setPlatform(nullptr);
    }

    MainWindowView& view() { return platform.mainWindow(); }
    QMdiArea& area() { return *view().findChild<QMdiArea*>(); }

    SmallPage& load(const std::string& name) {
        SmallPage& page = *(pages[name] = std::make_unique<SmallPage>(name));
        page.Caption = name;
        page.OnClose([this, name] { unload(name); });
        return page;
    }
    /// As the program does it: the page is gone as soon as its window has been closed.
    void unload(std::string name) {
        platform.closeWindow(*pages.at(name));
        pages.erase(name);
    }
    SmallPage& open(const std::string& name) {
        SmallPage& page = load(name);
        platform.showWindow(page);
        return page;
    }
    QMdiSubWindow& childNamed(const char* caption) {
        for (QMdiSubWindow* child : area().subWindowList())
            if (child->windowTitle() == QLatin1String(caption)) return *child;
        throw std::runtime_error("no such page");
    }
    QAction& action(const char* text) {
        for (QAction* action : view().findChildren<QAction*>())
            if (action->text().remove(u'&') == QLatin1String(text)) return *action;
        throw std::runtime_error("no such entry");
    }

    Session session;
    QtPlatform platform{{.directory = "/tmp", .devices = {{4, ""}}}};
    std::map<std::string, std::unique_ptr<SmallPage>> pages;
};

TEST_F(FrameWindow, TellsAPageEachTimeThatItComesToTheFront) {
    SmallPage& first = open("First");
    platform.showWindow(first);
    EXPECT_EQ(first.activations, 2) << "a change of language reaches the only page by this way alone";
    SmallPage& second = open("Second");
    EXPECT_EQ(platform.activeWindow(), &second);
    EXPECT_EQ(second.activations, 1);
    platform.showWindow(first);
    EXPECT_EQ(first.activations, 3);
    EXPECT_EQ(area().subWindowList().size(), 2) << "an open page is not built again";
    area().setActiveSubWindow(&childNamed("Second"));  // as a click on it does
    EXPECT_EQ(second.activations, 2);
    EXPECT_EQ(platform.activeWindow(), &second);
}

TEST_F(FrameWindow, LeavesNothingOfAPageThatItsUserCloses) {
    SmallPage& stays = open("Stays");
    open("Goes");
    childNamed("Goes").close();
    EXPECT_FALSE(pages.contains("Goes"));
    EXPECT_EQ(area().subWindowList().size(), 1);
    EXPECT_EQ(platform.activeWindow(), &stays);
    EXPECT_EQ(stays.activations, 2);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(childNamed("Stays").isVisible());
}

TEST_F(FrameWindow, KeepsEveryTitleBarWithinReach) {
    SmallPage& page = load("Far");
    page.Left = 100000;
    page.Top = -5000;
    platform.showWindow(page);
    EXPECT_TRUE(area().viewport()->rect().contains(childNamed("Far").geometry()));
    view().resize(400, 300);
    QCoreApplication::processEvents();
    EXPECT_TRUE(area().viewport()->rect().contains(childNamed("Far").geometry().topLeft()));
}

TEST_F(FrameWindow, MakesRoomForLongerTextsButKeepsTheUsersSize) {
    SmallPage& page = open("Page");
    QMdiSubWindow& child = childNamed("Page");
    const int narrow = child.width();
    page.Label1.Caption = "A text that is a good deal longer than before, in another language";
    EXPECT_TRUE(QTest::qWaitFor([&] { return child.width() > narrow; }, 500));
    child.resize(500, 300);
    platform.showWindow(page);
    QTest::qWait(1);
    EXPECT_EQ(child.size(), QSize(500, 300));
}

TEST_F(FrameWindow, MeasuresAPageAsItIsThenShown) {
    SmallPage& page = load("Page");
    const Extent measured = platform.measure(page);
    platform.showWindow(page);
    EXPECT_EQ(childNamed("Page").width() * TwipsPerPixel, measured.width);
    EXPECT_EQ(childNamed("Page").height() * TwipsPerPixel, measured.height);
}

TEST_F(FrameWindow, ShowsAnEntryAsItsModelSays) {
    int clicks = 0;
    MenuItem& item = MDIForm1().entry("smnuTempi");
    item.OnClick([&] { ++clicks; });
    QAction& entry = action("Tempi");
    item.Checked = true;
    entry.trigger();
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(entry.isChecked()) << "the program alone decides what is checked";
    EXPECT_FALSE(action("Dosi").isCheckable()) << "no box before an entry that is not ticked";
    item.Checked = false;
    EXPECT_FALSE(entry.isCheckable()) << "nor before one that was";
    item.Enabled = false;
    item.Detail = "/dev/R&D";
    MDIForm1().smnuLingue(3).Caption = "Elsewhere";
    MDIForm1().smnuLingue(3).Visible = true;
    QCoreApplication::processEvents();
    EXPECT_FALSE(entry.isEnabled());
    EXPECT_TRUE(entry.text().endsWith(QStringLiteral("/dev/R&&D"))) << entry.text().toStdString();
    EXPECT_TRUE(action("Elsewhere").isVisible());
}

TEST_F(FrameWindow, SaysOfAPortThatItHasNoDevice) { EXPECT_EQ(platform.portDevice(4), "no device"); }

TEST_F(FrameWindow, GivesLettersAnewInEachLanguage) {
    const char* names[] = {"mnuFile", "mnuConfigura", "mnuTempiDosi", "mnuVending"};
    for (const char* name : names) MDIForm1().entry(name).Caption = std::string("Same ") + name;
    QCoreApplication::processEvents();
    QSet<QString> letters;
    for (const QAction* entry : view().menuBar()->actions())
        letters += entry->text().section(u'&', 1).left(1).toUpper();
    EXPECT_EQ(letters.size(), view().menuBar()->actions().size()) << "the question mark alone has none";
    EXPECT_TRUE(action("Com4").text().startsWith(QStringLiteral("Com&4"))) << "ports have their numbers";
}

TEST_F(FrameWindow, OpensItsMenuBarByAKey) {
    view().activateWindow();
    QTest::keyClick(view().windowHandle(), Qt::Key_F10);
    QWidget* const menu = QApplication::activePopupWidget();
    ASSERT_EQ(menu, view().menuBar()->actions().constFirst()->menu());
    QTest::keyClick(menu, Qt::Key_Escape);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(FrameWindow, ListsItsPagesAndClosesThemAll) {
    open("First");
    SmallPage& second = open("Second");
    Q_EMIT action("Windows").menu()->aboutToShow();
    EXPECT_TRUE(action("Second").isChecked());
    EXPECT_FALSE(action("First").isChecked());
    childNamed("First").showMinimized();
    action("First").trigger();
    EXPECT_NE(platform.activeWindow(), &second);
    EXPECT_FALSE(platform.isMinimized(*pages.at("First")));
    view().activateWindow();
    for (const Qt::KeyboardModifiers modifiers :
         {Qt::KeyboardModifiers(Qt::ControlModifier), Qt::ControlModifier | Qt::ShiftModifier}) {
        Window* const before = platform.activeWindow();
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_F6}) {
            QTest::keyClick(&view(), key, modifiers);
            EXPECT_EQ(platform.activeWindow() == before, key == Qt::Key_F6) << "of two pages the other, and back";
        }
    }
    for (const Qt::Key key : {Qt::Key_F4, Qt::Key_W}) {
        open("Third");
        QTest::keyClick(&view(), key, Qt::ControlModifier);
        EXPECT_FALSE(pages.contains("Third")) << key;
    }
    open("Third");
    action("Close").trigger();
    EXPECT_FALSE(pages.contains("Third"));
    EXPECT_EQ(area().subWindowList().size(), 2);
    action("Close all").trigger();
    EXPECT_TRUE(area().subWindowList().isEmpty());
    EXPECT_EQ(platform.activeWindow(), nullptr);
}

TEST_F(FrameWindow, ShowsPanelsThatAreAddedAndWhatTheySay) {
    StatusBar& bar = MDIForm1().StatusBar1;
    bar.addPanel().Picture = 1;
    bar.Panels(1).sizing = StatusPanel::Sizing::Spring;
    QCoreApplication::processEvents();
    bar.Panels(1).Text = "Check serial interface ";
    bar.Panels(1).ToolTip = "gone";
    QList<QLabel*> labels = view().statusBar()->findChildren<QLabel*>();
    ASSERT_EQ(labels.size(), 3);
    LineStatus& status = MDIForm1().Line;
    const QLabel& line = *labels.takeFirst();
    for (const char* alarm : {"", "no answer for 4 s", ""}) {
        status.Text = "ttyS0";
        status.Alarm = alarm;
        EXPECT_TRUE(line.text().endsWith(QString::fromLatin1(*alarm ? alarm : "ttyS0")));
        const bool isRed = view().statusBar()->grab().toImage().pixelColor(1, 8) == colors().alarm;
        EXPECT_EQ(isRed, *alarm != 0) << "over the whole width";
    }
    EXPECT_EQ(labels[0]->text(), QStringLiteral("Check serial interface "));
    EXPECT_EQ(labels[0]->toolTip(), QStringLiteral("gone"));
    EXPECT_GT(labels[0]->width(), labels[1]->width() * 2);
    const QString unlit = labels[1]->accessibleDescription();
    bar.Panels(2).Picture = 4;
    EXPECT_NE(labels[1]->accessibleDescription(), unlit) << "a lamp must speak too";
    EXPECT_FALSE(labels[1]->accessibleName().isEmpty());
}

TEST_F(FrameWindow, TellsTheProgramThatItIsBeingClosed) {
    int closed = 0;
    view().onUserClose([&] { ++closed; });
    view().close();
    EXPECT_EQ(closed, 1);
}

}  // namespace
}  // namespace kestrel::qt
