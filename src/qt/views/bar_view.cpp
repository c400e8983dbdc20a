// Shows a scroll bar.
#include "qt/views/bar_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <functional>

#include "qt/style/drawing.h"

namespace kestrel::qt {

namespace {

constexpr int FirstRepeat = 400;  // milliseconds that an end is held before it steps on
constexpr int NextRepeat = 40;
constexpr int WheelNotch = 120;
constexpr double HandleWidth = 12;

}  // namespace

BarView::BarView(ScrollBar& bar) : View(bar) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setPolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    repeat_.callOnTimeout([this] { repeatPressed(); });
}

void BarView::showState() {
    const bool isTheSame = value_ == model().shownValue() && isMoving_ == model().isMoving();
    if (isTheSame && lowest_ == model().Min && highest_ == model().Max) return;
    value_ = model().shownValue();
    isMoving_ = model().isMoving();
    lowest_ = model().Min;
    highest_ = model().Max;
    setMaximumWidth(sizeHint().width() * 13 / 8);
    valueShown();
}

QSize BarView::sizeHint() const { return {rowHeight(*this) * 5, rowHeight(*this)}; }

QSize BarView::minimumSizeHint() const { return {rowHeight(*this) * 3 - 6, rowHeight(*this)}; }

double BarView::ratio() const {
    if (highest_ <= lowest_) return 0;
    return (static_cast<double>(value_) - lowest_) / (static_cast<double>(highest_) - lowest_);
}

QRectF BarView::trough() const {
    const double end = std::max(22.0, fontMetrics().height() * 1.4);
    return QRectF(rect()).adjusted(end, 0, -end, 0);
}

QRectF BarView::handle() const {
    const QRectF track = trough();
    const double height = std::min(20.0, this->height() - 10.0);
    return {track.left() + ratio() * (track.width() - HandleWidth), (this->height() - height) / 2, HandleWidth, height};
}

BarView::Part BarView::partAt(const QPointF& point) const {
    const QRectF grip = handle();
    if (point.x() < trough().left()) return Part::Less;
    if (point.x() >= trough().right()) return Part::More;
    if (point.x() < grip.left()) return Part::LargeLess;
    return point.x() < grip.right() ? Part::Handle : Part::LargeMore;
}

int BarView::valueAt(double handleLeft) const {
    const QRectF track = trough();
    const double part = std::clamp((handleLeft - track.left()) / (track.width() - HandleWidth), 0.0, 1.0);
    return static_cast<int>(std::lround(lowest_ + part * (static_cast<double>(highest_) - lowest_)));
}

void BarView::stepBy(int amount) {
    setTyped({});
    act([amount](ScrollBar& bar) { bar.UserStepBy(amount); });
}

QString BarView::handleText() const {
    if (!typed_.isEmpty()) return typed_;
    return isMoving_ && bound() ? toQt(model().textOf(value_)) : QString();
}

void BarView::drawEnds(Brush& brush) const {
    const double end = trough().left();
    const auto color = [&](Part part, bool dead) {
        if (dead || unread() || !isEnabled()) return colors().line;
        return pressed_ == part ? colors().accent : colors().quietText;
    };
    drawArrow(brush, {0, 0, end, static_cast<double>(height())}, Arrow::Left, color(Part::Less, value_ <= lowest_));
    drawArrow(brush, {width() - end, 0, end, static_cast<double>(height())}, Arrow::Right,
              color(Part::More, value_ >= highest_));
}

void BarView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    drawEnds(brush);
    const QRectF track = trough();
    const QRectF grip = handle();
    const QRectF line(track.left(), height() / 2.0 - 3, track.width(), 6);
    if (unread()) {
        drawUnread(brush, line, 3);
        return drawMarks(brush, *this, QRectF(rect()).adjusted(3, 4, -3, -4));
    }
    drawShape(brush, line, 3, colors().field, colors().outline);
    const QColor strength = isEnabled() ? colors().accent : colors().outline;
    drawShape(brush, QRectF(line.topLeft(), QPointF(grip.center().x(), line.bottom())), 3, strength, strength);

    paintHandle(brush);
    drawMarks(brush, *this, QRectF(rect()).adjusted(3, 4, -3, -4));
}

void BarView::paintHandle(Brush& brush) const {
    const QColor strength = isEnabled() ? colors().accent : colors().outline;
    const QString text = handleText();
    if (text.isEmpty())
        return drawShape(brush, handle(), CornerRadius, isEnabled() ? strength : colors().panel, strength, 1.5);
    const QRectF grip = handle();
    const double wide = std::max(HandleWidth, fontMetrics().horizontalAdvance(text) + 12.0);
    const double left = std::clamp(grip.center().x() - wide / 2, 1.0, std::max(1.0, width() - wide - 1));
    const QRectF knob(left, grip.top() - 1, wide, grip.height() + 2);
    if (!typed_.isEmpty()) return paintField(brush, knob);
    drawShape(brush, knob, CornerRadius, strength, strength, 1.5);
    brush.setPen(colors().onAccent);
    brush.drawText(knob, static_cast<int>(Qt::AlignCenter), text);
}

void BarView::paintField(Brush& brush, const QRectF& knob) const {
    const bool fits = model().valueOf(typed_.toStdString()).has_value();
    drawShape(brush, knob, CornerRadius, colors().field, fits ? colors().accent : colors().alarm, 1.5);
    const double wide = fontMetrics().horizontalAdvance(typed_);
    const QRectF text(knob.center().x() - wide / 2, knob.top() + 3, wide, knob.height() - 6);
    if (chosen_)
        drawShape(brush, text.adjusted(-1, 0, 1, 0), 0, colors().accent, colors().accent);
    else
        drawShape(brush, {text.right() + 1, text.top(), 1, text.height()}, 0, colors().text, colors().text);
    brush.setPen(chosen_ ? colors().onAccent : fits ? colors().text : colors().alarm);
    brush.drawText(text, static_cast<int>(Qt::AlignCenter | Qt::TextDontClip), typed_);
}

void BarView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return event->ignore();
    setTyped({});
    pointer_ = event->position();
    pressed_ = partAt(pointer_);
    if (pressed_ == Part::Handle) {
        act([](ScrollBar& bar) { bar.UserHold(bar.shownValue()); });
        grip_ = pointer_.x() - handle().left();
    } else {
        step();
        repeat_.start(FirstRepeat);
    }
}

/// Until the end is let go, or the model has dropped what was held.
void BarView::repeatPressed() {
    if (!isMoving_) return repeat_.stop();
    step();
    repeat_.start(NextRepeat);
}

void BarView::step() {
    const Part under = partAt(pointer_);
    int amount = 0;
    if (pressed_ == Part::Less) amount = -1;
    if (pressed_ == Part::More) amount = 1;
    // A large step stops where the pointer is held.
    if (pressed_ == Part::LargeLess && under == Part::LargeLess) amount = -model().LargeChange;
    if (pressed_ == Part::LargeMore && under == Part::LargeMore) amount = model().LargeChange;
    act([amount](ScrollBar& bar) { bar.UserHold(static_cast<long long>(bar.shownValue()) + amount); });
}

void BarView::mouseMoveEvent(QMouseEvent* event) {
    pointer_ = event->position();
    if (pressed_ == Part::Handle && isMoving_)
        act([this](ScrollBar& bar) { bar.UserHold(valueAt(pointer_.x() - grip_)); });
}

void BarView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return event->ignore();
    repeat_.stop();
    const bool isDrag = pressed_ == Part::Handle;
    act([isDrag](ScrollBar& bar) { isDrag ? bar.UserCommit() : bar.UserSettle(); });
    pressed_ = Part::None;
    update();
}

void BarView::wheelEvent(QWheelEvent* event) {
    if (!hasFocus()) return event->ignore();
    wheelRest_ += event->angleDelta().y();
    const int notches = wheelRest_ / WheelNotch;
    wheelRest_ -= notches * WheelNotch;
    if (notches != 0) stepBy(notches);
    event->accept();
}

void BarView::keyPressEvent(QKeyEvent* event) {
    if (typed(*event)) return;
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Down:
            return stepBy(-1);
        case Qt::Key_Right:
        case Qt::Key_Up:
            return stepBy(1);
        case Qt::Key_PageDown:
            return stepBy(-model().LargeChange);
        case Qt::Key_PageUp:
            return stepBy(model().LargeChange);
        case Qt::Key_Home:
            return stepBy(lowest_ - value_);
        case Qt::Key_End:
            return stepBy(highest_ - value_);
        case Qt::Key_Escape:
            if (isMoving_) {
                pressed_ = Part::None;
                act(std::mem_fn(&ScrollBar::UserDrop));
                return;
            }
            [[fallthrough]];
        default:
            View::keyPressEvent(event);
    }
}

void BarView::focusOutEvent(QFocusEvent* event) {
    isLeaving(*this, *event) ? leave() : turnAway();
    View::focusOutEvent(event);
}

void BarView::hideEvent(QHideEvent* event) {
    leave();
    View::hideEvent(event);
}

void BarView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange && !isEnabled()) setTyped({});
    View::changeEvent(event);
}

void BarView::leave() {
    if (!commitTyped()) setTyped({});
    act(std::mem_fn(&ScrollBar::UserCommit));
    turnAway();
}

void BarView::turnAway() {
    repeat_.stop();
    pressed_ = Part::None;
    act(std::mem_fn(&ScrollBar::UserFinish));
}

void BarView::beginTyping() {
    if (!isEnabled() || !bound() || unread()) return;
    setFocus(Qt::OtherFocusReason);
    act(std::mem_fn(&ScrollBar::UserCommit));
    setTyped(toQt(model().textOf(value_)), true);
}

void BarView::setTyped(const QString& text, bool chosen) {
    if (text == typed_ && chosen == chosen_) return;
    typed_ = text;
    chosen_ = chosen;
    valueShown();
}

bool BarView::typed(const QKeyEvent& event) {
    constexpr int Longest = 8;
    const QString letter = event.text();
    const bool figure = writes(event) && letter.size() == 1 && QStringLiteral("0123456789.,-").contains(letter);
    if (figure && (chosen_ || typed_.size() < Longest)) {
        act(std::mem_fn(&ScrollBar::UserDrop));
        setTyped(chosen_ ? letter : typed_ + letter);
    } else if (event.key() == Qt::Key_Backspace || event.key() == Qt::Key_Delete) {
        setTyped(chosen_ ? QString() : typed_.chopped(std::min<qsizetype>(1, typed_.size())));
    } else if (event.key() == Qt::Key_Escape && !typed_.isEmpty()) {
        setTyped({});
    } else if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) {
        if (typed_.isEmpty() && !isMoving_) {
            beginTyping();
        } else {
            commitTyped();
            act(std::mem_fn(&ScrollBar::UserCommit));
        }
    } else {
        return figure;
    }
    return true;
}

bool BarView::commitTyped() {
    // What nobody has touched is not handed over: the board may have another value by now.
    if (chosen_) setTyped({});
    if (typed_.isEmpty()) return true;
    if (!bound()) return false;
    const std::optional<int> value = model().valueOf(typed_.toStdString());
    if (!value) return false;
    setTyped({});
    act([value](ScrollBar& bar) { bar.UserMove(*value); });
    return true;
}

QString BarView::valueInWords() const {
    const QString text = handleText();
    return text.isEmpty() ? toQt(model().textOf(value_)) : text;
}

std::optional<ViewBase::Span> BarView::span() const {
    if (unread()) return std::nullopt;
    return Span{lowest_, highest_, value_, 1};
}

void BarView::moveTo(int value) {
    act([value](ScrollBar& bar) { bar.UserStepTo(value); });
}

}  // namespace kestrel::qt
