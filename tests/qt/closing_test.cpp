// Closing a page is not committing: what the user has begun in it and not finished goes to no board, by whatever way
// the page is closed. Only steps that were made already are handed over, and only while the page can still send them.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStyleOptionTitleBar>
#include <QTest>
#include <optional>

#include "link/leaving.h"
#include "platform/switches.h"
#include "qt/io/qt_platform.h"
#include "qt/views/view.h"
#include "qt/window/child_window.h"
#include "qt/window/main_window_view.h"
#include "shell/main_window.h"
#include "shell/session.h"

namespace kestrel::qt {
namespace {

class PageOfInputs : public Window {
  public:
    PageOfInputs() : Window("FrmInputs") {
        Caption = "Page";
        eachControl(Arrange(), [this](Control& control) { control.standOn(this); });
        Text1.Text = "123";
        HScroll1.Value = 100;
        Text1.OnKeyPress([this](int /*key*/) { Text1.Text = "committed " + Text1.Text.get(); });
        Text1.OnLostFocus([this] { Text1.Text = "committed " + Text1.Text.get(); });
    }
    Layout Arrange() override { return Column{First, Text1, HScroll1, Slider1}; }
    std::string values() const {
        return Text1.Text.get() + " " + std::to_string(HScroll1.Value) + " " + std::to_string(Slider1.Position);
    }

    CommandButton First;  ///< has the focus when the page opens
    TextBox Text1;
    ScrollBar HScroll1;
    SliderSwitch Slider1;
};

class Closing : public ::testing::Test {
  protected:
    Closing() {
        setPlatform(&platform);
        QAccessible::setActive(true);  // a screen reader hears what a view says while it goes
        view().resize(800, 600);
        view().onUserClose([this] { EndWhenSettled([this] { heard = page->values(); }, false); });
    }
    ~Closing() override {
        if (page) unload();
        QAccessible::setActive(false);
        setPlatform(nullptr);
    }

    MainWindowView& view() { return platform.mainWindow(); }
    ChildWindow& child() { return view().childOf(*page); }
    QWidget& widgetOf(const Control& control) {
        for (QWidget* widget : child().findChildren<QWidget*>())
            if (const auto* shown = dynamic_cast<ViewBase*>(widget); shown && shown->shows(control)) return *widget;
        throw std::runtime_error("no view shows the control");
    }

    void open() {
        platform.showMainWindow();
        page.emplace();
        heard.clear();
        page->OnClose([this] { unload(); });
        platform.showWindow(*page);
        QCoreApplication::processEvents();
    }
    void unload() {
        platform.closeWindow(*page);
        heard = page->values();
        page.reset();
    }
    /// Presses a button of the page's title bar, as the style places it.
    void pressInTitle(QStyle::SubControl button) {
        QStyleOptionTitleBar bar;
        bar.initFrom(&child());
        bar.subControls = QStyle::SC_All;
        bar.titleBarFlags = child().windowFlags();
        bar.rect =
            QRect(0, 0, child().width(), child().style()->pixelMetric(QStyle::PM_TitleBarHeight, &bar, &child()));
        const QRect place = child().style()->subControlRect(QStyle::CC_TitleBar, &bar, button, &child());
        QMouseEvent over(QEvent::MouseMove, place.center(), child().mapToGlobal(place.center()), {}, {}, {});
        QApplication::sendEvent(&child(), &over);  // the tester's own is lost where the pointer already was
        QTest::mouseClick(&child(), Qt::LeftButton, {}, place.center());
    }
    /// Opens the menu by its letter and chooses the entry by keys.
    void chooseByKeys(Qt::Key letter, const char* entry) {
        QTest::keyClick(view().windowHandle(), letter, Qt::AltModifier);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (int i = 0; i < 20 && menu->activeAction()->text().remove(u'&') != QLatin1String(entry); ++i)
            QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    }

    Session session;
    QtPlatform platform{{.directory = "/tmp", .devices = {}}};
    std::optional<PageOfInputs> page;
    std::string heard;  ///< the page's values when it had been closed
};

TEST_F(Closing, CommitsNothing) {
    struct Way {
        const char* name;
        std::function<void()> close;
        bool handsOverSteps = true;
    };
    const Way ways[] = {
        {"the cross", [this] { pressInTitle(QStyle::SC_TitleBarCloseButton); }},
        {"Ctrl+W", [this] { QTest::keyClick(view().windowHandle(), Qt::Key_W, Qt::ControlModifier); }},
        {"the menu", [this] { chooseByKeys(Qt::Key_W, "Close all"); }},
        {"the program itself", [this] { unload(); }, false},
        {"the end of the program", [this] { view().close(); }},
    };
    struct Beginning {
        const char* name;
        std::function<QWidget&()> control;
        std::function<void(QWidget&)> act;
        const char* steps;  ///< what the page holds when it has heard of the steps
    };
    const auto keys = [](const char* typed) {
        return [typed](QWidget& control) { QTest::keyClicks(&control, QString::fromLatin1(typed)); };
    };
    const auto right = [](QWidget& control) { QTest::keyClick(&control, Qt::Key_Right); };
    const auto drag = [](QWidget& control) {
        const QPoint handle(control.width() * 42 / 100, control.height() / 2);
        QTest::mousePress(&control, Qt::LeftButton, {}, handle);
        QTest::mouseMove(&control, handle + QPoint(20, 0));
    };
    const auto box = [this]() -> QWidget& { return widgetOf(page->Text1); };
    const auto bar = [this]() -> QWidget& { return widgetOf(page->HScroll1); };
    const auto slider = [this]() -> QWidget& { return widgetOf(page->Slider1); };
    const Beginning beginnings[] = {
        {"a box that was only looked at", box, keys(""), "123 100 0"},
        {"typing in a box", box, keys("9"), "123 100 0"},
        {"typing in a bar", bar, keys("7"), "123 100 0"},
        {"a drag", bar, drag, "123 100 0"},
        {"a step of a bar", bar, right, "123 101 0"},
        {"a step of a switch", slider, right, "123 100 1"},
    };
    for (const Way& way : ways)
        for (const Beginning& begun : beginnings) {
            open();
            QWidget& control = begun.control();
            control.setFocus();
            begun.act(control);
            way.close();
            const std::string expected = way.handsOverSteps ? begun.steps : "123 100 0";
            EXPECT_EQ(heard, expected) << begun.name << ", closed by " << way.name;
            if (page) unload();
            EXPECT_EQ(heard, expected) << begun.name << ", closed by " << way.name << " and gone";
        }
}

TEST_F(Closing, ByAKeyOfThePageItselfLetsGoOfTheKeyThatIsPressed) {
    open();
    page->First.OnClick([this] { platform.closeWindow(*page); });
    const QPointer<QWidget> key = &widgetOf(page->First);
    QTest::mouseClick(key, Qt::LeftButton);
    EXPECT_FALSE(key);
}

TEST_F(Closing, DisablesThePageWhileItWaitsForWhatIsDueAndClosesItOnce) {
    int closings = 0;
    open();
    page->OnClose([&] {
        ++closings;
        page->beginClosing();
    });
    auto& text = dynamic_cast<QLineEdit&>(widgetOf(page->Text1));
    for (const auto& close : {std::function([this] { view().close(); }), std::function([this] { child().close(); })}) {
        QTest::keyClicks(&text, QStringLiteral("9"));
        close();
        EXPECT_EQ(text.text(), QStringLiteral("123")) << "what was typed is gone, should the page stay";
    }
    child().close();
    EXPECT_EQ(closings, 1);
    for (const Control* control : std::initializer_list<const Control*>{&page->Text1, &page->HScroll1, &page->First})
        EXPECT_FALSE(widgetOf(*control).isEnabled());
    EXPECT_TRUE(child().isVisible());
    EXPECT_EQ(page->values(), "123 100 0");
}

}  // namespace
}  // namespace kestrel::qt
