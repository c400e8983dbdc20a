// A timer of the logic over the toolkit's precise timer.
// The coarse kind fires early and would break the pace of the link.
#pragma once

#include <QTimer>
#include <functional>

#include "platform/timer.h"

namespace kestrel::qt {

class QtTimer : public TimerBackend {
  public:
    explicit QtTimer(std::function<void()> onExpiry);
    void start(int milliseconds) override { timer_.start(milliseconds); }
    void stop() override { timer_.stop(); }

  private:
    QTimer timer_;
};

}  // namespace kestrel::qt
