// The rules of the link as a small model that touches no port and no page: it is fed what the program is fed, and says
// what must go out, when, what the mirror then holds, what the pages are told and what the status bar shows. It shares
// nothing with the program, so that an error on one side shows as a difference.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
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
    void askIdentity(Micros now, int number);
    /// The program begins anew with the boards that are there now: the tick stops until startScan().
    void startAnew();
    /// The question is over, and what it has brought is known.
    void closeExchange();
    /// The start is over: the link is idle, the reply timer off, the error lamp off, and the tick timer begins.
    void startScan(Micros now);
    /// A timer that runs out and is not switched off runs again from that moment; switching on one that runs leaves it
    /// as it is; off and on starts it anew. `now` may be later than due.
    enum Clock { Tick, Reply, SendLamp, ReceiveLamp, Reopen, ClockCount };
    void runOut(Clock clock, Micros now);
    /// Behind the end of a recheck, where the program may write again what it has held, a tick goes on to the scan.
    void endTick(Micros now) {
        if (std::exchange(tickGoesOn_, false) && !recheck.isClosed()) scan(now);
    }
    /// These bytes came in and the serial event was raised. If a reply is accepted, the work stops where the pages
    /// are told: the driver then passes on what they do (watch, release, write, currentBank) and calls
    /// pagesTold(), which finishes the event. pagesTold() after an arrival that told nobody does nothing.
    void arrived(Micros now, const std::uint8_t* bytes, std::size_t count);
    void pagesTold() {
        if (telling_) finishReply();
    }
    /// The device went away under an open port, which is closed now; unread bytes are gone, and panel 1 says so.
    void portLost();
    /// The user chose a port and the search found a board: the port is open with nothing unread, unless it has gone
    /// away since, and what was said of a loss goes. An exchange that was open stays open and its time-out goes on.
    void portSearched(bool stillOpen);

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

    void closePort();
    bool tryToOpenPort();
    bool reopenPort();
    /// While the boards are asked for the first time a lost port is a silent one.
    void interrupt();
    void recheckTick(Micros now);

    template <class Visit>
    void eachRecord(Visit&& visit) {
        const int before = currentBank;
        for (currentBank = 0; currentBank < BankCount; ++currentBank)
            for (int index = 1; bank().present && index < bank().recordCount; ++index) visit(index);
        currentBank = before;
    }

    void wantAllWatched();
    /// What users changed and is still due is held as well.
    void endReading();
    void hold(int index);
    /// The place where the scan stands is visited even when it lies at or beyond the end of the bank. A bank whose
    /// board is not there has nothing to visit.
    void scan(Micros now);
    void nextBank();
    /// Period holds the reload value in its low nibble and the countdown in its high one.
    bool gateOpens(int index);
    void ask(int index, Micros now);
    void send(Micros now);
    /// To the board that the frame was built for, and to no other.
    void repeat(Micros now);
    /// A silent board ends the exchange and leaves the retry count as it is; with the bit in Period the frame goes
    /// again.
    void replyTimeout(Micros now);
    void reopenTimeout(Micros now);
    /// Takes what stands unread as the reply, sets the reply data and says whether they pass.
    bool judge();
    /// Files the reply under the bank and place of this moment, or drops it if nothing is pending there.
    void accept();
    /// Only the very end of the bank wraps here; a place beyond it is left to the scan.
    void finishReply();

    Request request_;
    std::vector<std::uint8_t> replyData_;
    bool telling_ = false, tickGoesOn_ = false;
    std::pair<int, int> asked_{-1, 0};  ///< bank and number of the identity record, at the start
};

}  // namespace kestrel::testing::reference
