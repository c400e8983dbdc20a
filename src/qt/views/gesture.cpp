// One gesture of the user on a stepped control.
#include "qt/views/gesture.h"

#include <utility>

namespace kestrel::qt {

Gesture::Gesture(std::function<void()> show, std::function<bool(int)> change)
    : show_(std::move(show)), change_(std::move(change)) {
    settle_.setSingleShot(true);
    settle_.setInterval(SettleTime);
    settle_.callOnTimeout([this] { commit(); });
}

void Gesture::hold(int value) {
    settle_.stop();
    preview_ = value;
    show_();
}

void Gesture::step(int value) {
    hold(value);
    settle_.start();
}

void Gesture::settle() {
    if (active()) settle_.start();
}

void Gesture::commit() {
    settle_.stop();
    if (!preview_) return;
    const int value = *preview_;
    preview_.reset();
    handedOver_ = value;
    if (change_(value)) taken();
    show_();
}

void Gesture::cancel() {
    settle_.stop();
    if (!preview_) return;
    preview_.reset();
    show_();
}

void Gesture::finish() { settle_.isActive() ? commit() : cancel(); }

}  // namespace kestrel::qt
