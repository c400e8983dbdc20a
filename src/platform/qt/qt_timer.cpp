// A timer of the logic over the toolkit's precise timer.
// See qt_timer.h.
#include "platform/qt/qt_timer.h"

#include "platform/qt/deliver.h"

namespace kestrel::qt {

QtTimer::QtTimer(std::function<void()> onExpiry) {
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [handler = std::move(onExpiry)] { deliver(handler); });
}

}  // namespace kestrel::qt
