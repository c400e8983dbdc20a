// The rules of the link as a small model that touches no port and no page: it is fed what the program is fed, and says
// what must go out, when, what the mirror then holds, what the pages are told and what the status bar shows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
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
/// arrived(); nothing happens by itself, timers included. Times are microseconds and never go back. None of many
/// millions of events allocates memory once the lists have grown.
///
/// What the model stands for begins when the port has been opened and the first identity question is asked, with all
/// records empty, no board present, the lamps off, no timer running, and the port open and there.
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

    // ---- What stands round the link: none of these is an event, and they hold until they are set again.

    int currentBank = 0;    ///< a page moves it
    bool setup = false;     ///< while set, replies close the exchange and are not stored
    bool portThere = true;  ///< whether the device can be opened and takes what is sent; unsetting it closes nothing
    /// The bank's board was identified (`present`) and its parameter file read, or it is absent and `recordCount` is
    /// that of its identity file while `records` is empty. records[0] is parameter 1.
    void load(int bank, bool present, int recordCount, const std::vector<IndexRecord>& records);

    // ---- Events of the link.

    /// The program asks identity record `record`: one byte, whatever width its command names (n = 0).
    void askIdentity(Micros now, const IndexRecord& record);
    /// The start is over: the link is idle, the reply timer off, the error lamp off, and the tick timer begins.
    void startScan(Micros now);
    /// A timer that runs out and is not switched off runs again from that moment; switching on one that runs leaves it
    /// as it is; off and on starts it anew. `now` may be later than due.
    enum Clock { Tick, Reply, SendLamp, ReceiveLamp, Reopen, ClockCount };
    void runOut(Clock clock, Micros now);
    /// These bytes came in and the serial event was raised. If a reply is accepted, the work stops where the pages
    /// are told: the driver then passes on what they do (watch, release, write, currentBank) and calls
    /// pagesTold(), which finishes the event. pagesTold() after an arrival that told nobody does nothing.
    void arrived(Micros now, const std::uint8_t* bytes, std::size_t count);
    void pagesTold();
    /// The device went away under an open port, which is closed now; unread bytes are gone, and panel 1 says so.
    void portLost();
    /// The user chose a port and the search found a board: the port is open with nothing unread. An exchange that was
    /// open stays open and its time-out goes on.
    void portSearched();

    // ---- What pages do, in currentBank. Never with index 0.

    void watch(int index);
    void release(int index);
    void write(int index, std::uint32_t value);

    // ---- What must now be so.

    int scanIndex = 0, retryCount = 0;
    bool idle = true, portOpen = true;
    std::vector<std::uint8_t> unread;
    std::array<int, 3> pictures{1, 2, 3};  ///< of the lamp panels 2, 3 and 4
    std::string panelText;                 ///< of panel 1
    std::array<std::optional<Micros>, ClockCount> due;

    struct Record {
        std::array<std::uint8_t, 4> value{};
        std::uint8_t period = 0, watchers = 0;
    };
    /// One place more than a bank has: the scan may come to stand just behind the last, where nothing is ever pending.
    template <class T>
    using Places = std::vector<T>;
    struct Bank {
        bool present = false;
        int recordCount = 0;
        Places<std::uint8_t> flags = Places<std::uint8_t>(PlaceCount + 1);
        Places<IndexRecord> file = Places<IndexRecord>(PlaceCount + 1);
        Places<Record> records = Places<Record>(PlaceCount + 1);
    };
    std::array<Bank, BankCount> banks;

    /// What happened since clear(), in order.
    struct Frame {
        Micros when;
        std::array<std::uint8_t, 12> bytes;  ///< the first `count`
        std::size_t count;
    };
    struct Place {
        int bank, index;
    };
    struct Outputs {
        std::vector<Frame> frames;
        std::optional<Place> told;   ///< the record of which every page is notified ...
        std::int64_t toldValue = 0;  ///< ... and its value
        std::vector<Place> touched;  ///< records of which anything was set, perhaps to what it was; may repeat
        int opened = 0;              ///< how often the port was opened
        void clear();                ///< keeps the memory of the lists
    } outputs;

  private:
    struct Request {
        IndexRecord record;  ///< its address, and its command with the write bit
        std::array<std::uint8_t, 4> data{};
        std::size_t dataCount = 0;
        unsigned n = 0;  ///< value bytes minus 1
        unsigned checksum = 0;
        bool isRead() const;
    };

    Bank& bank();
    std::uint8_t& flags(int index);
    Record& record(int index);
    void touch(int index);
    void stop(Clock clock) { due[clock].reset(); }
    void restart(Clock clock, Micros now);
    void closePort();
    bool tryToOpenPort();
    void scan(Micros now);
    void nextBank();
    bool gateOpens(int index);
    void ask(int index, Micros now);
    Frame frame(Micros now);
    void send(Micros now);
    void replyTimeout(Micros now);
    void reopenTimeout(Micros now);
    bool judge();
    void accept();
    void finishReply();

    Request request_;
    std::vector<std::uint8_t> replyData_;
    bool telling_ = false;
};

}  // namespace kestrel::testing
