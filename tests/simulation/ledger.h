// The ledger of intents: what the user wanted, on which machine, and how it ended. Every write that a board hears must
// be wanted and not ended yet; nothing that was wanted vanishes; an order runs as it was clicked, once or not at all.
#pragma once

#include <array>
#include <list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "link/page.h"
#include "platform/platform.h"
#include "simulation/fault_line.h"
#include "support/virtual_platform.h"

namespace kestrel::testing {

/// How an intent ended.
enum class End : std::size_t { Confirmed, Replaced, Told, Dropped, Lost, BoardLied, FalseReply, SlowReply, Kinds };

class Ledger {
  public:
    using Record = std::pair<int, int>;  ///< bank and number
    using Ends = std::array<long, static_cast<std::size_t>(End::Kinds)>;

    Ledger(const VirtualPlatform& platform, const FaultLine& line);
    ~Ledger();
    /// The one that is kept, or null.
    static Ledger* present();

    // What pages do, and the user on them.
    void opens(const Page& page);
    void telling(const Page& page, Record record);
    void told() { told_ = nullptr; }
    void written(Record record, std::uint32_t value);
    void withdrawn(Record record);
    void boxOpens();
    void answered(const Message& message, Message::Answer answer);
    /// All tables are loaded anew, for the boards that are there now.
    void startsAnew();
    // What the line does.
    void asks(Record record, const simulator::Frame& frame);  ///< the first frame of an exchange
    void heard(const simulator::Exchange& exchange);
    void accepted(Record record, bool write, std::uint32_t value);
    void overwrittenBySlowReply(Record record, std::uint32_t by);
    void interrupted();

    void afterEvent();
    /// The line is well and all that is watched has been read: nothing may be open any more.
    void atRest() const;

    const Ends& ends() const { return ends_; }

  private:
    struct Opening {
        long number = 0;
        std::set<Record> told;  ///< of which the page has heard
    };
    /// A click that has a machine do something: what stands in the mailbox, and the command that follows.
    struct Order {
        long number;
        const Page* page;
        long opening;
        Record command;
        Micros clicked;
        std::uint32_t code = 1;
        std::map<int, std::uint32_t> mailbox = {};
        std::optional<Micros> givenUp = {}, ran = {};
    };
    enum class State { Due, Sent, Lost, Refused, Suspended, Held };
    struct Wish {
        Record record;
        std::uint32_t value;
        std::size_t machine;
        long boxes;  ///< shown when its page was last seen
        const Page* page = nullptr;
        Control* control = nullptr;  ///< on which the user acted
        long opening = 0;            ///< of the page; 0: a page's own write
        long order = 0;              ///< 0: a setting
        State state = State::Due;
        bool reached = false;  ///< a board has it
        bool lied = false;     ///< a board acknowledged it and did otherwise
        std::optional<Micros> gone = {};
        int eventsGone = 0;
        bool isSetting() const { return opening != 0 && order == 0; }
    };
    /// A write that is on the line.
    struct Sending {
        Record record;
        std::uint32_t value;
        Wish wish;
        Micros begun;
    };

    Wish* find(Record record);
    Order* order(long number);
    bool isOpen(const Page* page, long opening) const;
    bool isStillOrdered(const Order& order) const;
    void count(End how) { ++ends_[static_cast<std::size_t>(how)]; }
    void end(Record record, End how);
    void goesOn(Wish& held, std::uint32_t value);
    void wantedByUser(Wish& wish);
    void takeForOrder(Wish& wish);
    void heardOfOrder(Order& order, const Sending& sent);
    void look(Wish& wish);
    std::string nameOf(const Wish& wish) const;

    const VirtualPlatform& platform_;
    const FaultLine& line_;
    Ends ends_{};
    std::map<const Page*, Opening> openings_;
    const Page* told_ = nullptr;  ///< of a value at this moment
    std::pair<const Control*, Micros> actor_;
    std::vector<Record> act_;  ///< what the act that goes on has written
    long actBegan_ = 0;        ///< orders before it
    std::list<Order> orders_;
    std::vector<Wish> wishes_;
    std::list<Sending> sent_;                                ///< the newest writes that went out, the newest first
    std::list<Sending>::const_iterator open_ = sent_.end();  ///< in the open exchange
    std::set<Record> lied_;                                  ///< what some board did not store as it said
    long opened_ = 0, ordered_ = 0, boxes_ = 0;
    long interruptions_ = 0, interruptionsAtBox_ = 0;
    bool boxIsOpen_ = false;
    bool mayGo_ = false;  ///< what is held: the user has said so
};

}  // namespace kestrel::testing
