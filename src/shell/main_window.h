// The main window as a model: its menu tree, its status bar, its caption.
// A view binds to it; what the entries do is set at start-up.
#pragma once

#include <string>
#include <vector>

#include "platform/menu.h"
#include "platform/status_bar.h"

namespace kestrel {

class MainWindow : public Control {
  public:
    static constexpr int LanguageEntries = 10;  ///< smnuLingue(0) to smnuLingue(9)
    static constexpr int PortEntries = 4;       ///< mnuCox(1) to mnuCox(4)

    MainWindow();

    Property<std::string> Caption{*this, {}};
    StatusBar StatusBar1;
    LineStatus Line;

    /// The entries of the menu bar are its items.
    MenuItem& menuBar() { return menuBar_; }
    /// An entry by its name, such as "smnuTempi" or "mnuCox(2)". A name without an entry is a run-time error.
    MenuItem& entry(const std::string& name);
    MenuItem& smnuLingue(int index) { return entry("smnuLingue(" + std::to_string(index) + ")"); }
    MenuItem& mnuCox(int index) { return entry("mnuCox(" + std::to_string(index) + ")"); }

    /// Gives every entry its text from the language table.
    void SetMenuCaptions();

  private:
    MenuItem menuBar_{"menuBar"};
};

/// The one main window of the session.
MainWindow& MDIForm1();

/// What a menu entry does.
struct MenuRow {
    int level;  ///< 1 in the menu bar, 2 and 3 below
    const char* name;
    int line;             ///< of the language table; 0 keeps the design caption
    const char* caption;  ///< at design time
    const char* page;     ///< class name of the page that it opens, or null
};

/// The user chooses the entry of the menu that opens the page of this class name: nothing happens where it is disabled,
/// such as before the boards are known.
void ChooseEntryOf(const std::string& page);

/// The menu tree in its order, without the entries of languages and ports.
const std::vector<MenuRow>& MenuTree();

}  // namespace kestrel
