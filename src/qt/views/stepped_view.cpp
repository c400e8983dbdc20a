// What the views of stepped switches share.
#include "qt/views/stepped_view.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QWheelEvent>
#include <algorithm>
#include <functional>

#include "qt/style/drawing.h"
#include "qt/window/words.h"

namespace kestrel::qt {

SteppedView::SteppedView(SteppedSwitch& stepped) : View(stepped) {
    setFocusPolicy(Qt::StrongFocus);
    setPolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SteppedView::showState() {
    QStringList labels;
    for (const std::string& label : model().labels()) labels.append(toQt(label));
    if (const auto highest = model().highestOffered; highest && *highest < labels.size() - 1)
        labels.resize(*highest + 1);
    const bool relabelled = labels != labels_;
    const bool moved = position_ != model().shownValue();
    labels_ = labels;
    position_ = model().shownValue();
    if (relabelled) updateGeometry();
    if (relabelled || moved) valueShown();
}

QString SteppedView::positionText() const {
    if (unread()) return dash();
    return outOfRange() ? QString::number(position()) : labels_[position()];
}

int SteppedView::widestLabel() const {
    int widest = 0;
    for (const QString& label : labels_) widest = std::max(widest, fontMetrics().horizontalAdvance(label));
    return widest;
}

void SteppedView::stepBy(int amount) {
    if (amount > 0 && position_ + amount > top()) return moveTo(std::max(position_, top()));
    act([amount](SteppedSwitch& stepped) { stepped.UserStepBy(amount); });
}

void SteppedView::choose(int position) {
    act([position](SteppedSwitch& stepped) { stepped.UserMove(position); });
}

void SteppedView::openMenu() {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (int i = 0; i <= top(); ++i) {
        QAction* entry = menu->addAction(QString(labels_[i]).replace(u'&', QStringLiteral("&&")));
        entry->setCheckable(true);
        entry->setChecked(i == position());
        if (i == position()) menu->setActiveAction(entry);
        connect(entry, &QAction::triggered, this, [this, i] { choose(i); });
    }
    menu->popup(mapToGlobal(QPoint(0, height())));
}

void SteppedView::wheelEvent(QWheelEvent* event) {
    constexpr int Notch = 120;
    if (!hasFocus()) return event->ignore();
    wheelRest_ += event->angleDelta().y();
    const int notches = wheelRest_ / Notch;
    wheelRest_ -= notches * Notch;
    if (notches != 0) stepBy(notches);
    event->accept();
}

void SteppedView::keyPressEvent(QKeyEvent* event) {
    const bool alt = event->modifiers() & Qt::AltModifier;
    switch (event->key()) {
        case Qt::Key_Down:
            if (alt) return openMenu();
            [[fallthrough]];
        case Qt::Key_Left:
        case Qt::Key_PageDown:
            return stepBy(-1);
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_PageUp:
            return stepBy(1);
        case Qt::Key_Home:
            return moveTo(0);
        case Qt::Key_End:
            return moveTo(top());
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            act(std::mem_fn(&SteppedSwitch::UserCommit));
            return openMenu();
        case Qt::Key_Escape:
            if (bound() && model().isMoving()) {
                act(std::mem_fn(&SteppedSwitch::UserDrop));
                return;
            }
            [[fallthrough]];
        default:
            View::keyPressEvent(event);
    }
}

void SteppedView::focusOutEvent(QFocusEvent* event) {
    act(std::mem_fn(isLeaving(*this, *event) ? &SteppedSwitch::UserCommit : &SteppedSwitch::UserFinish));
    View::focusOutEvent(event);
    update();
}

void SteppedView::hideEvent(QHideEvent* event) {
    act(std::mem_fn(&SteppedSwitch::UserCommit));
    View::hideEvent(event);
}

QString SteppedView::valueInWords() const { return outOfRange() ? qt::outOfRange(positionText()) : positionText(); }

std::optional<ViewBase::Span> SteppedView::span() const {
    if (unread()) return std::nullopt;
    return Span{0, std::max(0, top()), position(), 1};
}

void SteppedView::moveTo(int value) {
    act([value](SteppedSwitch& stepped) { stepped.UserStepTo(value); });
}

}  // namespace kestrel::qt
