// What must hold after every event of a simulated run.
#include "simulation/checks.h"

#include "link/link_engine.h"
#include "link/loaded_pages.h"
#include "link/recheck.h"
#include "platform/outside.h"
#include "simulator/receiver.h"

namespace kestrel::testing {

namespace {

constexpr int SendsAllowed = 5;
constexpr int TimersOfProgram = 16;
constexpr int TimersOfPage = 4;
constexpr int InputLimit = 1024;
constexpr int WriteBit = 128;
/// What a user or a page does waits so long for the end of an exchange.
constexpr Micros WholeExchange = 150'000;

/// A frame as a board hears it.
simulator::Frame heard(const Bytes& frame) {
    simulator::Receiver board;
    std::optional<simulator::Frame> whole;
    for (std::size_t i = 0; i < frame.size(); ++i) {
        whole = board.take(simulator::resyncSilence, frame[i]);
        require(whole.has_value() == (i + 1 == frame.size()), "a frame has its form");
    }
    require(whole->verdict == simulator::Frame::Verdict::Good, "a frame has its form, its sum and a known board");
    return *whole;
}

}  // namespace

std::array<const Timer*, reference::Model::ClockCount> linkTimers() {
    const LinkState& link = Link();
    return {&link.Timer1, &link.Timer2, &link.Timer3, &link.Timer4, &link.ReopenTimer};
}

Checks::Checks(VirtualPlatform& platform, FaultLine& line)
    : ledger(platform, line, counts), platform_(platform), line_(line) {
    SetObserver(this);
}

Checks::~Checks() { SetObserver(nullptr); }

void Checks::trace(std::int64_t value) {
    traceHash = (traceHash ^ static_cast<std::uint64_t>(value)) * 1099511628211ULL;
}

// ---- Events.

/// False where the model does not follow yet.
bool Checks::beginLinkEvent() {
    if (!following_) return false;
    linkEvent_ = true;
    indexBefore_ = Link().ScanIndex;
    model_.currentBank = CurrentBank;
    const bool opens = clock_ == Clock::Reply || clock_ == Clock::Reopen || !Link().Comm1->PortOpen();
    model_.portThere = line_.present() && !(opens && platform_.openFailures.contains(Link().ComPort));
    model_.setup = !loaded_;
    model_.holding = WritesAreHeld() && model_.recheck.phase != reference::Recheck::Reading;
    model_.actsWait = AnyActWaits();
    return true;
}

void Checks::beforeTimer(Clock clock) {
    clock_ = clock;
    if (clock == Clock::ClockCount || !beginLinkEvent()) return;
    const Micros now = platform_.now();
    const Micros due = model_.due[clock].value_or(-1);
    require(due >= 0 && due <= now && (due == now || due <= blockedUntil_), "a timer runs out when it is due", "timer ",
            clock, " at ", now, " due ", due);
    if (clock == Clock::Reply) ++counts[TimeOuts];
    if (clock == Clock::Reply || (clock == Clock::Tick && Link().LinkIdle)) sends_ = 0;
    model_.runOut(clock, now);
}

void Checks::beforeArrival(const Bytes& bytes) {
    if (beginLinkEvent()) model_.arrived(platform_.now(), bytes.data(), bytes.size());
}

void Checks::beforeLoss() {
    if (beginLinkEvent()) model_.portLost();
}

void Checks::askingIdentity() {
    sends_ = 0;
    if (clock_ == Clock::Tick) return;  // after an interruption the model asks by itself
    if (!following_) opened_ = platform_.opened;
    if (!following_) loadIdentities();
    following_ = true;
    beginLinkEvent();
    model_.askIdentity(platform_.now(), questionAsked());
}

void Checks::exchangeGivenUp() {
    if (following_) model_.closeExchange();
}

void Checks::sending(const Bytes& frame) {
    if (!following_ || searching_) return;
    const simulator::Frame asBoardsHearIt = heard(frame);
    same("a frame goes to the board of its bank", static_cast<int>(asBoardsHearIt.board), CurrentBank);
    ++counts[Frames];
    const bool isRecord = clock_ == Clock::Tick && model_.recheck.phase != reference::Recheck::Asking;
    if (isRecord) checkOrigin(asBoardsHearIt);
    require(BoardPresent(CurrentBank) || Link().LinkSetup, "no frame goes to a board that is not there",
            Place{CurrentBank, Link().ScanIndex});
    if (isRecord) ledger.asks(origin_, asBoardsHearIt);
    if (++sends_ > 1) ++counts[Repeats];
    require(sends_ <= SendsAllowed, "at most five sends of a frame");
    sentBank_ = CurrentBank;
    left_ = false;
    auto& sent = sent_.emplace_back();
    sent.when = platform_.now();
    sent.count = std::min(frame.size(), sent.bytes.size());
    std::copy_n(frame.begin(), sent.count, sent.bytes.begin());
}

bool Checks::isShort() const { return platform_.now() - begun_ < WholeExchange; }

// ---- What pages do.

void Checks::recordWatched(int index) {
    model_.currentBank = CurrentBank;
    model_.watch(index);
    compareRecord(CurrentBank, index);
}

void Checks::recordReleased(int index) {
    model_.currentBank = CurrentBank;
    model_.release(index);
    compareRecord(CurrentBank, index);
    const std::uint8_t flags = ParamFlags(CurrentBank, index);
    if ((flags & flag::WriteDue) && !(flags & flag::Pending)) ++counts[OrphanWrites];
}

void Checks::recordWritten(int index, std::uint32_t value) {
    const int bank = std::exchange(model_.currentBank, CurrentBank);
    model_.write(index, value);
    if (clock_ == Clock::Tick) model_.currentBank = bank;  // what was held is given back before the scan
    ledger.written({CurrentBank, index}, value);
}

void Checks::withdrawingRecord(int index) {
    model_.withdraw(CurrentBank, index);
    ledger.withdrawn({CurrentBank, index});
}

void Checks::storedOverAnEdit(int bank, int index, ParamValue value) {
    if (!(ParamFlags(bank, index) & flag::WriteDue)) return;
    ++counts[OverwrittenEdits];
    require(!isShort(), "an exchange of 150 ms overwrites no edit", Place{bank, index});
    ledger.overwrittenBySlowReply({bank, index}, static_cast<std::uint32_t>(value));
}

void Checks::tellingPage(const Page& page, int index, ParamValue value) {
    if (told_.empty()) storedOverAnEdit(CurrentBank, index, value);
    ledger.telling(page, {CurrentBank, index});
    told_.push_back({&page, index, value});
}

void Checks::pageTold(const Page& /*page*/) {
    ledger.told();
    bankLeft_ = CurrentBank;
}

// ---- The hard rules.

void Checks::checkOrigin(const simulator::Frame& frame) {
    origin_ = {CurrentBank, Link().ScanIndex};
    const auto [bank, index] = origin_;
    // Where a page moved the cursor, the scan may stand beyond the end of the bank, and looks there first.
    if (index == indexBefore_ && index >= RecordCount(bank)) return;
    require(index > 0 && index < RecordCount(bank), "the first and the last record never go out", index);
    const std::uint8_t flags = ParamFlags(bank, index);
    require((flags & flag::Pending) && (flags & flag::Watched), "a frame has a record that is wanted");
    same("a frame has the address of its record", frame.address, addressOf(bank, index));
    require(std::equal(frame.data.begin(), frame.data.end(), ParamTable(bank, index).Value.begin()),
            "what is written stood in the mirror");
}

void Checks::checkExchange() const {
    const LinkState& link = Link();
    if (loaded_ || !link.LinkIdle)
        require(link.LinkIdle != link.Timer2.Enabled, "an exchange is open while its time runs");
    require(link.Comm1->InBufferCount() <= InputLimit, "what stands unread is bounded");
    const int ofPages = platform_.timersRunning() - TimersOfProgram;
    require(ofPages <= 0 || ofPages <= TimersOfPage * static_cast<int>(LoadedPages().size()), "timers are bounded");
}

void Checks::checkClocks() const {
    const auto timers = linkTimers();
    for (std::size_t i = 0; i < timers.size(); ++i) {
        const auto due = model_.due[i];
        const bool overdue = due && (*due < last_) && (*due > blockedUntil_);
        require(due.has_value() == timers[i]->Enabled && !overdue, "timers run as they should", "timer ", i, " due ",
                due.value_or(-1), " now ", last_);
    }
}

void Checks::checkTold() {
    const auto& expected = model_.outputs.told;
    if (!expected) return require(told_.empty(), "only an accepted reply is told");
    const std::vector<Page*> loaded = LoadedPages();
    if (loaded.empty()) storedOverAnEdit(expected->bank, expected->index, model_.outputs.toldValue);
    require(told_.size() >= loaded.size() || told_.empty() == loaded.empty(), "every loaded page is told");
    for (std::size_t i = 0; i < told_.size(); ++i) {
        same("pages are told of the record that came", told_[i].index, expected->index);
        same("pages are told what came", told_[i].value, model_.outputs.toldValue);
        require(told_.size() != loaded.size() || told_[i].page == loaded[i], "pages are told in their order");
    }
    ++counts[Accepted];
    ledger.accepted({expected->bank, expected->index}, (Link().RequestBytes.Command & WriteBit) != 0,
                    static_cast<std::uint32_t>(model_.outputs.toldValue));
    explain(expected->bank, expected->index, model_.outputs.toldValue);
}

/// A value that the board did not say in answer to this very request must have a cause.
void Checks::explain(int bank, int index, ParamValue value) {
    const auto& said = line_.said();
    const bool writing = (Link().RequestBytes.Command & WriteBit) != 0;
    const bool moved = sentBank_ != bank || origin_ != std::pair{bank, index};
    const bool right = said.frame == line_.framesSent() && said.bank == bank && said.write == writing &&
                       said.address == addressOf(bank, index) && static_cast<ParamValue>(said.value) == value;
    if (!moved && right) {
        misfiled_.erase({bank, index});
        return;
    }
    misfiled_.insert({bank, index});
    require(moved || line_.lateMayBe() || line_.spoiledMayBe(), "a wrong value has a cause", Place{bank, index},
            " value ", value, ", the board said ", Place{said.bank, 0}, " address ", said.address, " value ",
            said.value, " to frame ", said.frame, " of ", line_.framesSent());
    ++counts[moved ? MovedBanks : line_.lateMayBe() ? LateReplies : BlindReplies];
}

void Checks::afterEvent() {
    const Micros now = platform_.now();
    require(now >= last_, "time never goes back");
    last_ = now;
    ++counts[Events];
    for (; filesWritten_ < platform_.written.size(); ++filesWritten_)
        require(platform_.written[filesWritten_].ends_with("/kestrel.ini"), "no file but the configuration is written");
    if (!following_) return;
    model_.currentBank = linkEvent_ ? (told_.empty() ? model_.currentBank : bankLeft_) : CurrentBank;
    if (linkEvent_) model_.pagesTold();
    model_.holding = WritesAreHeld() && model_.recheck.phase != reference::Recheck::Reading;
    if (clock_ == Clock::Tick) model_.endTick(now);
    if (std::exchange(wasIdle_, Link().LinkIdle) && !wasIdle_) {  // an exchange has been opened, its frame sent or lost
        begun_ = now;
        sentBank_ = CurrentBank;
    }
    if (!Link().LinkIdle && !left_ && CurrentBank != sentBank_) {
        left_ = true;
        require(!isShort(), "no page moves the bank in an exchange of 150 ms", "from ", sentBank_, " to ", CurrentBank);
        ++counts[LeftFrames];
    }
    checkExchange();
    checkTold();
    for (; interruptions_ < model_.recheck.interruptions; ++interruptions_) ledger.interrupted();
    ledger.afterEvent();
    compareFrames();
    compareState();
    checkClocks();
    if (loaded_) {
        compareFlags();
        for (const auto& [bank, index] : model_.outputs.touched) compareRecord(bank, index);
    }
    for (const std::int64_t value : {now, std::int64_t{Link().ScanIndex}, std::int64_t{CurrentBank}}) trace(value);
    for (const Told& told : told_) trace(told.value);
    opened_ = platform_.opened;
    model_.outputs.clear();
    sent_.clear();
    told_.clear();
    linkEvent_ = false;
    clock_ = Clock::ClockCount;
}

}  // namespace kestrel::testing
