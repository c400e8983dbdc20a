// A page on the screen in memory, and the user before it: what the tests of the views share.
// The views stand on the real toolkit; the pages are models that are made for the test.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <functional>
#include <memory>
#include <vector>

#include "platform/window.h"
#include "qt/io/qt_platform.h"
#include "qt/style/style.h"
#include "qt/views/view.h"
#include "qt/window/page_view.h"
#include "shell/session.h"

namespace kestrel::qt::testing {

/// A page whose layout is given.
class TestPage : public Window {
  public:
    explicit TestPage(std::function<Layout()> arrange) : Window("FrmTest"), arrange_(std::move(arrange)) {}
    Layout Arrange() override { return arrange_(); }

  private:
    std::function<Layout()> arrange_;
};

inline std::vector<ViewBase*> viewsOf(const QWidget& page) {
    std::vector<ViewBase*> result;
    for (QWidget* widget : page.findChildren<QWidget*>())
        if (auto* view = dynamic_cast<ViewBase*>(widget)) result.push_back(view);
    return result;
}

class ViewTest : public ::testing::Test {
  protected:
    ViewTest() {
        setPlatform(&platform_);
        applyLook(*qApp, Theme::Light);
    }
    ~ViewTest() override { setPlatform(nullptr); }
    void TearDown() override { closeAll(); }
    /// Builds the page and shows it as the active window.
    QWidget& show(Window& window) {
        pages_.emplace_back(buildPage(window));
        QWidget& page = *pages_.back();
        page.resize(page.sizeHint());
        page.show();
        page.activateWindow();
        (void)QTest::qWaitForWindowActive(&page);
        settle();
        return page;
    }
    QWidget& show(std::function<Layout()> arrange) {
        models_.push_back(std::make_unique<TestPage>(std::move(arrange)));
        return show(*models_.back());
    }
    /// The same for a page of the program, which is loaded first.
    template <class P>
    QWidget& showLoaded(P& page) {
        settleLayout(page.Arrange());
        page.Form_Load();
        return show(page);
    }
    /// Views go before the models that they show.
    void closeAll() { pages_.clear(); }

    /// The view that shows the control, on any page.
    ViewBase& viewOf(const Control& control) const {
        for (const auto& page : pages_)
            for (ViewBase* view : viewsOf(*page))
                if (view->shows(control)) return *view;
        throw std::logic_error("no view shows the control");
    }
    QWidget& widgetOf(const Control& control) const { return viewOf(control).widget(); }
    /// Lets everything that was asked for be laid out and painted.
    static void settle() {
        for (int i = 0; i < 5; ++i) QApplication::processEvents();
    }
    static void press(QWidget& widget, const std::vector<Qt::Key>& keys) {
        for (const Qt::Key key : keys) QTest::keyClick(&widget, key);
    }
    /// On what stands there in the widget.
    static void clickIn(QWidget& widget, QPoint at) {
        QWidget* child = widget.childAt(at);
        QWidget& target = child ? *child : widget;
        QTest::mouseClick(&target, Qt::LeftButton, {}, target.mapFrom(&widget, at));
    }
    /// The user presses Tab or clicks elsewhere.
    static void leave(QWidget& widget) { widget.clearFocus(); }

  private:
    Session session_;
    QtPlatform platform_{{.directory = QApplication::applicationDirPath().toStdString(), .devices = {}}};
    std::vector<std::unique_ptr<TestPage>> models_;
    std::vector<std::unique_ptr<QWidget>> pages_;
};

}  // namespace kestrel::qt::testing
