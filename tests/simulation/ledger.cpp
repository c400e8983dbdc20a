// The ledger of intents.
// See ledger.h.
#include "simulation/ledger.h"

#include <algorithm>

#include "link/fan_out.h"
#include "link/link_engine.h"
#include "pages/beverage/frm_dosi.h"
#include "pages/test/frm_in_out.h"
#include "pages/test/frm_test_cedar.h"
#include "simulation/require.h"

namespace kestrel::testing {

namespace {

using Record = Ledger::Record;

constexpr Micros Second = 1'000'000;
constexpr Micros Grace = Second / 5;       ///< for what waits for the end of an exchange
constexpr std::size_t FramesUnderWay = 8;  ///< while boards are slow to hear
constexpr Micros InOutGivesUp = 5 * Second + Grace;

Ledger* kept = nullptr;

/// The command registers, and the mailboxes before which no command may go out.
constexpr std::array<Record, Banks> Commands = {{{0, 4}, {1, 1}, {2, 284}}};
const std::set<Record> Mailboxes = {{0, 5}, {0, 6}, {0, 370}, {1, 2},   {1, 3},
                                    {1, 4}, {1, 5}, {1, 6},   {2, 285}, {2, 286}};

bool isCommand(Record record) { return std::find(Commands.begin(), Commands.end(), record) != Commands.end(); }

/// What pages write by themselves: that In/Out is open or closed, settings that their rules have them put right when
/// they are shown, and the command 0 by which Doses answers every echo of its mailbox.
bool isPagesOwn(const Page* page, Record record, std::uint32_t value) {
    static const std::map<std::string, std::set<std::pair<Record, int>>> putRight = {
        {"FrmConMac", {{{1, 1154}, 1154}}},
        {"FrmProUni", {{{1, 1299}, 1299}, {{1, 1301}, 1301}, {{1, 1394}, 1411}}},
        {"FrmPresel", {{{1, 1412}, 1415}, {{1, 1424}, 1427}}}};
    if (record == Record{0, 368} || record == Record{0, 369}) return true;
    if (!page) return false;
    if (page->name() == "FrmDosi") return record == Commands[0] && value == 0;
    const auto runs = putRight.find(page->name());
    return runs != putRight.end() && std::any_of(runs->second.begin(), runs->second.end(), [&](const auto& run) {
               return run.first <= record && record <= Record{run.first.first, run.second};
           });
}

/// Keys and switches of orders stand for no value; all others show what their board holds.
bool standsForValue(const Control& control) {
    return !dynamic_cast<const CommandButton*>(&control) && !dynamic_cast<const Label*>(&control);
}

std::uint32_t within(std::uint32_t value, int width) { return width < 4 ? value & ((1U << 8 * width) - 1) : value; }

int widthOf(Record record) { return std::min(ValueNibble(ParamTable(record.first, record.second).Command) + 1, 4); }

bool isTold(const Control& control) {
    const auto ask = [](const auto& marked) {
        if constexpr (requires { bool(marked.notTaken()); }) return bool(marked.notTaken());
        return false;
    };
    return ask(control);
}

std::string text(Record record) { return say(Place{record.first, record.second}); }

}  // namespace

Ledger::Ledger(const VirtualPlatform& platform, FaultLine& line) : platform_(platform), line_(line) { kept = this; }

Ledger::~Ledger() { kept = nullptr; }

Ledger* Ledger::present() { return kept; }

Ledger::Wish* Ledger::find(Record record) {
    const auto found = std::find_if(wishes_.begin(), wishes_.end(), [&](auto& w) { return w.record == record; });
    return found == wishes_.end() ? nullptr : &*found;
}

Ledger::Order* Ledger::order(long number) {
    const auto found = std::find_if(orders_.begin(), orders_.end(), [&](auto& o) { return o.number == number; });
    return found == orders_.end() ? nullptr : &*found;
}

bool Ledger::isOpen(const Doer& doer, long opening) const {
    const std::vector<Page*> loaded = LoadedPages();
    return std::find(loaded.begin(), loaded.end(), doer.page) != loaded.end() &&
           openings_.at(doer.page).number == opening;
}

void Ledger::end(Record record, End how) {
    ++counts[static_cast<std::size_t>(how)];
    std::erase_if(wishes_, [&](const Wish& wish) { return wish.record == record; });
}

std::string Ledger::nameOf(const Wish& wish) const {
    std::string name = say(text(wish.record), " = ", wish.value);
    if (wish.opening != 0 && isOpen(wish.doer, wish.opening)) name += " by " + wish.doer.page->name();
    return name;
}

// ---- What is wanted.

void Ledger::begins(const Doer& doer) {
    doers_.push_back(doer);
    act_.clear();
    actBegan_ = ordered_;
}

void Ledger::ends() { doers_.pop_back(); }

void Ledger::written(Record record, std::uint32_t value) {
    const Doer by = doers_.empty() ? Doer{} : doers_.back();
    if (find(record)) end(record, End::Replaced);
    Wish wish{record, value, by, 0, 0, line_.plugged(), boxes_};
    if (by.page && !isPagesOwn(by.control ? nullptr : by.page, record, value)) {
        wish.opening = openings_[by.page].number;
        if (isCommand(record) || Mailboxes.contains(record)) {
            takeForOrder(record, value, wish);
        } else {
            require(by.control, "only what somebody chose is written", by.page->name(), " ", text(record));
            const auto& told = openings_[by.page].told;
            const bool copy = !act_.empty() && told.contains(act_.back());  // a setting that the board keeps twice
            require(!standsForValue(*by.control) || copy || told.contains(record),
                    "what has not been read is not written", by.page->name(), " ", by.control->accessibleName(), " ",
                    text(record), " = ", value);
        }
    } else {
        require(isPagesOwn(by.page, record, value), "only what somebody chose is written", text(record));
    }
    act_.push_back(record);
    wishes_.push_back(wish);
}

/// A click begins an order of its page; what the page writes on hearing of an echo belongs to its newest one.
void Ledger::takeForOrder(Record record, std::uint32_t value, Wish& wish) {
    const auto bank = static_cast<std::size_t>(record.first);
    const auto sameRoad = [&](const Order& o) { return o.command == Commands[bank] && o.doer.page == wish.doer.page; };
    const auto newest = std::find_if(orders_.rbegin(), orders_.rend(), sameRoad);
    if (!wish.doer.control) {
        wish.order = newest == orders_.rend() ? -1 : newest->number;
        return;
    }
    if (newest == orders_.rend() || newest->number <= actBegan_) {
        if (newest != orders_.rend() && !newest->givenUp) newest->givenUp = platform_.now();
        orders_.push_back(
            {++ordered_, wish.doer, wish.opening, wish.machine, {}, Commands[bank], 1, platform_.now(), {}, {}});
        lied_.clear();
    }
    Order& order = newest == orders_.rend() || newest->number <= actBegan_ ? orders_.back() : *newest;
    wish.order = order.number;
    if (isCommand(record))
        order.code = value;
    else
        order.mailbox[record.second] = value;
    if (const auto* doses = dynamic_cast<const FrmDosi*>(wish.doer.page))
        order.code = order.mailbox.contains(370) ? 18 : wish.doer.control == &doses->Command4[0] ? 26 : 2;
    else if (!isCommand(record) && order.mailbox.size() > 1)
        order.code = 2;
    while (orders_.size() > 64) orders_.pop_front();
}

void Ledger::withdrawn(Record record) {
    if (find(record)) end(record, End::Dropped);
}

// ---- What goes over the line.

void Ledger::asks(Record record, const simulator::Frame& frame) {
    sending_ = sent_.end();
    if (!frame.write) return;
    std::uint32_t value = 0;
    for (std::size_t i = frame.data.size(); i > 0; --i) value = value << 8 | frame.data[i - 1];
    Wish* wish = find(record);
    require(wish && within(wish->value, frame.width) == value, "a write is what somebody wants", text(record), " = ",
            value, wish ? ", not " + nameOf(*wish) : "");
    wish->state = State::Sent;
    sent_.push_front({record, value, *wish, platform_.now()});
    sending_ = sent_.begin();
    if (sent_.size() > FramesUnderWay) sent_.pop_back();
}

/// A board has made up its mind about a frame.
void Ledger::heard(const simulator::Exchange& exchange) {
    const simulator::Frame& frame = exchange.request;
    if (frame.verdict != simulator::Frame::Verdict::Good || !frame.write) return;
    const Record record{static_cast<int>(frame.board), exchange.parameter};
    std::uint32_t value = 0;
    for (std::size_t i = frame.data.size(); i > 0; --i) value = value << 8 | frame.data[i - 1];
    require(exchange.parameter != 0, "a write goes to a place that its board has", text(record), " = ", value);
    const auto sent = std::find_if(sent_.begin(), sent_.end(),
                                   [&](const Sending& s) { return s.record == record && s.value == value; });
    require(sent != sent_.end(), "a write that is heard was sent", text(record), " = ", value);
    require(sent->wish.machine == line_.plugged(), "a write goes to the machine it was meant for", nameOf(sent->wish));
    const bool lies =
        exchange.note.find("noeffect") != std::string::npos || exchange.note.find("clamp") != std::string::npos;
    if (lies) lied_.insert(record);
    Wish* wish = find(record);
    if (wish && wish->state == State::Sent) {
        wish->lied = wish->lied || lies;
        wish->reached = wish->reached || !exchange.reply.empty() || line_.memory(record.first, record.second) == value;
    }
    if (sent->wish.order == 0) return;
    Order* const order = this->order(sent->wish.order);
    require(order, "an order was clicked", text(record), " = ", value);
    heardOfOrder(*order, *sent);
}

void Ledger::heardOfOrder(Order& order, const Sending& sent) {
    const auto& [record, value, wish, begun] = sent;
    require(!order.givenUp || begun <= *order.givenUp, "nothing of an order goes out after it was given up",
            text(record), " = ", value, ", clicked at ", order.clicked, ", given up at ", order.givenUp.value_or(0));
    if (!isCommand(record)) return;
    same("an order is the one that was clicked", value, order.code);
    for (const auto& [index, wanted] : order.mailbox) {
        const Record at{record.first, index};
        const bool right = line_.memory(at.first, at.second) == within(wanted, widthOf(at));
        require(right || lied_.contains(at) || line_.lateMayBe() || line_.spoiledMayBe(),
                "an order finds in its mailbox what was clicked", text(at), " holds ",
                line_.memory(at.first, at.second), ", not ", wanted);
        if (!right) ++counts[static_cast<std::size_t>(lied_.contains(at) ? End::BoardLied : End::FalseReply)];
    }
    require(!order.ran || *order.ran == begun, "an order runs once", text(record), " = ", value);
    order.ran = begun;
}

/// A reply was taken for this record; of a write that was moved elsewhere by a page nothing is known.
void Ledger::accepted(Record record, bool write, std::uint32_t value) {
    Wish* wish = find(record);
    if (!wish) return;
    if (write && sending_ != sent_.end() && sending_->record == record && wish->state == State::Sent) {
        require(wish->reached || line_.lateMayBe() || line_.spoiledMayBe(), "what is confirmed was heard",
                nameOf(*wish));
        end(record, !wish->reached ? End::FalseReply : wish->lied ? End::BoardLied : End::Confirmed);
    } else if (!write && wish->state == State::Lost) {
        if (within(wish->value, widthOf(record)) == value) return end(record, End::Confirmed);
        wish->state = State::Refused;
    }
}

/// The rules of the link have what the reply said written then.
void Ledger::overwrittenBySlowReply(Record record, std::uint32_t by) {
    Wish* const wish = find(record);
    if (!wish) return;
    ++counts[static_cast<std::size_t>(End::SlowReply)];
    wish->value = by;
    wish->opening = 0;
}

/// The line led nowhere, or may lead to another machine now.
void Ledger::interrupted() {
    for (Order& order : orders_)
        if (!order.givenUp) order.givenUp = platform_.now();
}

void Ledger::answered(const Message& message, Message::Answer answer) {
    ++boxes_;
    saidNo_ = message.buttons == Message::Buttons::YesNo && answer == Message::Answer::No;
}

// ---- What becomes of it.

/// Whether its page still stands behind the order.
bool Ledger::ordersPage(const Order& order) const {
    if (!isOpen(order.doer, order.opening)) return false;
    if (const auto* doses = dynamic_cast<const FrmDosi*>(order.doer.page)) return doses->TestLamp.Active;
    if (const auto* model = dynamic_cast<const FrmTestCedar*>(order.doer.page))
        return order.mailbox.empty() || model->Label2[1].Caption.get() != "_ _";
    const bool outputs = order.doer.page->name() == "FrmInOut" && order.code == 2;
    return !outputs || platform_.now() < order.clicked + InOutGivesUp;
}

void Ledger::look(Wish& wish) {
    const auto [bank, index] = wish.record;
    const bool due = (ParamFlags(bank, index) & flag::WriteDue) != 0;
    const auto held = static_cast<std::uint32_t>(ValueOf(ParamTable(bank, index).Value.data(), WrittenBytes - 1));
    if (wish.state == State::Sent && Link().LinkIdle) wish.state = State::Lost;
    const bool lostAtThePort = wish.state == State::Due && !due && (ParamFlags(bank, index) & flag::Pending);
    if (lostAtThePort && held == wish.value) wish.state = State::Lost;
    require(wish.state != State::Due || (due && held == wish.value), "nothing that is wanted vanishes", nameOf(wish),
            due ? "" : ", not due", ", mirror ", held);
    if (!wish.isSetting() || wish.state == State::Suspended) return;
    const bool open = isOpen(wish.doer, wish.opening);
    if (open && wish.state != State::Refused) {
        wish.boxes = boxes_;
    } else if (open) {
        require(isTold(*wish.doer.control) || boxes_ > wish.boxes, "what is not taken is told", nameOf(wish));
        end(wish.record, End::Told);
    } else if (boxes_ > wish.boxes) {
        if (!due) return end(wish.record, End::Told);
        wish.state = State::Suspended;
        ++counts[static_cast<std::size_t>(End::Told)];
    } else {
        if (!wish.gone) wish.gone = platform_.now();
        require(platform_.now() < *wish.gone + Grace, "what a closed page leaves behind is told", nameOf(wish));
    }
}

void Ledger::afterEvent() {
    for (Order& order : orders_)
        if (!order.givenUp && !ordersPage(order)) order.givenUp = platform_.now();
    for (std::size_t i = wishes_.size(); i > 0; --i) {
        Wish& wish = wishes_[i - 1];
        if (saidNo_ && wish.state == State::Due &&
            !(ParamFlags(wish.record.first, wish.record.second) & flag::WriteDue))
            end(wish.record, End::Dropped);
        else
            look(wish);
    }
}

void Ledger::atRest() const {
    for (const Wish& wish : wishes_)
        require(!wish.isSetting() || wish.state == State::Suspended, "at rest every intent has ended", nameOf(wish));
}

}  // namespace kestrel::testing
