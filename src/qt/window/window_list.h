// The menu of open windows: step through them, arrange them, close them, choose one.
// The list of windows is made anew each time that the menu opens.
#pragma once

#include <QMenu>
#include <functional>
#include <utility>

#include "qt/window/page_area.h"
#include "qt/window/words.h"

namespace kestrel::qt {

class WindowList {
  public:
    /// `closeAll` closes every page as its user would.
    WindowList(QMenu& menu, PageArea& area, const std::function<void()>& closeAll);

    using Text = std::function<QString()>;
    /// A command of its own kind before the list; its text is asked for each time that the menu opens. The keys do
    /// nothing while they are held.
    QAction& addCommand(Text text, const QList<QKeySequence>& keys, const std::function<void()>& run);
    /// What follows stands apart.
    void addGap();

  private:
    void listWindows();

    QMenu& menu_;
    PageArea& area_;
    QAction* endOfCommands_;
    QList<std::pair<Text, QAction*>> commands_;
    QList<QAction*> windows_;
};

}  // namespace kestrel::qt
