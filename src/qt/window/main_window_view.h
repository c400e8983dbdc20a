// The frame window: menu bar, pages, status bar, and how it closes.
// Shows the main window's model; pages come and go as the program asks.
#pragma once

#include <QMainWindow>
#include <functional>
#include <memory>
#include <vector>

#include "platform/platform.h"
#include "platform/window.h"
#include "qt/window/menu_view.h"
#include "qt/window/page_area.h"
#include "qt/window/page_commands.h"
#include "qt/window/page_tabs.h"
#include "qt/window/start_page.h"
#include "qt/window/status_bar_view.h"
#include "qt/window/window_list.h"
#include "shell/main_window.h"

namespace kestrel::qt {

class ChildWindow;

class MainWindowView : public QMainWindow, public ControlView {
  public:
    /// The model outlives the view.
    explicit MainWindowView(MainWindow& model);
    ~MainWindowView() override;

    /// What closing the window does; it ends the process.
    void onUserClose(std::function<void()> handler) { userClose_ = std::move(handler); }

    /// Shows the window and returns when it stands painted on the screen.
    void showPainted();
    /// Paints what has changed since the last event, for waits that deliver none.
    void paintChanges();
    Extent extent() const;
    Extent measure(Window& window);
    void showWindow(Window& window);
    void closeWindow(Window& window);
    bool isMinimized(Window& window);
    Window* activeWindow() const { return front_; }
    /// The page's own window, title bar included; made if it is not there yet.
    ChildWindow& childOf(Window& window);

    void controlChanged() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void renamed();
    void activated(QMdiSubWindow* child);
    void closePages();

    MainWindow& model_;
    std::function<void()> userClose_;
    PageArea* area_;
    MenuView menu_;
    StatusBarView status_;
    StartPage* start_;
    WindowList windowList_;
    PageTabs* tabs_;
    PageCommands commands_;
    std::vector<ChildWindow*> children_;
    Window* front_ = nullptr;
    bool isShowingPage_ = false;
};

}  // namespace kestrel::qt
