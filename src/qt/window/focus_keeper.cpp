// Keeps the focus with a control that is locked for a while.
#include "qt/window/focus_keeper.h"

#include <QEvent>

namespace kestrel::qt {

bool FocusKeeper::eventFilter(QObject* object, QEvent* event) {
    auto* control = static_cast<QWidget*>(object);
    if (event->type() == QEvent::FocusIn) locked_ = nullptr;
    if (event->type() == QEvent::FocusOut && !control->isEnabled()) locked_ = control;
    if (event->type() == QEvent::EnabledChange && control == locked_ && control->isEnabled()) {
        locked_ = nullptr;
        const QWidget* now = control->window()->focusWidget();
        if (!now || now->isAncestorOf(control)) control->setFocus(Qt::OtherFocusReason);
    }
    return QObject::eventFilter(object, event);
}

}  // namespace kestrel::qt
