// The ledger of intents: what the user wanted, on which machine, and how it ended. Every write that a board hears must
// be wanted and not ended yet; nothing that was wanted vanishes; an order runs as it was clicked, once or not at all.
#pragma once

#include <list>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "link/page.h"
#include "platform/basic_controls.h"
#include "platform/platform.h"
#include "simulation/counts.h"
#include "simulation/fault_line.h"
#include "support/virtual_platform.h"

namespace kestrel::testing {

class Ledger {
  public:
    using Record = std::pair<int, int>;  ///< bank and number

    Ledger(const VirtualPlatform& platform, const FaultLine& line, Counts& counts)
        : platform_(platform), line_(line), counts_(counts) {}

    // What pages do, and the user on them.
    void opens(const Page& page) { openings_[&page] = {++opened_, {}}; }
    void telling(const Page& page, Record record);
    void told() { told_ = nullptr; }
    void written(Record record, std::uint32_t value);
    void withdrawn(Record record);
    /// The user's finger stays on the control, or what it did there has been dropped: nothing of it goes out.
    void holds(const Control& control) { held_[&control] = boxes_; }
    /// The end of that, unless a message box has come between.
    void commits(const Control& control) {
        if (const auto held = held_.find(&control); held != held_.end() && held->second == boxes_) held_.erase(held);
    }
    /// The user acts on it in earnest.
    void letsGo(const Control& control) {
        held_.erase(&control);
        lastAct_ = {&control, platform_.now()};
        const auto* bar = dynamic_cast<const ScrollBar*>(&control);
        isHandedOn_ = bar && bar->isTypedAlone;
    }
    void boxOpens();
    void answered(const Message& message, Message::Answer answer);
    /// All tables are loaded anew, for the boards that are there now.
    void startsAnew();
    // What the line does.
    void asks(Record record, const simulator::Frame& frame);  ///< the first frame of an exchange
    void heard(const simulator::Exchange& exchange);          ///< a board has made up its mind about a frame
    void accepted(Record record, bool write, std::uint32_t value);
    void overwrittenBySlowReply(Record record, std::uint32_t by);
    void interrupted();

    void afterEvent();
    /// The line is well and all that is watched has been read: nothing may be open any more.
    void atRest() const;

  private:
    struct Opening {
        long number = 0;
        std::set<Record> told;  ///< of which the page has heard
    };
    /// A click that has a machine do something: what stands in the mailbox, and the command that follows.
    struct Order {
        const Page* page;
        long opening;
        Control* key;
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
        Control* control = nullptr;         ///< on which the user acted
        long opening = 0;                   ///< of the page; 0: a page's own write
        std::shared_ptr<Order> order = {};  ///< null: a setting
        State state = State::Due;
        bool reached = false;  ///< a board has it
        bool lied = false;     ///< a board acknowledged it and did otherwise
        Micros untold = 0;     ///< since its page has gone
        bool isSetting() const { return opening != 0 && !order; }
    };
    /// A write that is on the line.
    struct Sending {
        std::uint32_t value;
        Wish wish;
        Micros begun;
    };

    Wish* find(Record record);
    bool isOpen(const Page* page, long opening) const;
    bool isStillOrdered(const Order& order) const;
    void end(Record record, Count how);
    void wantedByUser(Wish& wish);
    void takeForOrder(Wish& wish);
    void heardOfOrder(const Sending& sent);
    void look(Wish& wish);
    std::string nameOf(const Wish& wish) const;

    const VirtualPlatform& platform_;
    const FaultLine& line_;
    Counts& counts_;
    std::map<const Page*, Opening> openings_;
    const Page* told_ = nullptr;                 ///< of a value at this moment
    std::pair<const Control*, Micros> readBy_;   ///< the act that has just written what its page has read
    std::pair<const Control*, Micros> lastAct_;  ///< in earnest
    bool isHandedOn_ = false;                    ///< to other bars, as it settles
    std::map<const Control*, long> held_;        ///< and the boxes shown before
    std::map<std::pair<const Page*, int>, std::shared_ptr<Order>> orders_;  ///< the newest of a page to a board
    std::vector<Wish> wishes_;
    std::list<Sending> sent_;                                ///< the newest writes that went out, the newest first
    std::list<Sending>::const_iterator open_ = sent_.end();  ///< in the open exchange
    std::set<Record> lied_;                                  ///< what some board did not store as it said
    long opened_ = 0, boxes_ = 0;
    Micros last_ = 0;
    long interruptions_ = 0, interruptionsAtBox_ = 0;
    bool boxIsOpen_ = false;
    bool mayGo_ = false, mayStartAnew_ = false;  ///< the user has said so, of what is held and of other boards
};

}  // namespace kestrel::testing
