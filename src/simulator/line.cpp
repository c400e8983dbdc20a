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
    return bytes_.front().first;
}

Bytes OutgoingLine::take(Micros now) {
    Bytes due;
    for (; !bytes_.empty() && bytes_.front().first <= now; bytes_.pop_front()) due.push_back(bytes_.front().second);
    return due;
}

void OutgoingLine::drop() {
    bytes_.clear();
    freeAt_ = 0;
}

}  // namespace kestrel::simulator
