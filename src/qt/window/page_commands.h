// What the user can ask for beside the pages themselves: find, read again, copy, what was changed, put back, help,
// tabs, and the way from group to group. Each stands in the menu of windows, with its key.
#pragma once

#include <QPointer>

#include "qt/window/changes_box.h"
#include "qt/window/page_tabs.h"
#include "qt/window/search_box.h"
#include "qt/window/window_list.h"

namespace kestrel::qt {

class MainWindowView;

class PageCommands {
  public:
    PageCommands(MainWindowView& window, WindowList& menu, PageTabs& tabs);

  private:
    void find();
    void readAgain();
    void copy();
    void showChanges();
    void help();
    void nextGroup(bool forward);

    MainWindowView& window_;
    QPointer<SearchBox> search_;
    QPointer<ChangesBox> changes_;
};

}  // namespace kestrel::qt
