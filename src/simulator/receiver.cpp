// Request frames: direct ones for the master, routed ones for the boards behind it, all closed by an 8-bit sum.
// There is no start mark and no length, so the first byte alone says how long a frame is.
#include "simulator/receiver.h"

#include <numeric>

namespace kestrel::simulator {
namespace {

constexpr std::uint8_t writeBit = 0x80;
constexpr int highestWidthCode = 3;  // low nibble of a command: bytes of the value minus one

// A routed frame begins with F1 for a read, F2 to F5 for a write of one to four bytes.
constexpr std::uint8_t routedRead = 0xF1;
constexpr std::uint8_t routedWrite = 0xF2;
constexpr std::uint8_t lastRouted = 0xF5;
constexpr std::uint8_t hotDrinkAddress = 0x49;
constexpr std::uint8_t sectorAddress = 0x56;

constexpr std::size_t directHeader = 4;  // command, three address bytes
constexpr std::size_t routedHeader = 6;  // kind, three address bytes, command, board

bool isRouted(std::uint8_t first) { return first >= routedRead && first <= lastRouted; }
int widthCode(std::uint8_t command) { return command & 15; }

// 0 when no frame begins with this byte.
std::size_t lengthOf(std::uint8_t first) {
    if (isRouted(first)) return routedHeader + 1 + (first - routedRead);
    if (widthCode(first) > highestWidthCode) return 0;
    const bool write = (first & writeBit) != 0;
    return directHeader + 1 + (write ? static_cast<std::size_t>(widthCode(first)) + 1 : 0);
}

std::uint8_t sumOf(const Bytes& raw) {
    return static_cast<std::uint8_t>(std::accumulate(raw.begin(), raw.end() - 1, 0U));
}

// The kind of a routed frame and the command inside it must tell the same story.
bool agrees(std::uint8_t kind, std::uint8_t command) {
    if (widthCode(command) > highestWidthCode) return false;
    if ((command & writeBit) == 0) return kind == routedRead;
    return kind == routedWrite + widthCode(command);
}

Frame decode(Bytes raw) {
    Frame frame;
    const bool routed = isRouted(raw[0]);
    const std::uint8_t command = routed ? raw[4] : raw[0];
    frame.sum = raw.back();
    frame.write = (command & writeBit) != 0;
    frame.width = widthCode(command) + 1;
    frame.address = static_cast<std::uint32_t>(raw[1]) | static_cast<std::uint32_t>(raw[2]) << 8 |
                    static_cast<std::uint32_t>(raw[3]) << 16;
    frame.data.assign(raw.begin() + static_cast<std::ptrdiff_t>(routed ? routedHeader : directHeader), raw.end() - 1);
    if (sumOf(raw) != frame.sum) {
        frame.verdict = Frame::Verdict::BadSum;
    } else if (routed && !agrees(raw[0], command)) {
        frame.verdict = Frame::Verdict::Malformed;
    } else if (routed && raw[5] == hotDrinkAddress) {
        frame.board = Board::HotDrink;
    } else if (routed && raw[5] == sectorAddress) {
        frame.board = Board::Sector;
    } else if (routed) {
        frame.verdict = Frame::Verdict::NoSuchBoard;
    }
    frame.raw = std::move(raw);
    return frame;
}

}  // namespace

std::optional<Frame> Receiver::take(Micros when, std::uint8_t byte) {
    if (when - last_ >= resyncSilence) {
        bytes_.clear();
        deaf_ = false;
    }
    last_ = when;
    if (deaf_) return std::nullopt;

    bytes_.push_back(byte);
    const std::size_t length = lengthOf(bytes_[0]);
    if (bytes_.size() < length) return std::nullopt;

    Frame frame;
    if (length == 0) {
        frame.verdict = Frame::Verdict::Malformed;
        frame.raw = bytes_;
    } else {
        frame = decode(bytes_);
    }
    bytes_.clear();
    deaf_ = frame.verdict == Frame::Verdict::BadSum || frame.verdict == Frame::Verdict::Malformed;
    return frame;
}

}  // namespace kestrel::simulator
