// A periodic timer with an interval and a switch.
// See timer.h.
#include "platform/timer.h"

#include "platform/platform.h"

namespace kestrel {

void Timer::assigned(const void* property, bool changed) {
    if (property == &Enabled && !changed) return;
    if (property == &Interval && !Enabled) return;
    if (!backend_)
        backend_ = platform().makeTimer([this] {
            if (handler_) handler_();
        });
    if (Enabled && Interval > 0)
        backend_->start(Interval);
    else
        backend_->stop();
}

}  // namespace kestrel
