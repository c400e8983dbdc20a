// The ledger of intents.
#include "simulation/ledger.h"

#include <algorithm>

#include "link/changes.h"
#include "link/link_engine.h"
#include "link/loaded_pages.h"
#include "link/recheck.h"
#include "pages/beverage/frm_dosi.h"
#include "pages/diagnostics/frm_test_cedar.h"
#include "simulation/require.h"

namespace kestrel::testing {

namespace {

using Record = Ledger::Record;

constexpr Micros Second = 1'000'000;
constexpr Micros Grace = Second / 5;  ///< for what waits for the end of an exchange
constexpr Micros LongestSettling = ScrollBar::SettleMs * Second / 1000 + Grace;  ///< of a gesture
constexpr Micros GraceOfTeller = Second;                                         ///< for a box
constexpr Micros LongestCounted = Second / 20;  ///< between two events; beyond it the program stood still
constexpr Micros InOutGivesUp = 5 * Second + Grace;
constexpr std::size_t FramesUnderWay = 8;  ///< while boards are slow to hear

/// The command registers by bank, and the mailboxes before which no command may go out.
constexpr std::array<Record, Banks> Commands = {{{0, 4}, {1, 1}, {2, 284}}};
const std::set<Record> Mailboxes = {{0, 5}, {0, 6}, {0, 370}, {1, 2},   {1, 3},
                                    {1, 4}, {1, 5}, {1, 6},   {2, 285}, {2, 286}};
constexpr const char* ClearingPage = "FrmCancella";           ///< its command has no mailbox, and moves nothing
constexpr Record Decimals = {0, 359}, DecimalsTold = {0, 3};  ///< what the master makes of it
const std::set<Record> ClockSetters = {{0, 239}, {0, 240}, {0, 241}, {0, 242}, {0, 243}};
constexpr int ClockDistance = 5;  ///< from what sets the clock to what shows it
constexpr int PowderTestTime = 370;
constexpr std::uint32_t PowderTest = 18, WaterOnly = 26, Run = 2;

bool isCommand(Record record) { return std::find(Commands.begin(), Commands.end(), record) != Commands.end(); }

/// That In/Out is open or closed; settings that their rules have pages put right when they are told of a value; and the
/// command 0 by which Doses answers every echo of its mailbox.
bool isPagesOwn(const Page* told, Record record, std::uint32_t value) {
    static const std::map<std::string, std::vector<std::pair<Record, Record>>> putRight = {
        {"FrmInOut", {}},
        {"FrmConMac", {{{1, 1154}, {1, 1154}}}},
        {"FrmProUni", {{{1, 1299}, {1, 1299}}, {{1, 1301}, {1, 1301}}, {{1, 1394}, {1, 1411}}}},
        {"FrmPresel", {{{1, 1412}, {1, 1415}}, {{1, 1424}, {1, 1427}}}}};
    if (record == Record{0, 368} || record == Record{0, 369}) return true;
    if (!told) return false;
    if (told->name() == "FrmDosi") return record == Commands[0] && value == 0;
    const auto runs = putRight.find(told->name());
    return runs != putRight.end() && std::any_of(runs->second.begin(), runs->second.end(), [&](const auto& run) {
               return run.first <= record && record <= run.second;
           });
}

/// Keys stand for no value; all others show what their board holds.
bool standsForValue(const Control& control) {
    return !dynamic_cast<const CommandButton*>(&control) && !dynamic_cast<const Label*>(&control);
}

std::uint32_t cut(std::uint32_t value, int width) { return width < 4 ? value & ((1U << 8 * width) - 1) : value; }

int widthOf(Record record) { return ValueNibble(ParamTable(record.first, record.second).Command) + 1; }

std::uint32_t valueOf(const simulator::Bytes& data) {
    return static_cast<std::uint32_t>(ValueOf(data.data(), static_cast<int>(data.size()) - 1));
}

std::string text(Record record, std::uint32_t value) { return say(Place{record.first, record.second}, " = ", value); }

}  // namespace

Ledger::Wish* Ledger::find(Record record) {
    const auto found = std::find_if(wishes_.begin(), wishes_.end(), [&](auto& w) { return w.record == record; });
    return found == wishes_.end() ? nullptr : &*found;
}

bool Ledger::isOpen(const Page* page, long opening) const {
    const std::vector<Page*> loaded = LoadedPages();
    return std::find(loaded.begin(), loaded.end(), page) != loaded.end() && openings_.at(page).number == opening;
}

void Ledger::end(Record record, Count how) {
    ++counts_[how];
    std::erase_if(wishes_, [&](const Wish& wish) { return wish.record == record; });
}

std::string Ledger::nameOf(const Wish& wish) const {
    return text(wish.record, wish.value) + (isOpen(wish.page, wish.opening) ? " by " + wish.page->name() : "");
}

// ---- What is wanted.

void Ledger::telling(const Page& page, Record record) {
    told_ = &page;
    openings_[&page].told.insert(record);
}

/// What was due at an interruption is written again, by no page, when the user has said so.
void Ledger::written(Record record, std::uint32_t value) {
    Wish* const older = find(record);
    if (older && older->state == State::Held && !Control::acting() && !told_) {
        require(older->value == value, "what was held goes out as it was", nameOf(*older), ", not ", value);
        require(mayGo_, "what was held goes out when the user says so", nameOf(*older));
        older->machine = line_.plugged();
        older->state = State::Due;
        return;
    }
    if (older) end(record, Replaced);
    Wish wish{record, value, line_.plugged(), boxes_};
    wish.control = Control::acting();
    wish.page = wish.control ? dynamic_cast<const Page*>(wish.control->window()) : told_;
    if (!isPagesOwn(wish.control ? nullptr : told_, record, value)) wantedByUser(wish);
    wishes_.push_back(wish);
}

/// Of a setting that the board keeps twice the page is told the first; the copy is written right after it.
void Ledger::wantedByUser(Wish& wish) {
    require(wish.page, "only what somebody chose is written", nameOf(wish));
    // A key may set what the finger was on, such as the clock by the computer's, and so may a time of day as it
    // settles.
    const Micros since = platform_.now() - lastAct_.second;
    const bool byAnother = lastAct_.first != wish.control && since <= (isHandedOn_ ? LongestSettling : 0);
    require(byAnother || !held_.contains(wish.control), "what is under the finger, or dropped, is not written",
            nameOf(wish));
    wish.opening = openings_[wish.page].number;
    const bool isOrder = isCommand(wish.record) || Mailboxes.contains(wish.record);
    if (isOrder && wish.page->name() != ClearingPage) return takeForOrder(wish);
    require(wish.control, "only what somebody chose is written", nameOf(wish));
    const auto& told = openings_[wish.page].told;
    Record read = wish.record == Decimals ? DecimalsTold : wish.record;
    if (ClockSetters.contains(read) && !told.contains(read)) read.second += ClockDistance;
    const std::pair<const Control*, Micros> act{wish.control, platform_.now()};
    require(!standsForValue(*wish.control) || told.contains(read) || readBy_ == act,
            "what has not been read is not written", nameOf(wish), ", ", wish.control->accessibleName());
    if (told.contains(read)) readBy_ = act;
}

/// A click begins an order of its page; what the page writes when it hears of an echo belongs to its newest one.
void Ledger::takeForOrder(Wish& wish) {
    std::shared_ptr<Order>& newest = orders_[{wish.page, wish.record.first}];
    if (wish.control && (!newest || newest->key != wish.control || newest->clicked != platform_.now())) {
        if (newest && !newest->givenUp) newest->givenUp = platform_.now();
        newest = std::make_shared<Order>(Order{wish.page, wish.opening, wish.control, platform_.now()});
        lied_.clear();
    }
    require(newest && newest->opening == wish.opening, "an order was clicked", nameOf(wish));
    wish.order = newest;
    if (!wish.control) return;
    if (isCommand(wish.record))
        newest->code = wish.value;
    else
        newest->mailbox[wish.record.second] = wish.value;
    if (const auto* doses = dynamic_cast<const FrmDosi*>(wish.page))
        newest->code = newest->mailbox.contains(PowderTestTime) ? PowderTest
                       : wish.control == &doses->Command4[0]    ? WaterOnly
                                                                : Run;
    else if (newest->mailbox.size() > 1)
        newest->code = Run;
}

void Ledger::withdrawn(Record record) {
    if (find(record)) end(record, Dropped);
}

void Ledger::boxOpens() {
    ++boxes_;
    boxIsOpen_ = true;
    interruptionsAtBox_ = interruptions_;
}

void Ledger::answered(const Message& message, Message::Answer answer) {
    boxIsOpen_ = false;
    const bool isOfTheLink = message.title == "Kestrel" && message.buttons == Message::Buttons::YesNo;
    if (!isOfTheLink || interruptions_ != interruptionsAtBox_) return;
    (LineIsClosed() ? mayStartAnew_ : mayGo_) = answer == Message::Answer::Yes;
    for (std::size_t i = wishes_.size(); i > 0; --i)
        if (const Wish& wish = wishes_[i - 1];
            !mayGo_ && !LineIsClosed() && wish.state == State::Held && wish.isSetting())
            end(wish.record, Dropped);
}

void Ledger::startsAnew() {
    require(mayStartAnew_, "the program starts anew when the user says so");
    while (!wishes_.empty()) end(wishes_.back().record, Dropped);
}

// ---- What goes over the line.

void Ledger::asks(Record record, const simulator::Frame& frame) {
    open_ = sent_.end();
    if (!frame.write) return;
    const std::uint32_t value = valueOf(frame.data);
    Wish* wish = find(record);
    require(wish && cut(wish->value, frame.width) == value, "a write is what somebody wants", text(record, value));
    wish->state = State::Sent;
    sent_.push_front({value, *wish, platform_.now()});
    open_ = sent_.begin();
    if (sent_.size() > FramesUnderWay) sent_.pop_back();
}

/// A board has made up its mind about a frame.
void Ledger::heard(const simulator::Exchange& exchange) {
    const simulator::Frame& frame = exchange.request;
    if (frame.verdict != simulator::Frame::Verdict::Good || !frame.write) return;
    const Record record{static_cast<int>(frame.board), exchange.parameter};
    const std::uint32_t value = valueOf(frame.data);
    const auto sent = std::find_if(sent_.begin(), sent_.end(),
                                   [&](const Sending& s) { return s.wish.record == record && s.value == value; });
    const bool wasSent = sent != sent_.end();
    require(wasSent || line_.spoiledMayBe(), "a write that is heard was sent", text(record, value));
    if (!wasSent) return;  // spoiled on its way, and the sum does not show it
    require(exchange.parameter != 0, "a write goes to a place that its board has", text(record, value));
    require(sent->wish.machine == line_.plugged(), "a write goes to the machine it was meant for", nameOf(sent->wish));
    const auto struck = [&](const char* fault) { return exchange.note.find(fault) != std::string::npos; };
    const bool lies = struck("noeffect") || struck("clamp");
    if (lies) lied_.insert(record);
    if (Wish* wish = find(record); wish && wish->state == State::Sent) {
        wish->lied = wish->lied || lies;
        wish->reached = wish->reached || !exchange.reply.empty() || line_.memory(record.first, record.second) == value;
    }
    if (sent->wish.order) heardOfOrder(*sent);
}

void Ledger::heardOfOrder(const Sending& sent) {
    const auto& [value, wish, begun] = sent;
    const Record record = wish.record;
    Order& order = *wish.order;
    require(!order.givenUp || begun <= *order.givenUp, "nothing of an order goes out after it was given up",
            text(record, value), ", clicked at ", order.clicked, ", given up at ", order.givenUp.value_or(0));
    if (!isCommand(record)) return;
    same("an order is the one that was clicked", value, order.code);
    for (const auto& [index, wanted] : order.mailbox) {
        const std::uint32_t holds = line_.memory(record.first, index);
        if (holds == cut(wanted, widthOf({record.first, index}))) continue;
        const bool lied = lied_.contains({record.first, index}) || line_.memoryUpsetSince(order.clicked);
        require(lied || line_.lateMayBe() || line_.spoiledMayBe(), "an order finds in its mailbox what was clicked",
                text({record.first, index}, holds), ", not ", wanted);
        ++counts_[lied ? BoardLied : FalseReplies];
    }
    require(!order.ran || *order.ran == begun, "an order runs once", text(record, value));
    order.ran = begun;
}

/// A reply was taken for this record; of a write that was moved elsewhere by a page nothing is known.
void Ledger::accepted(Record record, bool write, std::uint32_t value) {
    Wish* wish = find(record);
    if (!wish) return;
    if (write && open_ != sent_.end() && open_->wish.record == record && wish->state == State::Sent) {
        const bool mayBeFalse = line_.lateMayBe() || line_.spoiledMayBe();
        require(wish->reached || mayBeFalse, "what is confirmed was heard", nameOf(*wish));
        end(record, !wish->reached ? FalseReplies : wish->lied ? BoardLied : Confirmed);
    } else if (!write && wish->state == State::Lost) {
        if (cut(wish->value, widthOf(record)) == value) return end(record, Confirmed);
        wish->state = State::Refused;
    }
}

/// The rules of the link have what the reply said written then.
void Ledger::overwrittenBySlowReply(Record record, std::uint32_t by) {
    Wish* const wish = find(record);
    if (!wish) return;
    ++counts_[SlowReplies];
    wish->value = by;
    wish->opening = 0;
}

/// The line led nowhere, or may lead to another machine now.
void Ledger::interrupted() {
    ++interruptions_;
    mayGo_ = mayStartAnew_ = false;
    for (auto& [road, order] : orders_)
        if (!order->givenUp) order->givenUp = platform_.now();
}

// ---- What becomes of it.

/// Whether its page still stands behind the order.
bool Ledger::isStillOrdered(const Order& order) const {
    if (!isOpen(order.page, order.opening)) return false;
    if (const auto* doses = dynamic_cast<const FrmDosi*>(order.page)) return doses->TestLamp.Active;
    if (const auto* model = dynamic_cast<const FrmTestCedar*>(order.page))
        return order.mailbox.empty() || model->Label2[1].Caption.get() != "_ _";
    if (order.page->name() != "FrmInOut" || order.code != Run) return true;
    // Its five seconds begin anew with every output that is clicked.
    return std::ranges::any_of(orders_, [&](const auto& each) {
        return each.second->page == order.page && platform_.now() < each.second->clicked + InOutGivesUp;
    });
}

void Ledger::look(Wish& wish) {
    const auto [bank, index] = wish.record;
    const std::uint8_t flags = ParamFlags(bank, index);
    const bool due = (flags & flag::WriteDue) != 0;
    const ParamValue held = ValueOf(ParamTable(bank, index).Value.data(), WrittenBytes - 1);
    if ((wish.state == State::Due || wish.state == State::Suspended) && IsHeld(bank, index)) wish.state = State::Held;
    if (wish.state == State::Held) return;
    // What a page wrote by itself is dropped at an interruption, and the record read again.
    const bool dropped = !(flags & flag::Pending) || (wish.state == State::Due && held != wish.value);
    if (wish.opening == 0 && !due && dropped) return end(wish.record, Dropped);
    if (wish.state == State::Sent && Link().LinkIdle) wish.state = State::Lost;
    // The frame was lost on this side, at the port.
    if (wish.state == State::Due && !due && (flags & flag::Pending) && held == wish.value) wish.state = State::Lost;
    require(wish.state != State::Due || (due && held == wish.value), "nothing that is wanted vanishes", nameOf(wish),
            due ? "" : ", not due", ", mirror ", held);
    if (!wish.isSetting() || wish.state == State::Suspended) return;
    // A page that turns to other records leaves a change behind as one does that closes.
    const bool left = std::ranges::none_of(
        Changes(), [&](const Change& change) { return change.page && change.bank == bank && change.index == index; });
    const bool open = isOpen(wish.page, wish.opening) && (wish.state == State::Refused || !left);
    const bool boxTold = boxes_ > wish.boxes;
    if (open && wish.state != State::Refused) {
        if (!boxIsOpen_) wish.boxes = boxes_;  // the box that stands may be the one that tells
    } else if (open) {
        const bool told = wish.control->notTaken() || boxTold;
        require(told || wish.control->standsForNoValue, "what is not taken is told", nameOf(wish));
        end(wish.record, told ? ToldNotTaken : LostKeys);
    } else if (!boxTold) {
        // Time in which the program stood still or another box stands does not count.
        wish.untold = boxIsOpen_ ? 0 : wish.untold + std::min(platform_.now() - last_, LongestCounted);
        require(wish.untold < GraceOfTeller, "what a closed page leaves behind is told", nameOf(wish));
    } else if (due) {
        wish.state = State::Suspended;
        ++counts_[ToldNotTaken];
    } else {
        end(wish.record, ToldNotTaken);
    }
}

void Ledger::afterEvent() {
    for (auto& [road, order] : orders_)
        if (!order->givenUp && !isStillOrdered(*order)) order->givenUp = platform_.now();
    for (std::size_t i = wishes_.size(); i > 0; --i) look(wishes_[i - 1]);
    last_ = platform_.now();
}

void Ledger::atRest() const {
    for (const Wish& wish : wishes_)
        require(!wish.isSetting() || wish.state == State::Suspended, "at rest every intent has ended", nameOf(wish));
}

}  // namespace kestrel::testing
