// The rules of the link as a small model that touches no port and no page: it is fed what the program is fed, and says
// what must go out, when, what the mirror then holds, what the pages are told and what the status bar shows. It shares
// nothing with the program, so that an error on one side shows as a difference.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "simulation/reference_parts.h"
#include "simulation/reference_recheck.h"

namespace kestrel::testing::reference {

/// A model of one run of the program. Whoever drives it calls one input a time, in the order in which the program meets
/// them, and compares state and outputs after each event. An input is carried out at once and completely, but for
/// arrived(); nothing happens by itself, timers included. Times are microseconds and never go back.
/// What the model stands for begins when the port has been opened and the first identity question is asked, with all
/// records empty, no board present, the lamps off, no timer running, and the port open and there.
/// The house has four rules of its own beside those of the link:
/// - Sending drops what stands unread. Bytes that arrive while no exchange is open are dropped; the bytes of an arrival
///   add to those that came before in the same exchange. At most 1024 stand unread, later ones are lost.
/// - Sending starts the reply time-out anew. A closed port is opened before a frame is sent. When the device is not
///   there the frame is lost, the port counts as closed, and panel 1 says "Check serial interface " when the loss is
///   told of or the port could not be opened; the reply time-out runs all the same.
/// - The reply time-out closes and opens the port, and the text goes. When it cannot be opened, panel 1 says the same,
///   and the exchange stays open, its frame unsent, with a new reply time-out; so it goes on until the port is there.
/// - A tick with the link idle and the port closed does not scan but starts the reopen timer (1000 ms; one that runs is
///   left as it is). That timer on expiry: if an exchange is open, it stops; else if the port is closed, it tries to
///   open it, and on failure shows the text and stays on; when the port is open, it stops and the text goes.
class Model {
  public:
    // ---- What stands round the link: none of these is an event, and they hold until they are set again.

    int currentBank = 0;    ///< a page moves it
    bool setup = false;     ///< while set, replies close the exchange and are not stored
    bool actsWait = false;  ///< what the user or a page does goes before the next exchange
    bool holding = false;   ///< what was due at an interruption waits for the user's word
    /// Whether a user's act has written the record and nothing has come of it yet.
    std::function<bool(int bank, int index)> isUsers;
    bool portThere = true;  ///< whether the device can be opened and takes what is sent; unsetting it closes nothing
    /// The bank's board was identified (`present`) and its parameter file read, or it is absent and `recordCount` is
    /// that of its identity file while `records` is empty. records[0] is parameter 1.
    void load(int bank, bool present, int recordCount, const std::vector<IndexRecord>& records) {
        at(banks, bank) = Bank(present, recordCount, records);
    }

    // ---- Events of the link.

    /// The program asks identity record `number` of the bank: one byte, whatever width its command names (n = 0).
    void askIdentity(Micros now, int number) {
        const IndexRecord& record = at(at(identities, currentBank), number - 1);
        asked_ = {currentBank, number};
        replyData_.clear();
        request_ = Request{record, {record.addr0}, 1, 0, 0, request_.bank};
        send(now);
    }
    /// The program begins anew with the boards that are there now: the tick stops until startScan().
    void startAnew() {
        stop(Tick);
        recheck.forget();
        holding = false;
    }
    /// The question is over, and what it has brought is known.
    void closeExchange() {
        if (asked_.first >= 0 && !replyData_.empty()) recheck.learn(asked_.first, asked_.second, replyData_.front());
        asked_.first = -1;
        stop(Reply);
        idle = true;
    }
    /// The start is over: the link is idle, the reply timer off, the error lamp off, and the tick timer begins.
    void startScan(Micros now) {
        stop(Reply);
        currentBank = 0;
        light(pictures, ErrorOff);
        idle = true;
        restart(Tick, now);
    }
    /// A timer that runs out and is not switched off runs again from that moment; switching on one that runs leaves it
    /// as it is; off and on starts it anew. `now` may be later than due.
    enum Clock { Tick, Reply, SendLamp, ReceiveLamp, Reopen, ClockCount };
    void runOut(Clock clock, Micros now) {
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
    /// Behind the end of a recheck, where the program may write again what it has held, a tick goes on to the scan.
    void endTick(Micros now) {
        if (std::exchange(tickGoesOn_, false) && !recheck.isClosed()) scan(now);
    }
    /// These bytes came in and the serial event was raised. If a reply is accepted, the work stops where the pages
    /// are told: the driver then passes on what they do (watch, release, write, currentBank) and calls
    /// pagesTold(), which finishes the event. pagesTold() after an arrival that told nobody does nothing.
    void arrived(Micros now, const std::uint8_t* bytes, std::size_t count) {
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
    void pagesTold() {
        if (telling_) finishReply();
    }
    /// The device went away under an open port, which is closed now; unread bytes are gone, and panel 1 says so.
    void portLost() {
        closePort();
        panelText = checkSerial;
        interrupt();
    }
    /// The user chose a port and the search found a board: the port is open with nothing unread, unless it has gone
    /// away since, and what was said of a loss goes. An exchange that was open stays open and its time-out goes on.
    void portSearched(bool stillOpen) {
        portOpen = stillOpen;
        unread.clear();
        panelText.clear();
        if (due[Tick]) recheck.interrupt();
    }

    // ---- What pages do, in currentBank. Never with index 0.

    void watch(int index) {
        if (!bank().present) return;
        flags(index) = low8(flags(index) | Pending | Watched);
        ++record(index).watchers;
        touch(index);
    }
    void release(int index) {
        if (!bank().present) return;
        if (record(index).watchers == 1) {
            flags(index) = low8(flags(index) & ~(Valid | Pending | Watched));
            record(index).period = low8(record(index).period & 15U);
        }
        if (record(index).watchers > 0) --record(index).watchers;
        touch(index);
    }
    void write(int index, std::uint32_t value) {
        record(index).value = {low8(value), low8(value >> 8), low8(value >> 16), low8(value >> 24)};
        flags(index) = low8((flags(index) | Pending | Watched | WriteDue) & ~unsigned{Valid});
        touch(index);
    }

    void withdraw(int ofBank, int index) {
        auto& flag = at(at(banks, ofBank).flags, index);
        flag = low8(flag & ~WriteDue);
        outputs.touched.push_back({ofBank, index});
    }

    // ---- What must now be so.

    Recheck recheck;
    std::array<std::vector<IndexRecord>, BankCount> identities;  ///< of the identity files
    int scanIndex = 0, retryCount = 0;
    bool idle = true, portOpen = true;
    std::vector<std::uint8_t> unread;
    std::array<int, 3> pictures{1, 2, 3};  ///< of the lamp panels 2, 3 and 4
    std::string panelText;                 ///< of panel 1
    std::array<std::optional<Micros>, ClockCount> due;

    std::array<Bank, BankCount> banks;

    Outputs outputs;

  private:
    Bank& bank() { return at(banks, currentBank); }
    std::uint8_t& flags(int index) { return at(bank().flags, index); }
    Record& record(int index) { return at(bank().records, index); }
    void touch(int index) { outputs.touched.push_back({currentBank, index}); }
    void restart(Clock clock, Micros now) { due[clock] = now + intervals[clock]; }
    void stop(Clock clock) { due[clock].reset(); }

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

    bool reopenPort() {
        if (!tryToOpenPort()) interrupt();
        return portOpen;
    }

    /// While the boards are asked for the first time a lost port is a silent one.
    void interrupt() {
        if (due[Tick] || recheck.phase != Recheck::Open || holding) recheck.interrupt();
    }

    void recheckTick(Micros now) {
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
        std::erase_if(recheck.unread, [this](const auto& place) {
            return at(at(banks, place.first).records, place.second).watchers == 0;
        });
        if (recheck.unread.empty()) endReading();
    }

    template <class Visit>
    void eachRecord(Visit&& visit) {
        const int before = currentBank;
        for (currentBank = 0; currentBank < BankCount; ++currentBank)
            for (int index = 1; bank().present && index < bank().recordCount; ++index) visit(index);
        currentBank = before;
    }

    void wantAllWatched() {
        recheck.unread.clear();
        eachRecord([this](int index) {
            if (record(index).watchers == 0) return;
            recheck.unread.emplace(currentBank, index);
            flags(index) = low8(flags(index) | Pending | Watched);
            touch(index);
        });
    }

    /// What users changed and is still due is held as well.
    void endReading() {
        eachRecord([this](int index) {
            if ((flags(index) & WriteDue) && isUsers(currentBank, index)) hold(index);
        });
        recheck.phase = Recheck::Open;
    }

    void hold(int index) {
        flags(index) = low8(flags(index) & ~WriteDue);
        touch(index);
    }

    /// The place where the scan stands is visited even when it lies at or beyond the end of the bank. A bank whose
    /// board is not there has nothing to visit.
    void scan(Micros now) {
        if (!bank().present) return nextBank();
        const int end = std::max(bank().recordCount, scanIndex + 1);
        for (;; ++scanIndex) {
            scanIndex = nextPending(bank().flags.data(), scanIndex, end);
            if (scanIndex >= end) return nextBank();
            if (gateOpens(scanIndex)) return ask(scanIndex, now);
        }
    }

    void nextBank() {
        scanIndex = 0;
        currentBank = (currentBank + 1) % BankCount;
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

    void send(Micros now) {
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

    /// To the board that the frame was built for, and to no other.
    void repeat(Micros now) {
        if (currentBank == request_.bank) return send(now);
        retryCount = 0;
        idle = true;
    }

    /// A silent board ends the exchange and leaves the retry count as it is; with the bit in Period the frame goes
    /// again.
    void replyTimeout(Micros now) {
        light(pictures, ErrorOn);
        light(pictures, ReceiveOff);
        stop(Reply);
        closePort();
        if (!reopenPort()) return restart(Reply, now);
        panelText.clear();
        if (!recheck.isClosed() && (record(scanIndex).period & silentRepeatPeriodBit) != 0) return repeat(now);
        idle = true;
    }

    void reopenTimeout(Micros now) {
        restart(Reopen, now);
        if (!idle) return stop(Reopen);
        if (!portOpen && !reopenPort()) return;
        stop(Reopen);
        panelText.clear();
    }

    /// Takes what stands unread as the reply, sets the reply data and says whether they pass.
    bool judge() {
        const bool single = unread.size() == 1;
        const std::uint8_t last = unread.back();
        const std::uint8_t* value = request_.isRead() ? unread.data() : request_.data.data();
        replyData_.assign(value, value + (request_.isRead() ? request_.n + 1 : request_.dataCount));
        unread.clear();
        if (request_.isRead()) return last == sum(replyData_.data(), replyData_.size());
        return single && last == low8(request_.checksum * 2);
    }

    /// Files the reply under the bank and place of this moment, or drops it if nothing is pending there.
    void accept() {
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

    /// Only the very end of the bank wraps here; a place beyond it is left to the scan.
    void finishReply() {
        telling_ = false;
        ++scanIndex;
        if (scanIndex == bank().recordCount) nextBank();
        idle = true;
    }

    Request request_;
    std::vector<std::uint8_t> replyData_;
    bool telling_ = false, tickGoesOn_ = false;
    std::pair<int, int> asked_{-1, 0};  ///< bank and number of the identity record, at the start
};

}  // namespace kestrel::testing::reference
