// A timer of the logic over the toolkit's precise timer.
// The coarse kind fires early and would break the pace of the link.
#pragma once

#include <QDeadlineTimer>
#include <QTimer>
#include <functional>

#include "platform/timer.h"

namespace kestrel::qt {

/// The link stops and starts its time-outs with every exchange. A start that only puts the expiry off leaves the
/// toolkit's timer as it is, and what is left of the time is waited for when that one fires.
class QtTimer : public TimerBackend {
  public:
    explicit QtTimer(std::function<void()> onExpiry);
    void start(int milliseconds) override;
    void stop() override { running_ = false; }

  private:
    void fired();
    void waitUntilDue();

    QTimer timer_;
    QDeadlineTimer due_;    ///< when the handler is to be called
    QDeadlineTimer fires_;  ///< when the toolkit's timer fires, if it is active
    int interval_ = 0;
    bool running_ = false;
    std::function<void()> onExpiry_;
};

}  // namespace kestrel::qt
