// The menu of open windows.
// See window_list.h.
#include "platform/qt/window_list.h"

#include <QMdiSubWindow>

#include "platform/qt/mnemonics.h"
#include "platform/qt/words.h"

namespace kestrel::qt {

WindowList::WindowList(QMenu& menu, PageArea& area, const std::function<void()>& closeAll) : menu_(menu), area_(area) {
    addCommand(words::NextWindow, {Qt::CTRL | Qt::Key_F6, Qt::CTRL | Qt::Key_Tab},
               [&area] { area.activateNextSubWindow(); });
    addCommand(words::PreviousWindow, {Qt::CTRL | Qt::SHIFT | Qt::Key_F6, Qt::CTRL | Qt::SHIFT | Qt::Key_Tab},
               [&area] { area.activatePreviousSubWindow(); });
    addCommand(words::Cascade, {}, [&area] { area.cascadeSubWindows(); });
    addCommand(words::Tile, {}, [&area] { area.tileSubWindows(); });
    addCommand(words::CloseAll, {}, closeAll);
    menu.addSeparator();
    QObject::connect(&menu, &QMenu::aboutToShow, &area, [this] { listWindows(); });
}

void WindowList::addCommand(const QString& text, const QList<QKeySequence>& keys, const std::function<void()>& run) {
    QAction* action = menu_.addAction(text);
    action->setShortcuts(keys);
    QObject::connect(action, &QAction::triggered, &area_, run);
    commands_ += action;
}

void WindowList::listWindows() {
    qDeleteAll(windows_);
    windows_.clear();
    QStringList captions;
    for (const QAction* command : commands_) captions += command->text().remove(u'&');
    for (QMdiSubWindow* window : area_.subWindowList()) {
        QAction* action = menu_.addAction(window->windowTitle());
        const bool isActive = window == area_.activeSubWindow();
        action->setCheckable(isActive);
        action->setChecked(isActive);
        QObject::connect(action, &QAction::triggered, window, [this, window] { area_.setActiveSubWindow(window); });
        windows_ += action;
        captions += window->windowTitle();
    }
    const QStringList texts = withMnemonics(captions);
    for (qsizetype i = 0; i < texts.size(); ++i)
        (i < commands_.size() ? commands_[i] : windows_[i - commands_.size()])->setText(texts[i]);
}

}  // namespace kestrel::qt
