// The ledger of intents: what the user wanted, on which machine, and how it ended. Every write that a board hears must
// be wanted and not ended yet; nothing that was wanted vanishes; an order runs as it was clicked, once or not at all.
#pragma once

#include <array>
#include <deque>
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

/// How intents ended, as they are counted.
enum class End : std::size_t { Confirmed, Replaced, Told, Dropped, BoardLied, FalseReply, SlowReply, Kinds };

class Ledger {
  public:
    Ledger(const VirtualPlatform& platform, FaultLine& line);
    ~Ledger();
    /// The one that is kept, or null.
    static Ledger* present();

    using Record = std::pair<int, int>;  ///< bank and number
    /// Who is at work: a user on a control, or a page that is being told of a value.
    struct Doer {
        const Page* page = nullptr;
        Control* control = nullptr;
    };

    void opens(const Page& page) { openings_[&page] = {++opened_, {}}; }
    void begins(const Doer& doer);
    void ends();
    void told(const Page& page, Record record) { openings_[&page].told.insert(record); }
    void written(Record record, std::uint32_t value);
    void withdrawn(Record record);
    void asks(Record record, const simulator::Frame& frame);  ///< the first frame of an exchange
    void heard(const simulator::Exchange& exchange);
    void accepted(Record record, bool write, std::uint32_t value);
    void overwrittenBySlowReply(Record record, std::uint32_t by);
    void interrupted();
    void answered(const Message& message, Message::Answer answer);
    void afterEvent();
    /// The line is well and all that is watched has been read: nothing may be open any more.
    void atRest() const;

    using Ends = std::array<long, static_cast<std::size_t>(End::Kinds)>;
    Ends counts{};

  private:
    struct Opening {
        long number = 0;
        std::set<Record> told;  ///< of which the page has heard
    };
    /// A click that has a machine do something: what stands in the mailbox, and the command that follows.
    struct Order {
        long number;
        Doer doer;
        long opening;
        std::size_t machine;
        std::map<int, std::uint32_t> mailbox;
        Record command;
        std::uint32_t code = 0;
        Micros clicked;
        std::optional<Micros> givenUp;
        std::optional<Micros> ran;
    };
    enum class State { Due, Sent, Lost, Refused, Suspended };
    struct Wish {
        Record record;
        std::uint32_t value;
        Doer doer;
        long opening;  ///< of its page; 0: a page's own write
        long order;    ///< 0: a setting
        std::size_t machine;
        long boxes;  ///< shown when its page was last seen
        State state = State::Due;
        bool reached = false;  ///< a board has it
        bool lied = false;     ///< a board acknowledged and did otherwise
        std::optional<Micros> gone = {};
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
    bool isOpen(const Doer& doer, long opening) const;
    void end(Record record, End how);
    void takeForOrder(Record record, std::uint32_t value, Wish& wish);
    void heardOfOrder(Order& order, const Sending& sent);
    bool ordersPage(const Order& order) const;
    void look(Wish& wish);
    std::string nameOf(const Wish& wish) const;

    const VirtualPlatform& platform_;
    FaultLine& line_;
    std::map<const Page*, Opening> openings_;
    std::vector<Doer> doers_;
    std::vector<Record> act_;  ///< what the act that goes on has written
    std::deque<Order> orders_;
    std::vector<Wish> wishes_;
    std::list<Sending> sent_;                                   ///< the newest writes that went out, the newest first
    std::list<Sending>::const_iterator sending_ = sent_.end();  ///< in the open exchange
    std::set<Record> lied_;                                     ///< what some board did not store as it said
    long opened_ = 0, ordered_ = 0, boxes_ = 0, actBegan_ = 0;
    bool saidNo_ = false;
};

}  // namespace kestrel::testing
