// The model of the link: the records, the request under way and the timers, each rule in a few lines of its own.
// It shares nothing with the program, so that an error on one side shows as a difference.
#include "simulation/reference_model.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <numeric>

namespace kestrel::testing {

namespace {

using Micros = ReferenceModel::Micros;
using Clock = ReferenceModel::Clock;
enum Flag : unsigned { Valid = 1, Pending = 2, Watched = 4, AlsoOneShot = 32 + 64, WriteDue = 128 };

constexpr std::array<Micros, 5> intervals{40'000, 1'000'000, 500'000, 500'000, 1'000'000};  ///< by Clock
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

/// One place more than a bank has: the scan may come to stand just behind the last, where nothing is ever pending.
constexpr std::size_t placesAndOne = ReferenceModel::PlaceCount + 1;

struct Bank {
    bool present = false;
    int recordCount = 0;
    std::array<std::uint8_t, placesAndOne> flags{};
    std::array<IndexRecord, placesAndOne> file{};
    std::array<ReferenceModel::Record, placesAndOne> records{};
};

struct Request {
    IndexRecord record;  ///< its address, and its command with the write bit
    std::array<std::uint8_t, 4> data{};
    std::size_t dataCount = 0;
    unsigned n = 0;  ///< value bytes minus 1
    unsigned checksum = 0;

    bool isRead() const { return (record.command & writeBit) == 0; }
};

}  // namespace

struct ReferenceModel::State {
    std::array<Bank, BankCount> banks;
    int currentBank = 0, scanIndex = 0, retryCount = 0;
    bool idle = true, setup = false, telling = false;
    bool portOpen = true, portThere = true;
    Request request;
    std::vector<std::uint8_t> replyData, unread;
    std::array<int, 3> pictures{SendOff, ReceiveOff, ErrorOff};
    std::string panelText;
    std::array<std::optional<Micros>, intervals.size()> due;
    Outputs outputs;

    Bank& bank() { return at(banks, currentBank); }
    std::uint8_t& flags(int index) { return at(bank().flags, index); }
    Record& record(int index) { return at(bank().records, index); }
    void touch(int index) { outputs.touched.push_back({currentBank, index}); }
    void lamp(Lamp state) { at(pictures, (state - 1) % 3) = state; }

    std::optional<Micros>& timer(Clock clock) { return due[static_cast<std::size_t>(clock)]; }
    void stop(Clock clock) { timer(clock).reset(); }
    void restart(Clock clock, Micros now) { timer(clock) = now + intervals[static_cast<std::size_t>(clock)]; }

    void closePort() {
        portOpen = false;
        unread.clear();
    }
    bool tryToOpenPort() {
        portOpen = portThere;
        if (portOpen) ++outputs.opened;
        if (!portOpen) panelText = checkSerial;
        return portOpen;
    }

    // ---- The scan.

    void nextBank() {
        scanIndex = 0;
        currentBank = (currentBank + 1) % BankCount;
    }

    /// The place where the scan stands is visited even when it lies at or beyond the end of the bank.
    void scan(Micros now) {
        const int end = std::max(bank().recordCount, scanIndex + 1);
        for (;; ++scanIndex) {
            scanIndex = nextPending(bank().flags.data(), scanIndex, end);
            if (scanIndex >= end) return nextBank();
            if (gateOpens(scanIndex)) return ask(scanIndex, now);
        }
    }

    /// Period holds the reload value in its low nibble and the countdown in its high one.
    bool gateOpens(int index) {
        const unsigned period = record(index).period;
        if (period == 0) return true;
        touch(index);
        const bool opens = period < 16;
        record(index).period = low8(opens ? period * 17 : period - 16);
        return opens;
    }

    void ask(int index, Micros now) {
        request.record = at(bank().file, index);
        request.data = record(index).value;
        request.dataCount = request.data.size();
        if ((flags(index) & WriteDue) != 0) request.record.command = low8(request.record.command | writeBit);
        flags(index) = low8(flags(index) & ~WriteDue);
        request.n = request.record.command & 15U;
        touch(index);
        send(now);
    }

    // ---- Sending.

    /// Direct in bank 0, routed in the others. It is the bank of this moment that decides, for a repeat too.
    Frame frame(Micros now) {
        Frame out{now, {}, 0};
        const auto put = [&out](unsigned byte) { out.bytes[out.count++] = low8(byte); };
        const unsigned command = request.record.command;
        const bool withData = command >= firstFrameWithData;
        const bool routed = currentBank != 0;

        put(!routed ? command : withData ? routedWrite + request.n : routedRead);
        for (const unsigned byte : {request.record.addr0, request.record.addr1, request.record.addr2}) put(byte);
        if (routed) put(command);
        if (routed) put(at(boardAddresses, currentBank));
        request.dataCount = std::min<std::size_t>(request.dataCount, request.n + 1);
        for (std::size_t i = 0; withData && i < request.dataCount; ++i) put(request.data[i]);
        request.checksum = sum(out.bytes.data(), out.count);
        put(request.checksum);
        return out;
    }

    void send(Micros now) {
        restart(Clock::SendLamp, now);
        lamp(SendOn);
        idle = false;
        const Frame out = frame(now);
        unread.clear();
        restart(Clock::Reply, now);
        if (!portOpen) tryToOpenPort();
        if (portThere) outputs.frames.push_back(out);
        if (!portThere) panelText = checkSerial;
    }

    // ---- The reply.

    /// Takes what stands unread as the reply, sets the reply data and says whether they pass.
    bool judge() {
        const bool single = unread.size() == 1;
        const std::uint8_t last = unread.back();
        const std::uint8_t* value = request.isRead() ? unread.data() : request.data.data();
        replyData.assign(value, value + (request.isRead() ? request.n + 1 : request.dataCount));
        unread.clear();
        if (request.isRead()) return last == sum(replyData.data(), replyData.size());
        return single && last == low8(request.checksum * 2);
    }

    /// Files the reply under the bank and place of this moment, or drops it if nothing is pending there.
    void accept() {
        const int index = scanIndex;
        unsigned flag = flags(index);
        if ((flag & Pending) == 0 || replyData.empty()) return finishReply();
        if ((flag & Watched) == 0) std::abort();
        flag |= Valid;
        if ((flag & AlsoOneShot) != 0 || record(index).period == 0) flag &= ~unsigned{Pending};
        flags(index) = low8(flag);

        if (replyData.size() < 4) replyData.resize(4);
        std::copy_n(replyData.begin(), 4, record(index).value.begin());
        touch(index);
        std::uint64_t value = 0;
        const std::size_t width = std::min<std::size_t>({request.n + 1, replyData.size(), sizeof value});
        for (std::size_t i = width; i > 0; --i) value = value * 256 + replyData[i - 1];
        outputs.told.push_back({currentBank, index, static_cast<std::int64_t>(value)});
        telling = true;
    }

    /// Only the very end of the bank wraps here; a place beyond it is left to the scan.
    void finishReply() {
        telling = false;
        ++scanIndex;
        if (scanIndex == bank().recordCount) nextBank();
        idle = true;
    }
};

ReferenceModel::ReferenceModel() : state_(std::make_unique<State>()) {}
ReferenceModel::~ReferenceModel() = default;

void ReferenceModel::load(int bank, bool present, int recordCount, const std::vector<IndexRecord>& records) {
    Bank& loaded = at(state_->banks, bank);
    loaded.present = present;
    loaded.recordCount = recordCount;
    loaded.flags.fill(0);
    loaded.file.fill({});
    loaded.records.fill({});
    for (std::size_t i = 0; i < records.size(); ++i) {
        loaded.file.at(i + 1) = records[i];
        loaded.records.at(i + 1) = {records[i].preload, records[i].period, 0};
    }
}

void ReferenceModel::setLinkSetup(bool setup) { state_->setup = setup; }
void ReferenceModel::setCurrentBank(int bank) { state_->currentBank = bank; }
void ReferenceModel::setPortThere(bool there) { state_->portThere = there; }

void ReferenceModel::askIdentity(Micros now, const IndexRecord& record) {
    state_->request = Request{record, {record.addr0}, 1, 0, 0};
    state_->replyData.clear();
    state_->send(now);
}

void ReferenceModel::startScan(Micros now) {
    state_->stop(Clock::Reply);
    state_->currentBank = 0;
    state_->lamp(ErrorOff);
    state_->idle = true;
    state_->restart(Clock::Tick, now);
}

void ReferenceModel::tick(Micros now) {
    const bool reopening = state_->timer(Clock::Reopen).has_value();
    if (state_->idle && !state_->portOpen && !reopening) state_->restart(Clock::Reopen, now);
    if (state_->idle && state_->portOpen) state_->scan(now);
    state_->restart(Clock::Tick, now);
}

/// A silent board ends the exchange and leaves the retry count as it is; with the bit in Period the frame goes again.
void ReferenceModel::replyTimeout(Micros now) {
    state_->lamp(ErrorOn);
    state_->lamp(ReceiveOff);
    state_->stop(Clock::Reply);
    state_->closePort();
    if (!state_->tryToOpenPort()) return state_->restart(Clock::Reply, now);
    if ((state_->record(state_->scanIndex).period & silentRepeatPeriodBit) != 0) return state_->send(now);
    state_->idle = true;
}

void ReferenceModel::sendLampTimeout(Micros) {
    state_->lamp(SendOff);
    state_->stop(Clock::SendLamp);
}

void ReferenceModel::receiveLampTimeout(Micros) {
    state_->lamp(ReceiveOff);
    state_->lamp(ErrorOff);
    state_->stop(Clock::ReceiveLamp);
}

void ReferenceModel::reopenTimeout(Micros now) {
    state_->restart(Clock::Reopen, now);
    if (!state_->idle) return state_->stop(Clock::Reopen);
    if (!state_->portOpen && !state_->tryToOpenPort()) return;
    state_->stop(Clock::Reopen);
    state_->panelText.clear();
}

void ReferenceModel::arrived(Micros now, const std::uint8_t* bytes, std::size_t count) {
    State& s = *state_;
    if (s.idle || !s.portOpen) return;
    s.unread.insert(s.unread.end(), bytes, bytes + std::min(count, unreadLimit - s.unread.size()));
    if (s.unread.size() <= (s.request.isRead() ? s.request.n + 1 : 0)) return;

    s.stop(Clock::Reply);
    s.restart(Clock::ReceiveLamp, now);
    s.lamp(ReceiveOn);
    s.lamp(ErrorOff);
    s.panelText.clear();
    const bool passes = s.judge();
    if (s.retryCount == repeats) {
        s.replyData.clear();
    } else if (!passes) {
        s.lamp(ErrorOn);
        ++s.retryCount;
        return s.send(now);
    }
    s.retryCount = 0;
    if (!s.setup) return s.accept();
    s.idle = true;
}

void ReferenceModel::pagesTold() {
    if (state_->telling) state_->finishReply();
}

void ReferenceModel::portLost() {
    state_->closePort();
    state_->panelText = checkSerial;
}

void ReferenceModel::portSearched(std::uint8_t probeReply) {
    state_->portOpen = true;
    state_->unread.clear();
    state_->replyData.assign(1, probeReply);
}

void ReferenceModel::watch(int index) {
    if (!state_->bank().present) return;
    state_->flags(index) = low8(state_->flags(index) | Pending | Watched);
    ++state_->record(index).watchers;
    state_->touch(index);
}

void ReferenceModel::release(int index) {
    if (!state_->bank().present) return;
    Record& record = state_->record(index);
    if (record.watchers == 1) {
        state_->flags(index) = low8(state_->flags(index) & ~(Valid | Pending | Watched));
        record.period = low8(record.period & 15U);
    }
    if (record.watchers > 0) --record.watchers;
    state_->touch(index);
}

void ReferenceModel::write(int index, std::uint32_t value) {
    state_->record(index).value = {low8(value), low8(value >> 8), low8(value >> 16), low8(value >> 24)};
    state_->flags(index) = low8((state_->flags(index) | Pending | Watched | WriteDue) & ~unsigned{Valid});
    state_->touch(index);
}

const ReferenceModel::Outputs& ReferenceModel::outputs() const { return state_->outputs; }
void ReferenceModel::clearOutputs() {
    state_->outputs.frames.clear();
    state_->outputs.told.clear();
    state_->outputs.touched.clear();
    state_->outputs.opened = 0;
}

const ReferenceModel::Record& ReferenceModel::record(int bank, int index) const {
    return at(at(state_->banks, bank).records, index);
}
const std::uint8_t* ReferenceModel::flags(int bank) const { return at(state_->banks, bank).flags.data(); }

int ReferenceModel::currentBank() const { return state_->currentBank; }
int ReferenceModel::scanIndex() const { return state_->scanIndex; }
int ReferenceModel::retryCount() const { return state_->retryCount; }
bool ReferenceModel::idle() const { return state_->idle; }
bool ReferenceModel::portOpen() const { return state_->portOpen; }
const std::vector<std::uint8_t>& ReferenceModel::replyData() const { return state_->replyData; }
std::size_t ReferenceModel::unread() const { return state_->unread.size(); }
int ReferenceModel::picture(int panel) const { return at(state_->pictures, panel - 2); }
const std::string& ReferenceModel::panelText() const { return state_->panelText; }
std::optional<Micros> ReferenceModel::due(Clock clock) const { return state_->timer(clock); }

}  // namespace kestrel::testing
