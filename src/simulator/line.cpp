// The boards' side of the serial line.
// A byte is there for the PC when its stop bit has passed.
#include "simulator/line.h"

#include <algorithm>

namespace kestrel::simulator {

void OutgoingLine::transmit(Micros from, const Bytes& bytes) {
    freeAt_ = std::max(freeAt_, from);
    for (const std::uint8_t byte : bytes) {
        freeAt_ += byteTime;
        bytes_.emplace_back(freeAt_, byte);
    }
}

std::optional<Micros> OutgoingLine::next() const {
    if (bytes_.empty()) return std::nullopt;
    const Micros arrived = bytes_.front().first;
    return latency_ > 0 ? (arrived + latency_ - 1) / latency_ * latency_ : arrived;
}

Bytes OutgoingLine::take(Micros now) {
    Bytes due;
    if (latency_ > 0) now = now / latency_ * latency_;
    for (; !bytes_.empty() && bytes_.front().first <= now; bytes_.pop_front()) due.push_back(bytes_.front().second);
    return due;
}

void OutgoingLine::drop() {
    bytes_.clear();
    freeAt_ = 0;
}

}  // namespace kestrel::simulator
