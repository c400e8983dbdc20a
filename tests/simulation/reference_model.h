// The rules of the link as a small model that touches no port and no page: it is fed what the program is fed, and says
// what must go out, when, what the mirror then holds, what the pages are told and what the status bar shows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::testing {

/// Nine bytes of a parameter file, or the first five of an identity record.
struct IndexRecord {
    std::uint8_t addr2 = 0, addr1 = 0, command = 0, period = 0, addr0 = 0;
    std::array<std::uint8_t, 4> preload{};
};

/// A model of one run of the program. Whoever drives it calls one input a time, in the order in which the program meets
/// them, and compares state and outputs after each event. An input is carried out at once and completely, but for
/// arrived(); nothing happens by itself, timers included. Times are microseconds and never go back. A run goes through
/// many millions of events: none allocates memory once the lists have grown, and a tick that finds nothing costs a look
/// at one flag byte a record.
///
/// What the model stands for begins when the port has been opened and the first identity question is asked, with all
/// records empty, all counts 0, no board present, the link idle, ScanIndex and CurrentBank 0, the three lamps off
/// (their pictures 1, 2 and 3), no text, no timer running, and the port open and there.
///
/// The house has four rules of its own beside those of the link:
/// - Sending drops what stands unread. Bytes that arrive while no exchange is open are dropped; the bytes of an arrival
///   add to those that came before in the same exchange. At most 1024 stand unread, later ones are lost.
/// - Sending starts the reply time-out anew. A closed port is opened before a frame is sent. When the device is not
///   there the frame is lost, the port stays as it is, and panel 1 says "Check serial interface "; the reply time-out
///   runs all the same.
/// - The reply time-out closes and opens the port. When it cannot be opened, panel 1 says the same, and the exchange
///   stays open, its frame unsent, with a new reply time-out; so it goes on until the port is there.
/// - A tick with the link idle and the port closed does not scan but starts the reopen timer (1000 ms; one that runs is
///   left as it is). That timer on expiry: if an exchange is open, it stops; else if the port is closed, it tries to
///   open it, and on failure shows the text and stays on; when the port is open, it stops and the text goes.
class ReferenceModel {
  public:
    using Micros = std::int64_t;
    static constexpr int BankCount = 3;
    static constexpr int PlaceCount = 33001;  ///< indexes 0 to 33000 of a bank; those beyond its file are empty records

    // ---- What stands round the link. None of these is an event; they hold until they are set again.

    /// The bank's board was identified (`present`) and its parameter file read, or it is absent and `recordCount` is
    /// that of its identity file while `records` is empty. records[0] is parameter 1. Period, value and flags start
    /// afresh.
    void load(int bank, bool present, int recordCount, const std::vector<IndexRecord>& records);
    /// While set, replies close the exchange and are not stored.
    void setLinkSetup(bool setup);
    /// A page moved the cursor.
    void setCurrentBank(int bank);
    /// Whether the device answers to an opening, and takes what is sent. Unsetting it closes nothing: see portLost().
    void setPortThere(bool there);

    // ---- Events of the link.

    /// The program asks identity record `record`: one byte, whatever width its command names (n = 0).
    void askIdentity(Micros now, const IndexRecord& record);
    /// The start is over: the link is idle, the reply timer off, the error lamp off, ScanIndex as it is, and the tick
    /// timer begins.
    void startScan(Micros now);
    /// Timers ran out. The driver calls these when the program's own timer fires; `now` may be later than due().
    void tick(Micros now);
    void replyTimeout(Micros now);
    void sendLampTimeout(Micros now);
    void receiveLampTimeout(Micros now);
    void reopenTimeout(Micros now);
    /// These bytes came in and the serial event was raised. If a reply is accepted, the work stops where the pages
    /// are told: the driver then passes on what they do (watch, release, write, setCurrentBank) and calls
    /// pagesTold(), which finishes the event. pagesTold() after an arrival that told nobody does nothing.
    void arrived(Micros now, const std::uint8_t* bytes, std::size_t count);
    void pagesTold();
    /// The device went away under an open port, which is closed now; unread bytes are gone, and panel 1 says so.
    void portLost();
    /// The user chose a port and the search found a board: the port is open with nothing unread, and the reply data
    /// are this one byte. An exchange that was open stays open and its time-out goes on.
    void portSearched(std::uint8_t probeReply);

    // ---- What pages do, in CurrentBank. Never with index 0.

    void watch(int index);
    void release(int index);
    void write(int index, std::uint32_t value);

    // ---- What must now be so.

    /// What happened since clearOutputs(), in order.
    struct Frame {
        Micros when;
        std::array<std::uint8_t, 12> bytes;  ///< the first `count`
        std::size_t count;
    };
    struct Told {  ///< one notification, which goes to every page
        int bank;
        int index;
        std::int64_t value;
    };
    struct Place {
        int bank;
        int index;
    };
    struct Outputs {
        std::vector<Frame> frames;
        std::vector<Told> told;
        std::vector<Place> touched;  ///< records of which anything was set, perhaps to what it was; may repeat
        int opened = 0;              ///< how often the port was opened
    };
    const Outputs& outputs() const;
    void clearOutputs();  ///< keeps the memory of the lists: it is called after every event

    struct Record {
        std::array<std::uint8_t, 4> value{};
        std::uint8_t period = 0;
        std::uint8_t watchers = 0;
    };
    const Record& record(int bank, int index) const;
    /// The flag bytes of a bank, PlaceCount of them one behind another.
    const std::uint8_t* flags(int bank) const;

    int currentBank() const;
    int scanIndex() const;
    int retryCount() const;
    bool idle() const;
    bool portOpen() const;
    const std::vector<std::uint8_t>& replyData() const;
    std::size_t unread() const;            ///< bytes that stand unread
    int picture(int panel) const;          ///< lamp panels 2, 3 and 4: the number of the picture on show
    const std::string& panelText() const;  ///< of panel 1

    enum class Clock { Tick, Reply, SendLamp, ReceiveLamp, Reopen };
    /// When the timer runs out next, or nothing while it is off. A timer that runs out and is not switched off runs
    /// again from that moment; switching on one that runs leaves it as it is; off and on starts it anew.
    std::optional<Micros> due(Clock clock) const;

    ReferenceModel();
    ~ReferenceModel();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace kestrel::testing
