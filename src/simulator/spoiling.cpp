// Faults on replies, applied in the order in which a real line would: at the board, on the wire, behind the reply.
// Every detail is drawn from the generator of its own kind.
#include "simulator/spoiling.h"

#include <utility>

namespace kestrel::simulator {
namespace {

std::size_t placeIn(std::size_t size, Random& random) {
    return static_cast<std::size_t>(random.between(0, static_cast<std::int64_t>(size) - 1));
}

void flipBit(Bytes& bytes, Random& random) {
    const std::size_t at = placeIn(bytes.size(), random);
    bytes[at] = static_cast<std::uint8_t>(bytes[at] ^ (1U << random.between(0, 7)));
}

// Doubled or foreign, anywhere in the reply, its two ends included.
void insertByte(Bytes& bytes, Random& random) {
    const std::size_t at = placeIn(bytes.size() + 1, random);
    const std::uint8_t byte = at > 0 && random.chance(0.5) ? bytes[at - 1] : random.byte();
    bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(at), byte);
}

void removeByte(Bytes& bytes, Random& random) {
    bytes.erase(bytes.begin() + static_cast<std::ptrdiff_t>(placeIn(bytes.size(), random)));
}

// Two bytes of the value change places; where that changes nothing, one of them and the sum are off by the same.
void spoilUnseen(Bytes& bytes, Random& random) {
    if (bytes.size() > 2 && bytes[0] != bytes[1]) {
        std::swap(bytes[0], bytes[1]);
        return;
    }
    const auto error = random.between(1, 255);
    for (std::uint8_t* byte : {&bytes.front(), &bytes.back()}) *byte = static_cast<std::uint8_t>(*byte + error);
}

}  // namespace

bool strikes(FaultKind kind, FaultSource& faults, std::string& note) {
    if (!faults.strikes(kind)) return false;
    remark(note, nameOf(kind));
    return true;
}

Bytes someNoise(Random& random) {
    Bytes noise(static_cast<std::size_t>(random.between(1, 4)));
    for (std::uint8_t& byte : noise) byte = random.byte();
    return noise;
}

void remark(std::string& note, std::string_view what) { note.append(note.empty() ? "" : ", ").append(what); }

void spoilRequest(Bytes& request, FaultSource& faults, std::string& note) {
    const auto strikes = [&](FaultKind kind) { return simulator::strikes(kind, faults, note); };
    if (strikes(FaultKind::Request)) flipBit(request, faults.of(FaultKind::Request));
    if (strikes(FaultKind::Part)) request.resize(placeIn(request.size(), faults.of(FaultKind::Part)));
}

void spoil(Reply& reply, const Frame& request, FaultSource& faults, std::string& note) {
    const auto strikes = [&](FaultKind kind) { return simulator::strikes(kind, faults, note); };
    if (request.write && strikes(FaultKind::WrongAck)) {
        const auto error = faults.of(FaultKind::WrongAck).between(1, 255);
        reply.bytes[0] = static_cast<std::uint8_t>(reply.bytes[0] + error);
    }
    if (!request.write && strikes(FaultKind::Blind)) spoilUnseen(reply.bytes, faults.of(FaultKind::Blind));
    if (strikes(FaultKind::Collide)) {
        for (std::uint8_t& byte : reply.bytes) byte ^= faults.of(FaultKind::Collide).byte();
    }
    if (strikes(FaultKind::Slow)) reply.delay += faults.of(FaultKind::Slow).between(100, 900) * millisecond;
    if (strikes(FaultKind::Late)) reply.delay += faults.of(FaultKind::Late).between(1'000, 5'000) * millisecond;
    if (strikes(FaultKind::Flip)) flipBit(reply.bytes, faults.of(FaultKind::Flip));
    if (strikes(FaultKind::Extra)) insertByte(reply.bytes, faults.of(FaultKind::Extra));
    if (strikes(FaultKind::Drop)) removeByte(reply.bytes, faults.of(FaultKind::Drop));
    if (strikes(FaultKind::Echo)) reply.bytes.insert(reply.bytes.begin(), request.raw.begin(), request.raw.end());
    if (strikes(FaultKind::Noise)) {
        reply.noise = someNoise(faults.of(FaultKind::Noise));
        reply.noiseGap = faults.of(FaultKind::Noise).between(1, 30) * millisecond;
    }
}

}  // namespace kestrel::simulator
