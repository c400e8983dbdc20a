// The timers of the logic, all on one timer of the toolkit.
#include "qt/io/qt_timer.h"

#include <algorithm>
#include <chrono>

#include "qt/io/deliver.h"

namespace kestrel::qt {

void QtTimer::start(int milliseconds) {
    interval_ = milliseconds;
    due_ = QDeadlineTimer(milliseconds, Qt::PreciseTimer);
    queue_->wait(*this);
}

void TimerQueue::wait(QtTimer& timer) {
    forget(timer);
    waiting_.push_back(&timer);
    if (timer.due() < wakes_) wakeForFirst();
}

void TimerQueue::forget(QtTimer& timer) {
    std::erase(waiting_, &timer);
    std::replace(firing_.begin(), firing_.end(), &timer, static_cast<QtTimer*>(nullptr));
}

QtTimer* TimerQueue::first() const {
    const auto sooner = [](const QtTimer* one, const QtTimer* other) { return one->due() < other->due(); };
    const auto found = std::min_element(waiting_.begin(), waiting_.end(), sooner);
    return found == waiting_.end() ? nullptr : *found;
}

/// The precise kind, since the coarse one fires early and would break the pace of the link.
void TimerQueue::wakeForFirst() {
    if (toolkitTimer_ != 0) killTimer(toolkitTimer_);
    toolkitTimer_ = 0;
    wakes_ = QDeadlineTimer(QDeadlineTimer::Forever);
    const QtTimer* next = first();
    if (!next) return;
    wakes_ = next->due();
    const auto pause = std::chrono::ceil<std::chrono::milliseconds>(wakes_.remainingTimeAsDuration());
    toolkitTimer_ = startTimer(pause, Qt::PreciseTimer);
}

/// One timer a call, so that other events come between. Its handler may start it anew, take it away, or run an event
/// loop of its own: the others go on in that, since the toolkit's timer is a new one by then, and no longer the one
/// that is being told of.
void TimerQueue::timerEvent(QTimerEvent* /*event*/) {
    QtTimer* const timer = first();
    if (!timer || !timer->due().hasExpired()) return wakeForFirst();
    std::erase(waiting_, timer);
    wakeForFirst();
    const auto handler = timer->onExpiry();
    firing_.push_back(timer);
    deliver(handler);
    QtTimer* const untouched = firing_.back();
    firing_.pop_back();
    if (untouched) untouched->start(untouched->interval());
}

}  // namespace kestrel::qt
