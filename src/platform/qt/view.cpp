// What every view of a control shares.
// See view.h.
#include "platform/qt/view.h"

#include <algorithm>

#include "platform/controls.h"
#include "platform/qt/words.h"

namespace kestrel::qt {

ViewBase::ViewBase(Control& control, QWidget& widget) : control_(&control), widget_(widget) {
    control.bind(this);
    setPolicy(widget.sizePolicy().horizontalPolicy(), widget.sizePolicy().verticalPolicy());
}

void ViewBase::setPolicy(QSizePolicy::Policy horizontal, QSizePolicy::Policy vertical) {
    QSizePolicy policy(horizontal, vertical);
    policy.setRetainSizeWhenHidden(true);
    widget_.setSizePolicy(policy);
}

void ViewBase::controlChanged() {
    showFlags();
    showState();
}

void ViewBase::release() {
    if (control_) control_->unbind(this);
    control_ = nullptr;
}

void ViewBase::showFlags() {
    // The flags of the control alone: what stands round it rules through the widget tree.
    if (widget_.testAttribute(Qt::WA_ForceDisabled) == control_->Enabled) widget_.setEnabled(control_->Enabled);
    if (hidden_ == control_->Visible) {
        hidden_ = !control_->Visible;
        widget_.setVisible(!hidden_);
    }
    if (shownToolTip_ != control_->ToolTip.get()) {
        shownToolTip_ = control_->ToolTip;
        widget_.setToolTip(toQt(shownToolTip_));
    }
    if (shownWaiting_ != control_->waiting()) {
        shownWaiting_ = control_->waiting();
        widget_.update();
        QAccessibleEvent event(&widget_, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&event);
    }
}

QString ViewBase::spokenName() const {
    if (const std::string name = control_->accessibleName(); !name.empty()) return toQt(name);
    if (!control_->ToolTip.get().empty()) return toQt(control_->ToolTip);
    return control_->frame() ? toQt(control_->frame()->accessibleName()) : QString();
}

QString ViewBase::spokenDescription() const {
    if (control_->waiting()) return word(Word::WaitingForTheBoard);
    return toQt(control_->ToolTip);
}

void ViewBase::valueShown() {
    widget_.update();
    if (!QAccessible::isActive() || !bound()) return;
    QAccessibleValueChangeEvent event(&widget_, spokenValue());
    QAccessible::updateAccessibility(&event);
}

bool isLeaving(const QWidget& widget, const QFocusEvent& event) {
    switch (event.reason()) {
        case Qt::PopupFocusReason:
        case Qt::MenuBarFocusReason:
            return false;
        case Qt::ActiveWindowFocusReason:
            return widget.window()->isActiveWindow();
        default:
            return true;
    }
}

bool writes(const QKeyEvent& event) {
    return !(event.modifiers() & (Qt::AltModifier | Qt::ControlModifier | Qt::MetaModifier)) &&
           !event.text().isEmpty() && event.text().front().isPrint();
}

int rowHeight(const QWidget& widget) { return std::max(32, widget.fontMetrics().height() + 14); }

int textHeight(const QWidget& widget) { return widget.fontMetrics().height() + 8; }

}  // namespace kestrel::qt
