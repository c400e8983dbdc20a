// What the machine has to do and when: actions ordered by time, and by order of entry within one time.
// The agenda has no clock; it runs as far as its owner says.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "simulator/types.h"

namespace kestrel::simulator {

class Agenda {
  public:
    Micros now() const { return now_; }

    // An action for a time that has passed runs at the next opportunity.
    void at(Micros when, std::function<void()> action);
    void after(Micros delay, std::function<void()> action) { at(now_ + delay, std::move(action)); }

    std::optional<Micros> next() const;

    // Runs everything due by `now`, each action at its own time. A time in the past changes nothing.
    void runUntil(Micros now);

  private:
    struct Entry {
        Micros when;
        std::uint64_t sequence;
        std::function<void()> action;
    };
    struct Later {
        bool operator()(const Entry& a, const Entry& b) const {
            return a.when != b.when ? a.when > b.when : a.sequence > b.sequence;
        }
    };
    std::vector<Entry> entries_;  // a heap, the next action on top
    std::uint64_t sequence_ = 0;
    Micros now_ = 0;
};

}  // namespace kestrel::simulator
