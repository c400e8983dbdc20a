// Shows a tree of menu entries as a menu bar.
// Entries keep their order; those without entries below them are clicked, the others open.
#pragma once

#include <QAction>
#include <QMenu>
#include <functional>
#include <memory>
#include <vector>

#include "platform/menu.h"

class QMenuBar;

namespace kestrel::qt {

class MenuEntryView;

class MenuView {
  public:
    /// Shows the entries below `root` in the bar. Both outlive the view. `renamed` is called after a change of
    /// language.
    MenuView(MenuItem& root, QMenuBar& bar, std::function<void()> renamed);
    ~MenuView();

    /// The menu that an entry of the top level opens; made if it has none of its own.
    QMenu& menuOf(const std::string& name);
    /// Takes the captions that were changed since the last event.
    void bringUpToDate();

  private:
    /// Entries beside one another: their letters are chosen together.
    struct Level {
        std::vector<MenuEntryView*> entries;
        bool isStale = false;
    };

    void fill(MenuItem& parent, QWidget& place);
    void renameLater(Level& level);
    static void rename(Level& level);

    std::function<void()> renamed_;
    QObject context_;
    std::vector<std::unique_ptr<Level>> levels_;
    std::vector<std::unique_ptr<MenuEntryView>> entries_;
};

}  // namespace kestrel::qt
