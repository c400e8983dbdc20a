// What the views of slider and rotary switches share.
#include "qt/views/stepped_view.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QWheelEvent>
#include <algorithm>

#include "qt/style/drawing.h"
#include "qt/window/words.h"

namespace kestrel::qt {

SteppedView::SteppedView(SteppedSwitch& stepped)
    : View(stepped),
      gesture_([this] { valueShown(); },
               [this](int value) { return act([&](SteppedSwitch& moved) { moved.UserMove(value); }); }) {
    setFocusPolicy(Qt::StrongFocus);
    setPolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SteppedView::showState() {
    if (!model().actWaits()) gesture_.taken();
    QStringList labels;
    for (const std::string& label : model().labels()) labels.append(toQt(label));
    const bool relabelled = labels != labels_;
    const bool moved = position_ != model().Position;
    labels_ = labels;
    position_ = model().Position;
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

void SteppedView::stepBy(int amount) { gesture_.step(std::max(0, std::min(position() + amount, top()))); }

void SteppedView::choose(int position) {
    gesture_.hold(position);
    gesture_.commit();
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
            return gesture_.step(0);
        case Qt::Key_End:
            return gesture_.step(std::max(0, top()));
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            gesture_.commit();
            return openMenu();
        case Qt::Key_Escape:
            if (gesture_.active()) return gesture_.cancel();
            [[fallthrough]];
        default:
            View::keyPressEvent(event);
    }
}

void SteppedView::focusOutEvent(QFocusEvent* event) {
    gesture_.commit();
    View::focusOutEvent(event);
    update();
}

void SteppedView::hideEvent(QHideEvent* event) {
    gesture_.commit();
    View::hideEvent(event);
}

void SteppedView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange && !isEnabled()) gesture_.cancel();
    View::changeEvent(event);
}

QString SteppedView::valueInWords() const { return outOfRange() ? qt::outOfRange(positionText()) : positionText(); }

std::optional<ViewBase::Span> SteppedView::span() const {
    if (unread()) return std::nullopt;
    return Span{0, std::max(0, top()), position(), 1};
}

void SteppedView::moveTo(int value) {
    if (!unread()) gesture_.step(std::max(0, std::min(value, top())));
}

}  // namespace kestrel::qt
