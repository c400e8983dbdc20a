// Shows a bar.
#include "qt/views/bar_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyleOptionSlider>
#include <QWheelEvent>
#include <functional>

#include "qt/style/drawing.h"
#include "qt/style/scroll_bar_style.h"

namespace kestrel::qt {

namespace {

constexpr int WheelNotch = 120;

}  // namespace

BarView::BarView(ScrollBar& bar) : View(bar) {
    setObjectName(QLatin1String(BarWithEnds));
    setOrientation(Qt::Horizontal);
    setInvertedControls(false);
    setFocusPolicy(bar.figure() ? Qt::NoFocus : Qt::StrongFocus);
    setPolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(this, &QAbstractSlider::sliderPressed, this, [this] { moved(); });
    connect(this, &QAbstractSlider::actionTriggered, this, [this] { moved(); });
}

void BarView::showState() {
    const bool isTheSame = value() == model().shownValue() && minimum() == model().Min && maximum() == model().Max;
    setMaximumWidth(sizeHint().width() * 13 / 8);
    if (isTheSame) return;
    const QSignalBlocker quiet(this);
    setRange(model().Min, model().Max);
    setPageStep(model().LargeChange);
    setValue(model().shownValue());
    valueShown();
}

void BarView::moved() {
    const int wanted = sliderPosition();
    const bool isDropped = hasBegun_ && bound() && !model().isMoving();
    if (!isDropped) act([wanted](ScrollBar& bar) { bar.UserHold(wanted); });
    hasBegun_ = isPressed_;
    if (bound()) showState();
}

void BarView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return event->ignore();
    if (focusProxy()) focusProxy()->setFocus(Qt::MouseFocusReason);
    isPressed_ = true;
    hasBegun_ = false;
    View::mousePressEvent(event);
    update();
}

void BarView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return event->ignore();
    const bool isDrag = isSliderDown();
    View::mouseReleaseEvent(event);
    isPressed_ = false;
    act([isDrag](ScrollBar& bar) { isDrag ? bar.UserCommit() : bar.UserSettle(); });
    update();
}

void BarView::wheelEvent(QWheelEvent* event) {
    const QWidget* const keys = focusProxy() ? focusProxy() : this;
    if (!keys->hasFocus()) return event->ignore();
    wheelRest_ += event->angleDelta().y();
    const int notches = wheelRest_ / WheelNotch;
    wheelRest_ -= notches * WheelNotch;
    if (notches != 0) act([notches](ScrollBar& bar) { bar.UserStepBy(notches); });
    event->accept();
}

void BarView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && model().isMoving()) return act(std::mem_fn(&ScrollBar::UserDrop)), void();
    hasBegun_ = false;
    View::keyPressEvent(event);
}

void BarView::keyReleaseEvent(QKeyEvent* event) {
    if (!event->isAutoRepeat() && bound() && model().isHeld() && !isPressed_) act(std::mem_fn(&ScrollBar::UserSettle));
    View::keyReleaseEvent(event);
}

void BarView::focusOutEvent(QFocusEvent* event) {
    act(std::mem_fn(isLeaving(*this, *event) ? &ScrollBar::UserCommit : &ScrollBar::UserFinish));
    View::focusOutEvent(event);
}

void BarView::hideEvent(QHideEvent* event) {
    act(std::mem_fn(&ScrollBar::UserCommit));
    View::hideEvent(event);
}

QRectF BarView::partOf(QStyle::SubControl part) const {
    QStyleOptionSlider option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_ScrollBar, &option, part, this);
}

void BarView::drawEnds(Brush& brush) const {
    const auto draw = [&](QStyle::SubControl part, Arrow direction, bool isDead) {
        const bool isUnder = isPressed_ && partOf(part).contains(mapFromGlobal(QCursor::pos()));
        const QColor color = isDead || unread() || !isEnabled() ? colors().line
                             : isUnder                          ? colors().accent
                                                                : colors().quietText;
        drawArrow(brush, partOf(part), direction, color);
    };
    draw(QStyle::SC_ScrollBarSubLine, Arrow::Left, value() <= minimum());
    draw(QStyle::SC_ScrollBarAddLine, Arrow::Right, value() >= maximum());
}

void BarView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    drawEnds(brush);
    const QRectF groove = partOf(QStyle::SC_ScrollBarGroove);
    const QRectF line(groove.left(), height() / 2.0 - 3, groove.width(), 6);
    if (unread()) {
        drawUnread(brush, line, 3);
    } else {
        const QRectF handle = partOf(QStyle::SC_ScrollBarSlider);
        const QColor strength = !isEnabled() || old()             ? colors().outline
                                : standing() == Standing::Waiting ? colors().waiting
                                                                  : colors().accent;
        drawShape(brush, line, 3, colors().field, colors().outline);
        drawShape(brush, QRectF(line.topLeft(), QPointF(handle.center().x(), line.bottom())), 3, strength, strength);
        drawShape(brush, handle, CornerRadius, isEnabled() ? strength : colors().panel, strength, 1.5);
    }
    if (!model().figure()) drawMarks(brush, *this, QRectF(rect()).adjusted(3, 4, -3, -4));
}

std::optional<ViewBase::Span> BarView::span() const {
    if (unread()) return std::nullopt;
    return Span{minimum(), maximum(), value(), 1};
}

void BarView::moveTo(int value) {
    act([value](ScrollBar& bar) { bar.UserStepTo(value); });
}

}  // namespace kestrel::qt
