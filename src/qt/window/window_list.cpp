// The menu of open windows.
#include "qt/window/window_list.h"

#include <QMdiSubWindow>

#include "qt/window/mnemonics.h"
#include "qt/window/words.h"

namespace kestrel::qt {

WindowList::WindowList(QMenu& menu, PageArea& area, const std::function<void()>& closeAll)
    : menu_(menu), area_(area), endOfCommands_(menu.addSeparator()) {
    const auto add = [this](Word text, const QList<QKeySequence>& keys, const std::function<void()>& run) {
        addCommand([text] { return word(text); }, keys, run);
    };
    add(Word::NextWindow, {Qt::CTRL | Qt::Key_F6, Qt::CTRL | Qt::Key_Tab}, [&area] { area.activateNextSubWindow(); });
    add(Word::PreviousWindow, {Qt::CTRL | Qt::SHIFT | Qt::Key_F6, Qt::CTRL | Qt::SHIFT | Qt::Key_Tab},
        [&area] { area.activatePreviousSubWindow(); });
    add(Word::Cascade, {}, [&area] { area.cascadeSubWindows(); });
    add(Word::Tile, {}, [&area] { area.tileSubWindows(); });
    add(Word::CloseWindow, {Qt::CTRL | Qt::Key_F4, Qt::CTRL | Qt::Key_W}, [&area] { area.closeActiveSubWindow(); });
    add(Word::CloseAll, {}, closeAll);
    QObject::connect(&menu, &QMenu::aboutToShow, &area, [this] { listWindows(); });
}

QAction& WindowList::addCommand(Text text, const QList<QKeySequence>& keys, const std::function<void()>& run) {
    auto* action = new QAction(text(), &menu_);
    action->setShortcuts(keys);
    action->setAutoRepeat(false);
    menu_.insertAction(endOfCommands_, action);
    QObject::connect(action, &QAction::triggered, &area_, run);
    commands_.emplace_back(std::move(text), action);
    return *action;
}

void WindowList::addGap() { menu_.insertSeparator(endOfCommands_); }

void WindowList::listWindows() {
    qDeleteAll(windows_);
    windows_.clear();
    QStringList captions;
    for (const auto& [text, action] : commands_) captions += text();
    for (QMdiSubWindow* window : area_.subWindowList()) {
        QAction* action = menu_.addAction(window->windowTitle());
        const bool isActive = window == area_.activeSubWindow();
        action->setCheckable(isActive);
        action->setChecked(isActive);
        QObject::connect(action, &QAction::triggered, window, [this, window] {
            if (window->isMinimized()) window->showNormal();
            area_.setActiveSubWindow(window);
        });
        windows_ += action;
        captions += window->windowTitle();
    }
    const QStringList texts = withMnemonics(captions);
    for (qsizetype i = 0; i < texts.size(); ++i)
        (i < commands_.size() ? commands_[i].second : windows_[i - commands_.size()])->setText(texts[i]);
}

}  // namespace kestrel::qt
