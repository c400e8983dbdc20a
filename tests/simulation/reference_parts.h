// What the reference model is made of: records and banks, frames and what it puts out.
// See reference_model.h.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <optional>
#include <ostream>
#include <vector>

namespace kestrel::testing::reference {

using Micros = std::int64_t;
inline constexpr int BankCount = 3;
inline constexpr int PlaceCount = 33001;  ///< indexes 0 to 33000 of a bank; those beyond its file are empty records

/// Nine bytes of a parameter file, or the first five of an identity record.
struct IndexRecord {
    std::uint8_t addr2 = 0, addr1 = 0, command = 0, period = 0, addr0 = 0;
    std::array<std::uint8_t, 4> preload{};
};

enum Flag : unsigned { Valid = 1, Pending = 2, Watched = 4, AlsoOneShot = 32 + 64, WriteDue = 128 };

inline constexpr std::array<std::int64_t, 5> intervals{40'000, 1'000'000, 500'000, 500'000, 1'000'000};  ///< by Clock
inline constexpr std::array<unsigned, 3> boardAddresses{0, 0x49, 0x56};  ///< by bank; bank 0 is on the line itself

/// Lamp states, which are the numbers of their pictures as well. Those with the same rest by 3 share a panel.
enum Lamp : int { SendOff = 1, ReceiveOff = 2, ErrorOff = 3, SendOn = 4, ReceiveOn = 5, ErrorOn = 6 };

inline constexpr unsigned firstFrameWithData = 127;   ///< commands from here on go out with their data
inline constexpr unsigned writeBit = 128;             ///< of a command: an acknowledgement answers it, not a value
inline constexpr unsigned routedRead = 241;           ///< first byte of a routed frame
inline constexpr unsigned routedWrite = 242;          ///< the same, n to be added
inline constexpr unsigned silentRepeatPeriodBit = 2;  ///< of Period: a silent board is asked again without end
inline constexpr int repeats = 4;
inline constexpr std::size_t unreadLimit = 1024;
inline constexpr char checkSerial[] = "Check serial interface ";

inline std::uint8_t low8(unsigned value) { return static_cast<std::uint8_t>(value & 255U); }

inline std::uint8_t sum(const std::uint8_t* bytes, std::size_t count) {
    return low8(std::accumulate(bytes, bytes + count, 0U));
}

inline auto& at(auto& table, int index) { return table[static_cast<std::size_t>(index)]; }

inline void light(std::array<int, 3>& pictures, Lamp state) { at(pictures, (state - 1) % 3) = state; }

/// The first place from `from` whose record is pending, or `end`.
inline int nextPending(const std::uint8_t* flags, int from, int end) {
    constexpr std::uint64_t pendingInEach = Pending * 0x0101010101010101ULL;
    for (std::uint64_t eight = 0; end - from >= 8; from += 8) {
        std::memcpy(&eight, flags + from, sizeof eight);
        if ((eight & pendingInEach) != 0) break;
    }
    while (from < end && (flags[from] & Pending) == 0) ++from;
    return from;
}

struct Record {
    std::array<std::uint8_t, 4> value{};
    std::uint8_t period = 0, watchers = 0;
};

/// One place more than a bank has: the scan may come to stand just behind the last, where nothing is ever pending.
struct Bank {
    Bank() = default;
    Bank(bool isPresent, int count, const std::vector<IndexRecord>& parameters)
        : present(isPresent), recordCount(count) {
        for (std::size_t i = 0; i < parameters.size(); ++i) {
            file.at(i + 1) = parameters[i];
            records.at(i + 1) = {parameters[i].preload, parameters[i].period, 0};
        }
    }
    bool present = false;
    int recordCount = 0;
    std::vector<std::uint8_t> flags = std::vector<std::uint8_t>(PlaceCount + 1);
    std::vector<IndexRecord> file = std::vector<IndexRecord>(PlaceCount + 1);
    std::vector<Record> records = std::vector<Record>(PlaceCount + 1);
};

struct Frame {
    Micros when;
    std::array<std::uint8_t, 12> bytes;  ///< the first `count`, then zeros
    std::size_t count;
    bool operator==(const Frame&) const = default;
};

struct Place {
    int bank, index;
    friend std::ostream& operator<<(std::ostream& out, const Place& at) {
        return out << "bank " << at.bank << " record " << at.index;
    }
};

/// What happened since clear(), in order.
struct Outputs {
    std::vector<Frame> frames;
    std::optional<Place> told;   ///< the record of which every page is notified ...
    std::int64_t toldValue = 0;  ///< ... and its value
    std::vector<Place> touched;  ///< records of which anything was set, perhaps to what it was; may repeat
    int opened = 0;              ///< how often the port was opened
    void clear() {               // keeps the memory of the lists
        frames.clear(), touched.clear();
        told.reset(), opened = 0;
    }
};

struct Request {
    IndexRecord record;  ///< its address, and its command with the write bit
    std::array<std::uint8_t, 4> data{};
    std::size_t dataCount = 0;
    unsigned n = 0;  ///< value bytes minus 1
    unsigned checksum = 0;
    int bank = 0;  ///< whose board was asked
    bool isRead() const { return (record.command & writeBit) == 0; }

    /// Direct in bank 0, routed in the others. It is the bank of this moment that decides, for a repeat too.
    Frame frame(Micros now, int ofBank) {
        Frame out{now, {}, 0};
        const auto put = [&out](unsigned byte) { out.bytes[out.count++] = low8(byte); };
        const unsigned command = record.command;
        const bool withData = command >= firstFrameWithData;
        const bool routed = ofBank != 0;

        put(!routed ? command : withData ? routedWrite + n : routedRead);
        for (const unsigned byte : {record.addr0, record.addr1, record.addr2}) put(byte);
        if (routed) put(command);
        if (routed) put(at(boardAddresses, ofBank));
        dataCount = std::min<std::size_t>(dataCount, n + 1);
        for (std::size_t i = 0; withData && i < dataCount; ++i) put(data[i]);
        checksum = sum(out.bytes.data(), out.count);
        put(checksum);
        return out;
    }
};

}  // namespace kestrel::testing::reference
