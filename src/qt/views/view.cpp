// What every view of a control shares.
#include "qt/views/view.h"

#include <algorithm>

#include "platform/basic_controls.h"
#include "qt/window/words.h"

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
    showStanding();
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
}

void ViewBase::showStanding() {
    QString tip = ownToolTip();
    if (const QString words = standingInWords(); !words.isEmpty()) tip = tip.isEmpty() ? words : tip + u'\n' + words;
    if (tip != widget_.toolTip()) widget_.setToolTip(tip);
    const Standing now{unread(), waiting(), lost()};
    if (now == shown_) return;
    const bool isRead = shown_.unread != now.unread;
    shown_ = now;
    isRead ? valueShown() : widget_.update();
    QAccessibleEvent event(&widget_, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

QString ViewBase::spokenName() const {
    if (const std::string name = control_->accessibleName(); !name.empty()) return toQt(name);
    if (!control_->ToolTip.get().empty()) return toQt(control_->ToolTip);
    return control_->frame() ? toQt(control_->frame()->accessibleName()) : QString();
}

QString ViewBase::spokenValue() const { return unread() ? word(Word::NotReadYet) : valueInWords(); }

QString ViewBase::spokenDescription() const {
    const QString words = standingInWords();
    return words.isEmpty() ? toQt(control_->ToolTip) : words;
}

QString ViewBase::ownToolTip() const { return toQt(control_->ToolTip); }

QString ViewBase::standingInWords() const {
    if (unread()) return word(Word::NotReadYet);
    if (waiting()) return word(Word::WaitingForTheBoard);
    if (!lost()) return {};
    const NotTaken& change = *control_->notTaken();
    if (change.copyOnly) return word(Word::CopyNotTaken).arg(inWords(change.wanted));
    return word(Word::NotTaken).arg(inWords(change.wanted), inWords(control_->text()));
}

bool ViewBase::beginsAct(const QEvent& event) {
    switch (event.type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
            return true;
        case QEvent::KeyPress: {
            const int key = static_cast<const QKeyEvent&>(event).key();
            return key != Qt::Key_Tab && key != Qt::Key_Backtab;
        }
        default:
            return false;
    }
}

void ViewBase::valueShown() {
    widget_.update();
    if (!QAccessible::isActive() || !bound()) return;
    QAccessibleValueChangeEvent event(&widget_, spokenValue());
    QAccessible::updateAccessibility(&event);
    QAccessibleEvent inWords(&widget_, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&inWords);
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
