// The model of the link: the records, the request under way and the timers, each rule in a few lines of its own.
// It shares nothing with the program, so that an error on one side shows as a difference.
#include "simulation/reference_model.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <numeric>

namespace kestrel::testing {

namespace {

enum Flag : unsigned { Valid = 1, Pending = 2, Watched = 4, AlsoOneShot = 32 + 64, WriteDue = 128 };

constexpr std::array<std::int64_t, 5> intervals{40'000, 1'000'000, 500'000, 500'000, 1'000'000};  ///< by Clock
constexpr std::array<unsigned, 3> boardAddresses{0, 0x49, 0x56};  ///< by bank; bank 0 is on the line itself

/// Lamp states, which are the numbers of their pictures as well. Those with the same rest by 3 share a panel.
enum Lamp : int { SendOff = 1, ReceiveOff = 2, ErrorOff = 3, SendOn = 4, ReceiveOn = 5, ErrorOn = 6 };

constexpr unsigned firstFrameWithData = 127;   ///< commands from here on go out with their data
constexpr unsigned writeBit = 128;             ///< of a command: an acknowledgement answers it, not a value
constexpr unsigned routedRead = 241;           ///< first byte of a routed frame
constexpr unsigned routedWrite = 242;          ///< the same, n to be added
constexpr unsigned silentRepeatPeriodBit = 2;  ///< of Period: a silent board is asked again without end
constexpr int repeats = 4;
constexpr std::size_t unreadLimit = 1024;
constexpr char checkSerial[] = "Check serial interface ";

std::uint8_t low8(unsigned value) { return static_cast<std::uint8_t>(value & 255U); }

std::uint8_t sum(const std::uint8_t* bytes, std::size_t count) {
    return low8(std::accumulate(bytes, bytes + count, 0U));
}

auto& at(auto& table, int index) { return table[static_cast<std::size_t>(index)]; }

void light(std::array<int, 3>& pictures, Lamp state) { at(pictures, (state - 1) % 3) = state; }

/// The first place from `from` whose record is pending, or `end`.
int nextPending(const std::uint8_t* flags, int from, int end) {
    constexpr std::uint64_t pendingInEach = Pending * 0x0101010101010101ULL;
    for (std::uint64_t eight = 0; end - from >= 8; from += 8) {
        std::memcpy(&eight, flags + from, sizeof eight);
        if ((eight & pendingInEach) != 0) break;
    }
    while (from < end && (flags[from] & Pending) == 0) ++from;
    return from;
}

}  // namespace

bool ReferenceModel::Request::isRead() const { return (record.command & writeBit) == 0; }

void ReferenceModel::Outputs::clear() {
    frames.clear();
    told.reset();
    touched.clear();
    opened = 0;
}

ReferenceModel::Bank& ReferenceModel::bank() { return at(banks, currentBank); }
std::uint8_t& ReferenceModel::flags(int index) { return at(bank().flags, index); }
ReferenceModel::Record& ReferenceModel::record(int index) { return at(bank().records, index); }
void ReferenceModel::touch(int index) { outputs.touched.push_back({currentBank, index}); }
void ReferenceModel::restart(Clock clock, Micros now) { due[clock] = now + intervals[clock]; }

void ReferenceModel::closePort() {
    portOpen = false;
    unread.clear();
}

bool ReferenceModel::tryToOpenPort() {
    portOpen = portThere;
    if (portOpen) ++outputs.opened;
    if (!portOpen) panelText = checkSerial;
    return portOpen;
}

// ---- The scan.

void ReferenceModel::nextBank() {
    scanIndex = 0;
    currentBank = (currentBank + 1) % BankCount;
}

/// The place where the scan stands is visited even when it lies at or beyond the end of the bank.
void ReferenceModel::scan(Micros now) {
    const int end = std::max(bank().recordCount, scanIndex + 1);
    for (;; ++scanIndex) {
        scanIndex = nextPending(bank().flags.data(), scanIndex, end);
        if (scanIndex >= end) return nextBank();
        if (gateOpens(scanIndex)) return ask(scanIndex, now);
    }
}

/// Period holds the reload value in its low nibble and the countdown in its high one.
bool ReferenceModel::gateOpens(int index) {
    const unsigned period = record(index).period;
    if (period == 0) return true;
    touch(index);
    const bool opens = period < 16;
    record(index).period = low8(opens ? period * 17 : period - 16);
    return opens;
}

void ReferenceModel::ask(int index, Micros now) {
    request_.record = at(bank().file, index);
    request_.data = record(index).value;
    request_.dataCount = request_.data.size();
    if ((flags(index) & WriteDue) != 0) request_.record.command = low8(request_.record.command | writeBit);
    flags(index) = low8(flags(index) & ~WriteDue);
    request_.n = request_.record.command & 15U;
    touch(index);
    send(now);
}

// ---- Sending.

/// Direct in bank 0, routed in the others. It is the bank of this moment that decides, for a repeat too.
ReferenceModel::Frame ReferenceModel::frame(Micros now) {
    Frame out{now, {}, 0};
    const auto put = [&out](unsigned byte) { out.bytes[out.count++] = low8(byte); };
    const unsigned command = request_.record.command;
    const bool withData = command >= firstFrameWithData;
    const bool routed = currentBank != 0;

    put(!routed ? command : withData ? routedWrite + request_.n : routedRead);
    for (const unsigned byte : {request_.record.addr0, request_.record.addr1, request_.record.addr2}) put(byte);
    if (routed) put(command);
    if (routed) put(at(boardAddresses, currentBank));
    request_.dataCount = std::min<std::size_t>(request_.dataCount, request_.n + 1);
    for (std::size_t i = 0; withData && i < request_.dataCount; ++i) put(request_.data[i]);
    request_.checksum = sum(out.bytes.data(), out.count);
    put(request_.checksum);
    return out;
}

void ReferenceModel::send(Micros now) {
    restart(SendLamp, now);
    light(pictures, SendOn);
    idle = false;
    const Frame out = frame(now);
    unread.clear();
    restart(Reply, now);
    if (!portOpen) tryToOpenPort();
    if (portThere) outputs.frames.push_back(out);
    if (!portThere) panelText = checkSerial;
}

// ---- The reply.

/// Takes what stands unread as the reply, sets the reply data and says whether they pass.
bool ReferenceModel::judge() {
    const bool single = unread.size() == 1;
    const std::uint8_t last = unread.back();
    const std::uint8_t* value = request_.isRead() ? unread.data() : request_.data.data();
    replyData_.assign(value, value + (request_.isRead() ? request_.n + 1 : request_.dataCount));
    unread.clear();
    if (request_.isRead()) return last == sum(replyData_.data(), replyData_.size());
    return single && last == low8(request_.checksum * 2);
}

/// Files the reply under the bank and place of this moment, or drops it if nothing is pending there.
void ReferenceModel::accept() {
    const int index = scanIndex;
    unsigned flag = flags(index);
    if ((flag & Pending) == 0 || replyData_.empty()) return finishReply();
    if ((flag & Watched) == 0) std::abort();
    flag |= Valid;
    if ((flag & AlsoOneShot) != 0 || record(index).period == 0) flag &= ~unsigned{Pending};
    flags(index) = low8(flag);

    if (replyData_.size() < 4) replyData_.resize(4);
    std::copy_n(replyData_.begin(), 4, record(index).value.begin());
    touch(index);
    std::uint64_t value = 0;
    const std::size_t width = std::min<std::size_t>({request_.n + 1, replyData_.size(), sizeof value});
    for (std::size_t i = width; i > 0; --i) value = value * 256 + replyData_[i - 1];
    outputs.told = {currentBank, index};
    outputs.toldValue = static_cast<std::int64_t>(value);
    telling_ = true;
}

/// Only the very end of the bank wraps here; a place beyond it is left to the scan.
void ReferenceModel::finishReply() {
    telling_ = false;
    ++scanIndex;
    if (scanIndex == bank().recordCount) nextBank();
    idle = true;
}

// ---- Events.

void ReferenceModel::load(int bank, bool present, int recordCount, const std::vector<IndexRecord>& records) {
    Bank& loaded = at(banks, bank) = Bank{};
    loaded.present = present;
    loaded.recordCount = recordCount;
    for (std::size_t i = 0; i < records.size(); ++i) {
        loaded.file.at(i + 1) = records[i];
        loaded.records.at(i + 1) = {records[i].preload, records[i].period, 0};
    }
}

void ReferenceModel::askIdentity(Micros now, const IndexRecord& record) {
    request_ = Request{record, {record.addr0}, 1, 0, 0};
    send(now);
}

void ReferenceModel::startScan(Micros now) {
    stop(Reply);
    currentBank = 0;
    light(pictures, ErrorOff);
    idle = true;
    restart(Tick, now);
}

void ReferenceModel::runOut(Clock clock, Micros now) {
    if (clock == Reply) return replyTimeout(now);
    if (clock == Reopen) return reopenTimeout(now);
    if (clock == Tick) {
        if (idle && !portOpen && !due[Reopen]) restart(Reopen, now);
        if (idle && portOpen) scan(now);
        return restart(Tick, now);
    }
    light(pictures, clock == SendLamp ? SendOff : ReceiveOff);
    if (clock == ReceiveLamp) light(pictures, ErrorOff);
    stop(clock);
}

/// A silent board ends the exchange and leaves the retry count as it is; with the bit in Period the frame goes again.
void ReferenceModel::replyTimeout(Micros now) {
    light(pictures, ErrorOn);
    light(pictures, ReceiveOff);
    stop(Reply);
    closePort();
    if (!tryToOpenPort()) return restart(Reply, now);
    if ((record(scanIndex).period & silentRepeatPeriodBit) != 0) return send(now);
    idle = true;
}

void ReferenceModel::reopenTimeout(Micros now) {
    restart(Reopen, now);
    if (!idle) return stop(Reopen);
    if (!portOpen && !tryToOpenPort()) return;
    stop(Reopen);
    panelText.clear();
}

void ReferenceModel::arrived(Micros now, const std::uint8_t* bytes, std::size_t count) {
    if (idle || !portOpen) return;
    unread.insert(unread.end(), bytes, bytes + std::min(count, unreadLimit - unread.size()));
    if (unread.size() <= (request_.isRead() ? request_.n + 1 : 0)) return;

    stop(Reply);
    restart(ReceiveLamp, now);
    light(pictures, ReceiveOn);
    light(pictures, ErrorOff);
    panelText.clear();
    const bool passes = judge();
    if (retryCount == repeats) {
        replyData_.clear();
    } else if (!passes) {
        light(pictures, ErrorOn);
        ++retryCount;
        return send(now);
    }
    retryCount = 0;
    if (!setup) return accept();
    idle = true;
}

void ReferenceModel::pagesTold() {
    if (telling_) finishReply();
}

void ReferenceModel::portLost() {
    closePort();
    panelText = checkSerial;
}

void ReferenceModel::portSearched() {
    portOpen = true;
    unread.clear();
}

// ---- Pages.

void ReferenceModel::watch(int index) {
    if (!bank().present) return;
    flags(index) = low8(flags(index) | Pending | Watched);
    ++record(index).watchers;
    touch(index);
}

void ReferenceModel::release(int index) {
    if (!bank().present) return;
    if (record(index).watchers == 1) {
        flags(index) = low8(flags(index) & ~(Valid | Pending | Watched));
        record(index).period = low8(record(index).period & 15U);
    }
    if (record(index).watchers > 0) --record(index).watchers;
    touch(index);
}

void ReferenceModel::write(int index, std::uint32_t value) {
    record(index).value = {low8(value), low8(value >> 8), low8(value >> 16), low8(value >> 24)};
    flags(index) = low8((flags(index) | Pending | Watched | WriteDue) & ~unsigned{Valid});
    touch(index);
}

}  // namespace kestrel::testing
