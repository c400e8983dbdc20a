// The menu of open windows.
#include "qt/window/window_list.h"

#include <QMdiSubWindow>

#include "qt/window/mnemonics.h"
#include "qt/window/words.h"

namespace kestrel::qt {

WindowList::WindowList(QMenu& menu, PageArea& area, const std::function<void()>& closeAll) : menu_(menu), area_(area) {
    addCommand(Word::NextWindow, {Qt::CTRL | Qt::Key_F6, Qt::CTRL | Qt::Key_Tab},
               [&area] { area.activateNextSubWindow(); });
    addCommand(Word::PreviousWindow, {Qt::CTRL | Qt::SHIFT | Qt::Key_F6, Qt::CTRL | Qt::SHIFT | Qt::Key_Tab},
               [&area] { area.activatePreviousSubWindow(); });
    addCommand(Word::Cascade, {}, [&area] { area.cascadeSubWindows(); });
    addCommand(Word::Tile, {}, [&area] { area.tileSubWindows(); });
    addCommand(Word::CloseWindow, {Qt::CTRL | Qt::Key_F4, Qt::CTRL | Qt::Key_W},
               [&area] { area.closeActiveSubWindow(); });
    addCommand(Word::CloseAll, {}, closeAll);
    menu.addSeparator();
    QObject::connect(&menu, &QMenu::aboutToShow, &area, [this] { listWindows(); });
}

void WindowList::addCommand(Word text, const QList<QKeySequence>& keys, const std::function<void()>& run) {
    QAction* action = menu_.addAction(word(text));
    action->setShortcuts(keys);
    QObject::connect(action, &QAction::triggered, &area_, run);
    commands_.emplace_back(text, action);
}

void WindowList::listWindows() {
    qDeleteAll(windows_);
    windows_.clear();
    QStringList captions;
    for (const auto& [text, action] : commands_) captions += word(text);
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
