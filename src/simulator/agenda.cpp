// The agenda's queue.
// An action may enter further actions, also for the present time.
#include "simulator/agenda.h"

#include <algorithm>
#include <utility>

namespace kestrel::simulator {

void Agenda::at(Micros when, std::function<void()> action) {
    entries_.push({std::max(when, now_), sequence_++, std::move(action)});
}

std::optional<Micros> Agenda::next() const {
    if (entries_.empty()) return std::nullopt;
    return entries_.top().when;
}

void Agenda::runUntil(Micros now) {
    while (!entries_.empty() && entries_.top().when <= now) {
        now_ = entries_.top().when;
        const auto action = entries_.top().action;
        entries_.pop();
        action();
    }
    now_ = std::max(now_, now);
}

}  // namespace kestrel::simulator
