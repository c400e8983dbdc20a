// The timers of the logic on the system's monotonic clock.
// One list holds all that run; the event loop lets them run out, one a turn.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "platform/timer.h"

namespace kestrel::posix {

using Clock = std::chrono::steady_clock;

class PosixTimer;

class TimerList {
  public:
    /// When the first of them runs out; the end of all time where none runs.
    Clock::time_point next() const;
    /// Lets one that is due run out. False where none is.
    bool runOut();

  private:
    friend class PosixTimer;
    std::vector<PosixTimer*>::const_iterator first() const;
    std::vector<PosixTimer*> running_;
};

class PosixTimer : public TimerBackend {
  public:
    /// The list outlives the timer.
    PosixTimer(TimerList& list, std::function<void()> onExpiry);
    ~PosixTimer() override { PosixTimer::stop(); }

    void start(int milliseconds) override;
    void stop() override;

  private:
    friend class TimerList;
    TimerList& list_;
    std::shared_ptr<const std::function<void()>> onExpiry_;
    std::chrono::milliseconds interval_{0};
    Clock::time_point due_;
};

}  // namespace kestrel::posix
