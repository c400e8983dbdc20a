// The timers of the logic on the system's monotonic clock.
#include "posix/posix_timer.h"

#include <algorithm>

namespace kestrel::posix {

std::vector<PosixTimer*>::const_iterator TimerList::first() const {
    return std::min_element(running_.begin(), running_.end(),
                            [](const auto* one, const auto* other) { return one->due_ < other->due_; });
}

Clock::time_point TimerList::next() const {
    const auto found = first();
    return found == running_.end() ? Clock::time_point::max() : (*found)->due_;
}

bool TimerList::runOut() {
    const auto found = first();
    if (found == running_.end()) return false;
    PosixTimer* const timer = *found;
    const auto now = Clock::now();
    if (timer->due_ > now) return false;
    timer->due_ = now + timer->interval_;
    const auto call = timer->onExpiry_;  // the handler may take the timer away
    (*call)();
    return true;
}

PosixTimer::PosixTimer(TimerList& list, std::function<void()> onExpiry)
    : list_(list), onExpiry_(std::make_shared<const std::function<void()>>(std::move(onExpiry))) {}

void PosixTimer::start(int milliseconds) {
    stop();
    interval_ = std::chrono::milliseconds(milliseconds);
    due_ = Clock::now() + interval_;
    list_.running_.push_back(this);
}

void PosixTimer::stop() { std::erase(list_.running_, this); }

}  // namespace kestrel::posix
