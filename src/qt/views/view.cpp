// What every view of a control shares.
#include "qt/views/view.h"

#include <QStringList>
#include <QToolTip>
#include <algorithm>

#include "platform/basic_controls.h"
#include "platform/window.h"
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
    const Standing now = standing();
    const bool changed = control_->changedFrom().has_value();
    if (now == shown_ && changed == shownChanged_) return;
    const bool isRead = (shown_ == Standing::Unread) != (now == Standing::Unread);
    shown_ = now;
    shownChanged_ = changed;
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

QString ViewBase::ownTip() const { return toQt(control_->ToolTip); }

QString ViewBase::tip() const {
    QStringList lines{ownTip(), standingInWords()};
    if (const auto& before = control_->changedFrom()) lines += word(Word::ChangedFrom).arg(inWords(*before));
    if (const auto limits = control_->entryLimits(); limits && !unread()) lines += limitsInWords(*limits);
    lines.removeAll(QString());
    return lines.join(u'\n');
}

bool ViewBase::showTip(const QHelpEvent& event) const {
    QToolTip::showText(event.globalPos(), tip(), &widget_);
    return true;
}

QString ViewBase::wantedInWords() const { return inWords(control_->wantedText()); }

QString ViewBase::standingInWords() const {
    const QString has = inWords(control_->boardsText());
    const NotTaken* const lost = control_->notTaken() ? &*control_->notTaken() : nullptr;
    switch (standing()) {
        case Standing::Unread:
            return word(Word::NotReadYet);
        case Standing::Waiting:
            if (has == wantedInWords()) return word(Word::WaitingForTheBoard);
            return word(Word::WaitingForTheBoard) + QStringLiteral(": ") + changing(has, wantedInWords());
        case Standing::NotTaken:
            if (lost && lost->isWrongEntry) return word(Word::WrongEntry).arg(wantedInWords());
            if (lost && lost->copyOnly) return word(Word::CopyNotTaken).arg(wantedInWords());
            return word(Word::NotTaken).arg(wantedInWords(), has);
        case Standing::Old:
            return word(Word::OldSince).arg(toQt(control_->window()->oldSince(control_->board())));
        case Standing::Confirmed:
            break;
    }
    return {};
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
