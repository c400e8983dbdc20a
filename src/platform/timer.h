// A periodic timer with an interval and a switch.
// Setting Enabled true on a running timer does not restart it; off and on does. A page's timer runs out between
// exchanges.
#pragma once

#include <functional>
#include <memory>

#include "platform/property.h"

namespace kestrel {

/// The machine's side of one timer; abstract because time comes from the system or from a test.
class TimerBackend {
  public:
    virtual ~TimerBackend() = default;
    /// Calls the handler every `milliseconds`, never early, until stopped.
    virtual void start(int milliseconds) = 0;
    virtual void stop() = 0;
};

class Timer : private PropertyOwner {
  public:
    enum Owner {
        OfAPage,   ///< runs out between exchanges
        OfTheLink  ///< runs out at once
    };
    explicit Timer(int interval = 0, Owner owner = OfAPage) : Interval(*this, interval), owner_(owner) {}
    ~Timer() override;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    Property<int> Interval;  ///< milliseconds; 0 never fires. Setting it on a running timer starts the interval anew
    Property<bool> Enabled{*this, false};
    void OnTimer(std::function<void()> handler) { handler_ = std::move(handler); }

  private:
    void assigned(const void* property, bool changed) override;
    void runOut();

    Owner owner_;
    std::function<void()> handler_;
    std::unique_ptr<TimerBackend> backend_;
};

}  // namespace kestrel
