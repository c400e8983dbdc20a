// The timers of the logic, all on one timer of the toolkit.
// The link stops and starts its time-outs with every exchange; with one timer of the toolkit for each, most of their
// wake-ups would find nothing due.
#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <functional>
#include <memory>
#include <vector>

#include "platform/timer.h"

namespace kestrel::qt {

class QtTimer;

/// Wakes once for the timer that is due first, and works in nested event loops too.
class TimerQueue : public QObject {
  public:
    void wait(QtTimer& timer);
    void forget(QtTimer& timer);

  protected:
    void timerEvent(QTimerEvent* event) override;

  private:
    QtTimer* first() const;
    void wakeForFirst();

    std::vector<QtTimer*> waiting_;
    std::vector<QtTimer*> firing_;  ///< whose handlers run, the innermost last; null once started anew, stopped or gone
    QDeadlineTimer wakes_{QDeadlineTimer::Forever};
    int toolkitTimer_ = 0;
};

class QtTimer : public TimerBackend {
  public:
    QtTimer(std::shared_ptr<TimerQueue> queue, std::function<void()> onExpiry)
        : queue_(std::move(queue)), onExpiry_(std::move(onExpiry)) {}
    ~QtTimer() override { stop(); }
    QtTimer(const QtTimer&) = delete;
    QtTimer& operator=(const QtTimer&) = delete;

    void start(int milliseconds) override;
    void stop() override { queue_->forget(*this); }

    const QDeadlineTimer& due() const { return due_; }
    int interval() const { return interval_; }
    const std::function<void()>& onExpiry() const { return onExpiry_; }

  private:
    std::shared_ptr<TimerQueue> queue_;
    std::function<void()> onExpiry_;
    QDeadlineTimer due_;
    int interval_ = 0;
};

}  // namespace kestrel::qt
