// The whole program with a real frame window, drawn in memory, on the simulated machine in virtual time.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "link/param_table.h"
#include "qt/style/style.h"
#include "qt/views/pictures.h"
#include "qt/window/child_window.h"
#include "qt/window/main_window_view.h"
#include "shell/main_window.h"
#include "support/world.h"
#include "view_fixture.h"

namespace kestrel::qt::testing {

inline constexpr QSize SmallestScreen(1366, 768);

/// The virtual machine with a real frame window.
class ScreenPlatform : public kestrel::testing::VirtualPlatform {
  public:
    void showMainWindow() override { view->showPainted(); }
    Extent mainWindowExtent() override { return view->extent(); }
    Extent measure(Window& window) override { return view->measure(window); }
    void showWindow(Window& window) override { view->showWindow(window); }
    void closeWindow(Window& window) override { view->closeWindow(window); }
    bool isMinimized(Window& window) override { return view->isMinimized(window); }
    Window* activeWindow() override { return view->activeWindow(); }

    std::unique_ptr<MainWindowView> view;
};

class ScreenTest : public ::testing::Test {
  protected:
    ScreenTest() {
        ResetProgram();
        setPictureFolder(QStringLiteral(KESTREL_PICTURES));
        applyLook(*qApp, Theme::Light);
        platform.install(kestrel::testing::InstallationDirectory());
        platform.lines[1] = &line;
        platform.put("kestrel.ini", "Com=1\r\nLingua=Italiano\r\n");
        RegisterPages(kestrel::AllPages());
        platform.view = std::make_unique<MainWindowView>(MDIForm1());
        MDIForm_Load("Kestrel");
        platform.view->resize(SmallestScreen);
        settle();
    }
    ~ScreenTest() override {
        ClosePages();
        settle();
        platform.view.reset();
        ResetProgram();
    }

    /// One turn of the event loop: everything must be in its place before it is painted for the first time.
    static void settle() { QApplication::processEvents(); }
    /// Whether a value that a page asked for has not come; a write may be held back for ever by a page that was closed.
    static bool missing() {
        for (int bank = 0; bank < Banks; ++bank)
            for (int number = 1; number < RecordCount(bank); ++number)
                if ((ParamFlags(bank, number) & (flag::Watched | flag::Valid)) == flag::Watched) return true;
        return false;
    }
    bool unread() const {
        const std::vector<ViewBase*> views = viewsOf(*platform.view);
        return std::any_of(views.begin(), views.end(), [](const ViewBase* view) { return view->unread(); });
    }
    void fill() {
        constexpr int LongestWait = 60'000;  // virtual milliseconds
        for (int waited = 0; waited < LongestWait && (missing() || unread()); waited += 20) platform.run(20);
        EXPECT_FALSE(missing());
        EXPECT_FALSE(unread());
        settle();
    }
    ChildWindow& open(const MenuRow& row) {
        MDIForm1().entry(row.name).UserClick();
        fill();
        return platform.view->childOf(*FindLoadedPage(row.page));
    }
    static std::vector<MenuRow> rows() {
        std::vector<MenuRow> result;
        for (const MenuRow& row : MenuTree())
            if (row.page) result.push_back(row);
        return result;
    }
    static void choose(int language) {
        MDIForm1().smnuLingue(language).UserClick();
        settle();
    }

    ScreenPlatform platform;
    kestrel::testing::MachineLine line{kestrel::testing::World::still()};
};

}  // namespace kestrel::qt::testing
