// A timer of the logic over the toolkit's precise timer.
// See qt_timer.h.
#include "platform/qt/qt_timer.h"

#include <QPointer>
#include <chrono>

#include "platform/qt/deliver.h"

namespace kestrel::qt {

QtTimer::QtTimer(std::function<void()> onExpiry) : onExpiry_(std::move(onExpiry)) {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setSingleShot(true);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { fired(); });
}

void QtTimer::start(int milliseconds) {
    interval_ = milliseconds;
    running_ = true;
    due_ = QDeadlineTimer(milliseconds, Qt::PreciseTimer);
    if (!timer_.isActive() || fires_ > due_) waitUntilDue();
}

void QtTimer::waitUntilDue() {
    fires_ = due_;
    timer_.start(std::chrono::ceil<std::chrono::milliseconds>(due_.remainingTimeAsDuration()));
}

/// The handler may start the timer anew, or take it away.
void QtTimer::fired() {
    if (!running_) return;
    if (!due_.hasExpired()) {
        waitUntilDue();
        return;
    }
    const QPointer<QTimer> stillThere(&timer_);
    const auto handler = onExpiry_;
    deliver(handler);
    if (stillThere && running_ && !timer_.isActive()) start(interval_);
}

}  // namespace kestrel::qt
