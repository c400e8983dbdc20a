// What the user can ask for beside the pages themselves.
#include "qt/window/page_commands.h"

#include <QApplication>
#include <QClipboard>
#include <QShortcut>

#include "link/loaded_pages.h"
#include "qt/io/deliver.h"
#include "qt/window/access_words.h"
#include "qt/window/child_window.h"
#include "qt/window/main_window_view.h"
#include "qt/window/page_focus.h"
#include "qt/window/page_help.h"
#include "qt/window/page_table.h"
#include "shell/put_back.h"

namespace kestrel::qt {

namespace {

/// The page in front, or null.
Page* frontPage(const MainWindowView& window) {
    const Window* const front = window.activeWindow();
    return front ? FindLoadedPage(front->name()) : nullptr;
}

/// One box of a kind: it comes to the front.
void bring(QWidget& box) {
    box.show();
    box.raise();
    box.activateWindow();
}

}  // namespace

PageCommands::PageCommands(MainWindowView& window, WindowList& menu, PageTabs& tabs) : window_(window) {
    const auto add = [&menu](AccessWord text, const QList<QKeySequence>& keys,
                             const std::function<void()>& run) -> QAction& {
        return menu.addCommand([text] { return accessWord(text); }, keys, run);
    };
    menu.addGap();
    add(AccessWord::FindPage, {Qt::CTRL | Qt::Key_K}, [this] { find(); });
    add(AccessWord::ReadAgain, {Qt::Key_F5}, [this] { readAgain(); });
    add(AccessWord::CopyPage, {Qt::CTRL | Qt::Key_C}, [this] { copy(); });
    add(AccessWord::ShowChanges, {Qt::CTRL | Qt::Key_H}, [this] { showChanges(); });
    add(AccessWord::PutLastBack, {Qt::CTRL | Qt::Key_Z}, [] { deliver(PutBackLast); });
    add(AccessWord::PageHelp, {Qt::Key_F1}, [this] { help(); });
    QAction& tabsShown = add(AccessWord::PageTabs, {}, [] {});
    tabsShown.setCheckable(true);
    QObject::connect(&tabsShown, &QAction::toggled, &tabs, [&tabs](bool shown) { tabs.show(shown); });
    for (const bool forward : {true, false}) {
        const QKeySequence keys = forward ? QKeySequence(Qt::Key_F6) : QKeySequence(Qt::SHIFT | Qt::Key_F6);
        const auto* key = new QShortcut(keys, &window);
        QObject::connect(key, &QShortcut::activated, &window, [this, forward] { nextGroup(forward); });
    }
}

void PageCommands::find() {
    if (!search_)
        search_ = new SearchBox(&window_, [this](const Findable& found, Control* control) {
            Page* const page = FindLoadedPage(found.page);
            if (page && control) focusControl(window_.childOf(*page), *control);
        });
    bring(*search_);
}

void PageCommands::readAgain() {
    if (Page* const page = frontPage(window_)) deliver([page] { page->UserReadAgain(); });
}

void PageCommands::copy() {
    if (Page* const page = frontPage(window_))
        QApplication::clipboard()->setText(tableOf(*page, window_.childOf(*page)));
}

void PageCommands::showChanges() {
    if (!changes_) changes_ = new ChangesBox(&window_);
    bring(*changes_);
}

void PageCommands::help() {
    const Page* const page = frontPage(window_);
    showHelp(window_, page ? page->name() : std::string(), page ? page->Caption.get() : std::string());
}

void PageCommands::nextGroup(bool forward) {
    if (Page* const page = frontPage(window_)) focusNextGroup(window_.childOf(*page), forward);
}

}  // namespace kestrel::qt
