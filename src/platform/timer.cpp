// A periodic timer with an interval and a switch.
#include "platform/timer.h"

#include "platform/control.h"
#include "platform/outside.h"
#include "platform/platform.h"

namespace kestrel {

Timer::~Timer() {
    if (owner_ == OfAPage) ForgetActs(this);
}

void Timer::runOut() {
    const Control::Speaking nobody(nullptr);
    if (handler_) handler_();
}

void Timer::assigned(const void* property, bool changed) {
    if (property == &Enabled && !changed) return;
    if (property == &Interval && !Enabled) return;
    if (owner_ == OfAPage) ForgetActs(this);  // what ran out before it was switched is past
    if (!backend_)
        backend_ = platform().makeTimer([this] {
            if (owner_ == OfTheLink) return runOut();
            FromOutside(
                this, [this] { runOut(); }, Source::Program);
        });
    if (Enabled && Interval > 0)
        backend_->start(Interval);
    else
        backend_->stop();
}

}  // namespace kestrel
