// The rules of the link as a small model: what the inputs do.
#include "simulation/reference_model.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace kestrel::testing::reference {

void Model::askIdentity(Micros now, int number) {
    const IndexRecord& record = at(at(identities, currentBank), number - 1);
    asked_ = {currentBank, number};
    replyData_.clear();
    request_ = Request{record, {record.addr0}, 1, 0, 0, request_.bank};
    send(now);
}

void Model::startAnew() {
    stop(Tick);
    recheck.forget();
    holding = false;
}

void Model::closeExchange() {
    if (asked_.first >= 0 && !replyData_.empty()) recheck.learn(asked_.first, asked_.second, replyData_.front());
    asked_.first = -1;
    stop(Reply);
    idle = true;
}

void Model::startScan(Micros now) {
    stop(Reply);
    currentBank = 0;
    light(pictures, ErrorOff);
    idle = true;
    restart(Tick, now);
}

void Model::runOut(Clock clock, Micros now) {
    if (clock == Reply) return replyTimeout(now);
    if (clock == Reopen) return reopenTimeout(now);
    if (clock == Tick) {
        if (idle && !actsWait && !portOpen && !due[Reopen]) restart(Reopen, now);
        tickGoesOn_ = idle && !actsWait && portOpen;
        if (tickGoesOn_) recheckTick(now);
        return restart(Tick, now);
    }
    light(pictures, clock == SendLamp ? SendOff : ReceiveOff);
    if (clock == ReceiveLamp) light(pictures, ErrorOff);
    stop(clock);
}

void Model::arrived(Micros now, const std::uint8_t* bytes, std::size_t count) {
    if (idle || !portOpen) return;
    unread.insert(unread.end(), bytes, bytes + std::min(count, unreadLimit - unread.size()));
    if (unread.size() <= (request_.isRead() ? request_.n + 1 : 0)) return;

    stop(Reply);
    restart(ReceiveLamp, now);
    light(pictures, ReceiveOn);
    light(pictures, ErrorOff);
    panelText.clear();
    const bool passes = judge();
    if (retryCount == repeats || !passes) replyData_.clear();
    if (retryCount != repeats && !passes) {
        light(pictures, ErrorOn);
        ++retryCount;
        return repeat(now);
    }
    retryCount = 0;
    if (!setup && recheck.phase != Recheck::Asking) return accept();
    idle = true;
}

void Model::portLost() {
    closePort();
    panelText = checkSerial;
    interrupt();
}

void Model::portSearched(bool stillOpen) {
    portOpen = stillOpen;
    unread.clear();
    panelText.clear();
    if (due[Tick]) recheck.interrupt();
}

void Model::closePort() {
    portOpen = false;
    unread.clear();
}

bool Model::tryToOpenPort() {
    portOpen = portThere;
    if (portOpen) ++outputs.opened;
    if (!portOpen) panelText = checkSerial;
    return portOpen;
}

bool Model::reopenPort() {
    if (!tryToOpenPort()) interrupt();
    return portOpen;
}

void Model::interrupt() {
    if (due[Tick] || recheck.phase != Recheck::Open || holding) recheck.interrupt();
}

void Model::recheckTick(Micros now) {
    if (recheck.phase == Recheck::Asking) {
        recheck.take(replyData_.empty() ? -1 : replyData_.front(),
                     {banks[0].present, banks[1].present, banks[2].present});
        scanIndex = currentBank = 0;
        if (recheck.phase == Recheck::Reading) wantAllWatched();
    }
    if (recheck.phase == Recheck::Asking) {
        const auto [bank, number] = recheck.ask();
        currentBank = bank;
        askIdentity(now, number);
        asked_.first = -1;
    }
    if (recheck.phase != Recheck::Reading) return;
    std::erase_if(recheck.unread,
                  [this](const auto& place) { return at(at(banks, place.first).records, place.second).watchers == 0; });
    if (recheck.unread.empty()) endReading();
}

void Model::wantAllWatched() {
    recheck.unread.clear();
    eachRecord([this](int index) {
        if (record(index).watchers == 0) return;
        recheck.unread.emplace(currentBank, index);
        flags(index) = low8(flags(index) | Pending | Watched);
        touch(index);
    });
}

void Model::endReading() {
    eachRecord([this](int index) {
        if ((flags(index) & WriteDue) && isUsers(currentBank, index)) hold(index);
    });
    recheck.phase = Recheck::Open;
}

void Model::hold(int index) {
    flags(index) = low8(flags(index) & ~WriteDue);
    touch(index);
}

void Model::scan(Micros now) {
    if (!bank().present) return nextBank();
    const int end = std::max(bank().recordCount, scanIndex + 1);
    for (;; ++scanIndex) {
        scanIndex = nextPending(bank().flags.data(), scanIndex, end);
        if (scanIndex >= end) return nextBank();
        if (gateOpens(scanIndex)) return ask(scanIndex, now);
    }
}

void Model::nextBank() {
    scanIndex = 0;
    currentBank = (currentBank + 1) % BankCount;
}

bool Model::gateOpens(int index) {
    const unsigned period = record(index).period;
    if (period == 0) return true;
    touch(index);
    const bool opens = period < 16;
    record(index).period = low8(opens ? period * 17 : period - 16);
    return opens;
}

void Model::ask(int index, Micros now) {
    request_.record = at(bank().file, index);
    request_.data = record(index).value;
    const bool holds = holding || recheck.phase == Recheck::Reading;
    if (holds && (flags(index) & WriteDue) != 0 && isUsers(currentBank, index)) hold(index);
    request_.dataCount = request_.data.size();
    if ((flags(index) & WriteDue) != 0) request_.record.command = low8(request_.record.command | writeBit);
    flags(index) = low8(flags(index) & ~WriteDue);
    request_.n = request_.record.command & 15U;
    touch(index);
    send(now);
}

void Model::send(Micros now) {
    restart(SendLamp, now);
    light(pictures, SendOn);
    if (idle) request_.bank = currentBank;
    idle = false;
    const Frame out = request_.frame(now, currentBank);
    unread.clear();
    restart(Reply, now);
    if (!portOpen) tryToOpenPort();
    if (portThere) outputs.frames.push_back(out);
    if (!portThere) closePort();  // found out by the sending; the news of it comes by itself
}

void Model::repeat(Micros now) {
    if (currentBank == request_.bank) return send(now);
    retryCount = 0;
    idle = true;
}

void Model::replyTimeout(Micros now) {
    light(pictures, ErrorOn);
    light(pictures, ReceiveOff);
    stop(Reply);
    closePort();
    if (!reopenPort()) return restart(Reply, now);
    panelText.clear();
    if (!recheck.isClosed() && (record(scanIndex).period & silentRepeatPeriodBit) != 0) return repeat(now);
    idle = true;
}

void Model::reopenTimeout(Micros now) {
    restart(Reopen, now);
    if (!idle) return stop(Reopen);
    if (!portOpen && !reopenPort()) return;
    stop(Reopen);
    panelText.clear();
}

bool Model::judge() {
    const bool single = unread.size() == 1;
    const std::uint8_t last = unread.back();
    const std::uint8_t* value = request_.isRead() ? unread.data() : request_.data.data();
    replyData_.assign(value, value + (request_.isRead() ? request_.n + 1 : request_.dataCount));
    unread.clear();
    if (request_.isRead()) return last == sum(replyData_.data(), replyData_.size());
    return single && last == low8(request_.checksum * 2);
}

void Model::accept() {
    const int index = scanIndex;
    unsigned flag = flags(index);
    if ((flag & Pending) == 0 || replyData_.empty()) return finishReply();
    if ((flag & WriteDue) != 0 && request_.isRead()) return finishReply();  // what the user did since stands
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
    recheck.unread.erase({currentBank, index});
    telling_ = true;
}

void Model::finishReply() {
    telling_ = false;
    ++scanIndex;
    if (scanIndex == bank().recordCount) nextBank();
    idle = true;
}
}  // namespace kestrel::testing::reference
