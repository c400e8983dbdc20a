// Shows a stepped switch.
#include "qt/views/stepped_view.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QWheelEvent>
#include <algorithm>
#include <functional>
#include <utility>

#include "qt/style/drawing.h"
#include "qt/window/words.h"

namespace kestrel::qt {

namespace {

constexpr int WheelNotch = 120;
constexpr int MostButtons = 8;
constexpr int MostWords = 4;
constexpr int LeastButton = 22;
constexpr int ButtonMargin = 12;
constexpr int Inset = 3;  // from the widget to its shape, room for the focus ring

/// The switch round it has the focus, the keys and the wheel.
class PositionList : public QComboBox {
  protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

bool isNumber(const QString& label) {
    bool is = false;
    label.toDouble(&is);
    return is;
}

/// By the number and kind of the labels, so that the same page has the same controls in all languages.
bool fitButtons(const QStringList& labels) {
    const bool numbers = std::count_if(labels.begin(), labels.end(), isNumber) + 1 >= labels.size();
    return labels.size() <= (numbers ? MostButtons : MostWords);
}

}  // namespace

SteppedView::SteppedView(SteppedSwitch& stepped) : View(stepped) {
    setFocusPolicy(Qt::StrongFocus);
    setPolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* row = new QHBoxLayout(this);
    row->setSpacing(0);
}

void SteppedView::showState() {
    QStringList labels;
    for (const std::string& label : model().labels()) labels.append(toQt(label));
    if (const auto highest = model().highestOffered; highest && *highest < labels.size() - 1)
        labels.resize(*highest + 1);
    const bool relabelled = std::exchange(labels_, labels) != labels;
    const bool moved = std::exchange(position_, model().shownValue()) != model().shownValue();
    if (relabelled) relabel();
    showPosition();
    if (relabelled || moved) valueShown();
}

/// What is there stays where it can: another language has other labels for the same positions.
void SteppedView::relabel() {
    const bool fits = fitButtons(labels_);
    const bool isNew = fits ? !buttons_ || buttons_->buttons().size() != labels_.size() : !list_;
    if (isNew) rebuild();
    for (int i = 0; buttons_ && i <= top(); ++i) {
        auto* const button = buttons_->button(i);
        button->setText(QString(labels_[i]).replace(u'&', QStringLiteral("&&")));
        const int wide = fontMetrics().horizontalAdvance(labels_[i]) + ButtonMargin;
        button->setFixedSize(std::max(LeastButton, wide), rowHeight(*this));
    }
    if (list_) {
        list_->clear();
        list_->addItems(labels_);
    }
    updateGeometry();
}

/// What went before may be the sender of the present click.
void SteppedView::rebuild() {
    for (QWidget* child : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        child->hide();
        child->deleteLater();
        layout()->removeWidget(child);
    }
    delete std::exchange(buttons_, nullptr);
    list_ = nullptr;
    fitButtons(labels_) ? addButtons() : addList();
}

void SteppedView::addButtons() {
    buttons_ = new QButtonGroup(this);
    layout()->setContentsMargins(Inset, 0, Inset, 0);
    for (int i = 0; i <= top(); ++i) {
        auto* button = new QPushButton(this);
        button->setFlat(true);
        button->setCheckable(true);
        button->setAutoDefault(false);
        button->setFocusPolicy(Qt::NoFocus);
        buttons_->addButton(button, i);
        layout()->addWidget(button);
    }
    connect(buttons_, &QButtonGroup::idClicked, this, [this](int position) {
        setFocus(Qt::MouseFocusReason);
        choose(position);
        showPosition();
    });
}

void SteppedView::addList() {
    list_ = new PositionList;
    layout()->setContentsMargins(0, 0, 0, 0);
    list_->setFocusPolicy(Qt::NoFocus);
    layout()->addWidget(list_);
    connect(list_, &QComboBox::activated, this, [this](int position) {
        setFocus(Qt::MouseFocusReason);
        choose(position);
        showPosition();
    });
}

void SteppedView::showPosition() {
    const int shown = unread() || outOfRange() ? -1 : position_;
    if (list_) {
        list_->setPlaceholderText(positionText());
        list_->setCurrentIndex(shown);
        list_->setEnabled(!unread());
    }
    if (!buttons_) return;
    buttons_->setExclusive(false);  // none may be down
    for (QAbstractButton* button : buttons_->buttons()) button->setChecked(buttons_->id(button) == shown);
    buttons_->setExclusive(true);
}

QString SteppedView::positionText() const {
    if (unread()) return dash();
    return outOfRange() ? QString::number(position_) : labels_[position_];
}

QSize SteppedView::sizeHint() const {
    const QSize inside = layout()->sizeHint();
    return {std::max(inside.width(), LeastButton), rowHeight(*this)};
}

void SteppedView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    const QRectF body = QRectF(rect()).adjusted(Inset, Inset, -Inset, -Inset);
    if (unread())
        drawUnread(brush, body);
    else if (buttons_)
        drawShape(brush, body, CornerRadius, isEnabled() ? colors().button : colors().panel,
                  outOfRange() ? colors().alarm : colors().outline);
    if (buttons_ && standing() == Standing::Waiting) {
        // What the board has, beside what it is to have.
        const int at = static_cast<int>(labels_.indexOf(toQt(model().boardsText())));
        if (const QAbstractButton* button = buttons_->button(at))
            brush.fillRect(QRectF(button->x() + 4, body.bottom() - 5, button->width() - 8, 3), colors().waiting);
    }
    drawMarks(brush, *this, body);
}

void SteppedView::stepBy(int amount) {
    if (amount > 0 && position_ + amount > top()) return moveTo(std::max(position_, top()));
    act([amount](SteppedSwitch& stepped) { stepped.UserStepBy(amount); });
}

void SteppedView::choose(int position) {
    act([position](SteppedSwitch& stepped) { stepped.UserMove(position); });
}

void SteppedView::wheelEvent(QWheelEvent* event) {
    if (!hasFocus()) return event->ignore();
    wheelRest_ += event->angleDelta().y();
    const int notches = wheelRest_ / WheelNotch;
    wheelRest_ -= notches * WheelNotch;
    if (notches != 0) stepBy(notches);
    event->accept();
}

void SteppedView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Down:
        case Qt::Key_PageDown:
            if (list_ && (event->modifiers() & Qt::AltModifier)) return list_->showPopup();
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
            if (list_) list_->showPopup();
            return;
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
    return Span{0, std::max(0, top()), position_, 1};
}

void SteppedView::moveTo(int value) {
    act([value](SteppedSwitch& stepped) { stepped.UserStepTo(value); });
}

}  // namespace kestrel::qt
