// What stands on the other end of the serial line in a test.
#include "support/line.h"

#include <algorithm>
#include <utility>

namespace kestrel::testing {

void ScriptedLine::send(Micros now, const Bytes& bytes) {
    sent.push_back({now, bytes});
    for (const Piece& piece : answer(bytes)) insert(now + piece.after, piece.bytes);
}

std::optional<Micros> ScriptedLine::nextEvent() const {
    if (coming_.empty()) return std::nullopt;
    return coming_.front().first;
}

Bytes ScriptedLine::take(Micros now) {
    Bytes arrived;
    while (!coming_.empty() && coming_.front().first <= now) {
        arrived.insert(arrived.end(), coming_.front().second.begin(), coming_.front().second.end());
        coming_.pop_front();
    }
    return arrived;
}

void ScriptedLine::insert(Micros when, const Bytes& bytes) {
    const auto later =
        std::find_if(coming_.begin(), coming_.end(), [when](const auto& piece) { return piece.first > when; });
    coming_.insert(later, {when, bytes});
}

std::optional<Micros> MachineLine::nextArrival(Micros limit) {
    for (Micros at = 0;;) {
        if (std::exchange(wasPresent_, present()) != present()) return at;
        const auto next = machine.nextEvent();
        if (!next || *next > limit) return std::nullopt;
        if (next == machine.nextOutput()) return next;
        at = *next;
        machine.advance(at);
    }
}

}  // namespace kestrel::testing
