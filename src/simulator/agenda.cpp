// The agenda's queue.
// An action may enter further actions, also for the present time.
#include "simulator/agenda.h"

#include <algorithm>
#include <utility>

namespace kestrel::simulator {

void Agenda::at(Micros when, std::function<void()> action) {
    entries_.push_back({std::max(when, now_), sequence_++, std::move(action)});
    std::push_heap(entries_.begin(), entries_.end(), Later());
}

std::optional<Micros> Agenda::next() const {
    if (entries_.empty()) return std::nullopt;
    return entries_.front().when;
}

void Agenda::runUntil(Micros now) {
    while (!entries_.empty() && entries_.front().when <= now) {
        now_ = entries_.front().when;
        std::pop_heap(entries_.begin(), entries_.end(), Later());
        const auto action = std::move(entries_.back().action);
        entries_.pop_back();
        action();
    }
    now_ = std::max(now_, now);
}

}  // namespace kestrel::simulator
