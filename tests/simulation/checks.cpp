// What must hold after every event of a simulated run.
// See checks.h.
#include "simulation/checks.h"

#include <algorithm>

#include "link/fan_out.h"
#include "link/link_engine.h"
#include "link/param_table.h"
#include "simulation/say.h"

namespace kestrel::testing {

namespace {

Checks* listening = nullptr;

constexpr Micros Tick = 40'000;
constexpr int SendsAllowed = 5;
constexpr int TimersOfProgram = 8;
constexpr std::size_t InputLimit = 1024;
constexpr std::uint8_t FirstWithData = 127;

/// The pages whose rules have them write a record when they are told of it.
bool correctsItself(const Page& page) { return page.name() == "FrmConMac" || page.name() == "FrmProUni"; }

}  // namespace

void failCheck(const std::string& check, const std::string& detail) { throw CheckFailed{check, detail}; }

void Counts::add(const Counts& other) {
    for (auto field :
         {&Counts::events, &Counts::frames, &Counts::accepted, &Counts::timeouts, &Counts::repeats, &Counts::boxes,
          &Counts::acts, &Counts::overwrittenEdits, &Counts::movedBanks, &Counts::leftFrames, &Counts::lateReplies,
          &Counts::blindReplies, &Counts::orphanWrites, &Counts::pagesCompared, &Counts::pagesExcused})
        this->*field += other.*field;
}

Checks::Checks(VirtualPlatform& platform, FaultLine& line) : platform_(platform), line_(line) {
    listening = this;
    for (auto& bank : watchers_) bank.assign(ParamRecords, 0);
    for (auto& bank : flags_) bank.assign(ParamRecords, 0);
}

Checks::~Checks() { listening = nullptr; }

Checks* Checks::present() { return listening; }

void Checks::trace(std::uint64_t value) { traceHash = (traceHash ^ value) * 1099511628211ULL; }

// ---- Events.

void Checks::beginLinkEvent() {
    linkEvent_ = true;
    bankBefore_ = CurrentBank;
    indexBefore_ = Link().ScanIndex;
    model_.setCurrentBank(CurrentBank);
    const bool opens = role_ == Role::Reply || role_ == Role::Reopen || !Link().Comm1->PortOpen();
    model_.setPortThere(line_.present() && !(opens && platform_.openFailures.contains(Link().ComPort)));
    model_.setLinkSetup(Link().LinkSetup);
}

void Checks::beforeTimer(Role role) {
    role_ = role;
    if (role == Role::Other || !following_) return;
    beginLinkEvent();
    const Micros now = platform_.now();
    const auto due = model_.due(static_cast<Clock>(role));
    if (!due || *due > now || (*due<now&& * due> blockedUntil_))
        failCheck("a timer runs out when it is due",
                  say("timer ", static_cast<int>(role), " at ", now, " due ", due.value_or(-1)));
    if (role == Role::Tick) {
        require(now - lastTick_ >= Tick, "ticks are 40 ms apart");
        lastTick_ = now;
        model_.tick(now);
    } else if (role == Role::Reply) {
        ++counts.timeouts;
        sends_ = 0;
        model_.replyTimeout(now);
    } else if (role == Role::SendLamp) {
        model_.sendLampTimeout(now);
    } else if (role == Role::ReceiveLamp) {
        model_.receiveLampTimeout(now);
    } else {
        model_.reopenTimeout(now);
    }
}

void Checks::beforeArrival(const Bytes& bytes) {
    role_ = Role::Other;
    if (!following_) return;
    beginLinkEvent();
    model_.arrived(platform_.now(), bytes.data(), bytes.size());
}

void Checks::beforeLoss() {
    role_ = Role::Other;
    if (!following_) return;
    beginLinkEvent();
    model_.portLost();
}

void Checks::beforeQuestion() {
    if (!following_) opened_ = platform_.opened;
    following_ = true;
    beginLinkEvent();
    sends_ = 0;
    const Request& request = Link().RequestBytes;
    model_.askIdentity(platform_.now(), {request.Addr2, request.Addr1, request.Command, 0, request.Addr0, {}});
}

void Checks::sending(const Bytes& frame) {
    if (!following_ || searching_) return;
    checkForm(frame);
    ++counts.frames;
    if (role_ == Role::Tick) checkOrigin(frame);
    if (++sends_ > 1) ++counts.repeats;
    require(sends_ <= SendsAllowed, "at most five sends of a frame");
    sentBank_ = CurrentBank;
    left_ = false;
    auto& sent = sent_.emplace_back();
    sent.when = platform_.now();
    sent.count = std::min(frame.size(), sent.bytes.size());
    std::copy_n(frame.begin(), sent.count, sent.bytes.begin());
}

// ---- What pages do.

void Checks::watched(int index) {
    model_.setCurrentBank(CurrentBank);
    model_.watch(index);
    auto& count = watchers_[static_cast<std::size_t>(CurrentBank)][static_cast<std::size_t>(index)];
    if (BoardPresent(CurrentBank)) ++count;
    require(ParamTable(CurrentBank, index).Watchers == count, "watch counts equal the subscriptions");
}

void Checks::released(int index) {
    model_.setCurrentBank(CurrentBank);
    model_.release(index);
    auto& count = watchers_[static_cast<std::size_t>(CurrentBank)][static_cast<std::size_t>(index)];
    if (BoardPresent(CurrentBank) && count > 0) --count;
    require(ParamTable(CurrentBank, index).Watchers == count, "watch counts equal the subscriptions");
    const std::uint8_t flags = ParamFlags(CurrentBank, index);
    if ((flags & flag::WriteDue) && !(flags & flag::Pending) && count == 0) ++counts.orphanWrites;
}

void Checks::written(int index, std::uint32_t value) {
    model_.setCurrentBank(CurrentBank);
    model_.write(index, value);
    if (telling_ && told_.back().index == index && !correctsItself(*told_.back().page))
        failCheck("showing a value writes nothing back", told_.back().page->name() + " " + place(CurrentBank, index));
}

void Checks::telling(const Page& page, int index, ParamValue value) {
    told_.push_back({&page, index, value});
    telling_ = true;
}

void Checks::told() {
    telling_ = false;
    bankLeft_ = CurrentBank;
}

// ---- The hard rules.

void Checks::checkForm(const Bytes& frame) const {
    const bool routed = CurrentBank != 0;
    const std::size_t header = routed ? 6 : 4;
    require(frame.size() > header, "a frame has its form");
    const std::uint8_t command = frame[routed ? 4 : 0];
    const bool data = command >= FirstWithData;
    const std::size_t width = static_cast<std::size_t>(command & 15) + 1;
    require(frame.size() == header + 1 + (data ? width : 0), "a frame has its form");
    unsigned sum = 0;
    for (std::size_t i = 0; i + 1 < frame.size(); ++i) sum += frame[i];
    require(frame.back() == sum % 256, "a frame has its sum");
    if (!routed) return;
    require(frame[0] == (data ? 241 + width : 241), "a routed frame begins as its kind does");
    require(frame[5] == (CurrentBank == 1 ? 0x49 : 0x56), "a routed frame names its board");
}

void Checks::checkOrigin(const Bytes& frame) {
    sends_ = 0;
    origin_ = {CurrentBank, Link().ScanIndex};
    const auto [bank, index] = origin_;
    // Where a page moved the cursor, the scan may stand beyond the end of the bank, and looks there first.
    if (index == indexBefore_ && index >= RecordCount(bank)) return;
    if (index == 0 || index >= RecordCount(bank))
        failCheck("the first and the last record never go out", say(place(bank, index), " of ", RecordCount(bank)));
    const std::uint8_t before = flags_[static_cast<std::size_t>(bank)][static_cast<std::size_t>(index)];
    require((before & flag::Pending) && (before & flag::Watched), "a frame has a record that is wanted");
    const std::uint8_t command = frame[bank == 0 ? 0 : 4];
    require((command >= 128) == ((before & flag::WriteDue) != 0), "a record that is due is written, others are read");
    if (command < FirstWithData) return;
    const auto& value = ParamTable(bank, index).Value;
    const std::size_t width = static_cast<std::size_t>(command & 15) + 1;
    require(std::equal(value.begin(), value.begin() + static_cast<std::ptrdiff_t>(width),
                       frame.end() - 1 - static_cast<std::ptrdiff_t>(width)),
            "what is written stood in the mirror");
}

void Checks::checkExchange() const {
    const LinkState& link = Link();
    if (loaded_ || !link.LinkIdle)
        require(link.LinkIdle != link.Timer2.Enabled, "an exchange is open while its time runs");
    require(link.Comm1->InBufferCount() <= static_cast<int>(InputLimit), "what stands unread is bounded");
    if (role_ == Role::Reply && linkEvent_)
        require(link.Comm1->InBufferCount() == 0, "nothing stands unread after a time-out");
    const int ofPages = platform_.timersRunning() - TimersOfProgram;
    require(ofPages <= 0 || ofPages <= 4 * static_cast<int>(LoadedPages().size()), "timers are bounded");
}

void Checks::checkClocks() const {
    const LinkState& link = Link();
    const Timer* const timers[] = {&link.Timer1, &link.Timer2, &link.Timer3, &link.Timer4, &link.ReopenTimer};
    for (int i = 0; i < 5; ++i) {
        const auto due = model_.due(static_cast<Clock>(i));
        if (due.has_value() != timers[i]->Enabled || (due && *due<last_&& * due> blockedUntil_))
            failCheck("timers run as they should", say("timer ", i, " due ", due.value_or(-1), " now ", last_));
    }
}

void Checks::checkTold() {
    const auto& expected = model_.outputs().told;
    if (expected.empty()) return require(told_.empty(), "only an accepted reply is told");
    const std::vector<Page*> loaded = LoadedPages();
    require(expected.size() == 1, "one notification a reply");
    require(told_.size() >= loaded.size() || told_.empty() == loaded.empty(), "every loaded page is told");
    for (const Told& told : told_)
        if (told.index != expected[0].index || told.value != expected[0].value)
            failCheck("pages are told what came", say("record ", told.index, " value ", told.value, " not ",
                                                      expected[0].index, " value ", expected[0].value));
    for (std::size_t i = 0; i < std::min(told_.size(), loaded.size()); ++i)
        require(told_.size() != loaded.size() || told_[i].page == loaded[i], "pages are told in their order");
    ++counts.accepted;
    explain(expected[0]);
}

/// A value that the board did not say in answer to this very request must have a cause.
void Checks::explain(const ReferenceModel::Told& told) {
    const auto& said = line_.said();
    const std::uint8_t before = flags_[static_cast<std::size_t>(told.bank)][static_cast<std::size_t>(told.index)];
    const bool writing = (Link().RequestBytes.Command & 128) != 0;
    if (!writing && (before & flag::WriteDue)) ++counts.overwrittenEdits;
    const bool moved = sentBank_ != told.bank || origin_ != std::pair{told.bank, told.index};
    const bool said_so = said.frame == line_.framesSent() && said.bank == told.bank && said.write == writing &&
                         said.address == addressOf(told.bank, told.index) &&
                         static_cast<ParamValue>(said.value) == told.value;
    misfiled_.erase({told.bank, told.index});
    if (!moved && said_so) return;
    misfiled_.insert({told.bank, told.index});
    if (moved)
        ++counts.movedBanks;
    else if (line_.lateMayBe())
        ++counts.lateReplies;
    else if (line_.spoiledMayBe())
        ++counts.blindReplies;
    else
        failCheck("a wrong value has a cause",
                  say(place(told.bank, told.index), " value ", told.value, ", the board said ", place(said.bank, 0),
                      " address ", said.address, " value ", said.value, " to frame ", said.frame, " of ",
                      line_.framesSent()));
}

bool Checks::repeatsAStrayFrame() const {
    constexpr unsigned UntilAnswered = 2;
    const LinkState& link = Link();
    return !link.LinkIdle && origin_ != std::pair{CurrentBank, link.ScanIndex} &&
           (ParamTable(CurrentBank, link.ScanIndex).Period & UntilAnswered) != 0;
}

void Checks::afterEvent() {
    const Micros now = platform_.now();
    require(now >= last_, "time never goes back");
    last_ = now;
    ++counts.events;
    for (; filesWritten_ < platform_.written.size(); ++filesWritten_)
        require(platform_.written[filesWritten_].ends_with("/kestrel.ini"), "no file but the configuration is written");
    if (!following_) return;
    if (linkEvent_) {
        if (!told_.empty()) model_.setCurrentBank(bankLeft_);
        model_.pagesTold();
    } else {
        model_.setCurrentBank(CurrentBank);
    }
    if (!Link().LinkIdle && !left_ && CurrentBank != sentBank_) {
        left_ = true;
        ++counts.leftFrames;
    }
    checkExchange();
    checkTold();
    compareFrames();
    compareState();
    checkClocks();
    if (loaded_) {
        compareFlags();
        for (const auto& place : model_.outputs().touched) compareRecord(place.bank, place.index);
    }
    trace(static_cast<std::uint64_t>(now));
    trace(static_cast<std::uint64_t>(Link().ScanIndex));
    trace(static_cast<std::uint64_t>(CurrentBank));
    for (const Told& told : told_) trace(static_cast<std::uint64_t>(told.value));
    opened_ = platform_.opened;
    model_.clearOutputs();
    sent_.clear();
    told_.clear();
    linkEvent_ = false;
    role_ = Role::Other;
}

}  // namespace kestrel::testing
