// After an interruption of the line the boards are asked who they are before anything else.
#include "link/recheck.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "link/attendant.h"
#include "link/changes.h"
#include "link/index_files.h"
#include "link/link_engine.h"
#include "link/loaded_pages.h"
#include "link/param_table.h"
#include "link/silence.h"
#include "platform/module_state.h"
#include "platform/outside.h"
#include "platform/platform.h"

namespace kestrel {

namespace {

constexpr int SilencesAllowed = 10;  ///< of a slave board, in a row; answers get lost on a bad line
constexpr int ReadingsAllowed = 3;   ///< of the same identity that differs, in a row; noise makes others
constexpr int AskUserMs = 100;

/// The last is the master's alone.
constexpr std::array<int, 7> Questions = {ident::Probe,   ident::Release,  ident::Software, ident::Kind,
                                          ident::TypeLow, ident::TypeHigh, ident::Revision};

enum class Phase {
    Open,     ///< the line is the pages'
    Asking,   ///< who is there
    Reading,  ///< what is watched, with all writes held
    Holding,  ///< until the user has said what becomes of them
    Closed    ///< other boards are there
};

struct HeldWrite {
    int bank;
    int index;
    std::uint32_t value;
};

void askUser_Timer();

}  // namespace

struct RecheckState {
    RecheckState() { askUser.OnTimer(askUser_Timer); }

    std::array<BoardIdentity, Banks> known{};
    Phase phase = Phase::Open;

    int bank = 0;              ///< that is being asked
    std::size_t question = 0;  ///< of Questions
    bool answerIsOut = false;  ///< a question was sent and its answer not looked at
    int silences = 0;          ///< to the present question
    int differentReadings = 0;
    std::array<int, Questions.size()> answers{};
    std::array<int, Questions.size()> differed{};  ///< the answers that differed last

    std::set<std::pair<int, int>> unread;  ///< records that have not been read again
    std::vector<HeldWrite> held;
    Timer askUser{AskUserMs, Timer::OfTheLink};  ///< as an event of its own: a box must not hold up the tick
};
template class Module<RecheckState>;

namespace {

RecheckState& state() { return stateOf<RecheckState>(); }

template <class Visit>
void eachRecord(Visit&& visit) {
    for (int bank = 0; bank < Banks; ++bank)
        for (int index = 1; BoardPresent(bank) && index < RecordCount(bank); ++index) visit(bank, index);
}

void askUserSoon() { state().askUser.Enabled = true; }

std::size_t questionsOf(int bank) { return Questions.size() - (bank == 0 ? 0 : 1); }

void beginAsking() {
    RecheckState& here = state();
    here.phase = Phase::Asking;
    here.bank = 0;
    here.question = 0;
    here.silences = 0;
    here.answerIsOut = false;
    Link().LinkSetup = true;
}

void endAsking(Phase next) {
    state().phase = next;
    Link().LinkSetup = false;
    Link().ScanIndex = 0;
    CurrentBank = 0;
}

/// What pages wrote by themselves was for the machine that was there.
void dropOtherWrites() {
    const int bankBefore = CurrentBank;
    eachRecord([](int bank, int index) {
        if (!(ParamFlags(bank, index) & flag::WriteDue) || IsChange(bank, index)) return;
        CurrentBank = bank;
        ParamWithdraw(index);
    });
    CurrentBank = bankBefore;
}

void giveUpOrders() {
    dropOtherWrites();
    for (Page* page : LoadedPages()) page->LineInterrupted();
}

/// Everything that is watched is wanted once more, and what is due to be written waits; but for orders, which were
/// given to a line that was away.
void beginReading() {
    RecheckState& here = state();
    endAsking(Phase::Reading);
    giveUpOrders();
    for (Page* page : LoadedPages()) page->LineResumed();
    here.unread.clear();
    eachRecord([&](int bank, int index) {
        if (ParamTable(bank, index).Watchers > 0) {
            here.unread.emplace(bank, index);
            ParamFlags(bank, index) |= flag::Pending | flag::Watched;
        }
    });
}

void refuse() {
    endAsking(Phase::Closed);
    askUserSoon();
}

/// One reading may be noise: what differs counts when it does so again and again.
void identityDiffers() {
    RecheckState& here = state();
    const bool again = std::exchange(here.differed, here.answers) == here.answers;
    here.differentReadings = again ? here.differentReadings + 1 : 1;
    if (here.differentReadings >= ReadingsAllowed) return refuse();
    beginAsking();
}

void bankIsAnswered() {
    RecheckState& here = state();
    here.answers.front() = 0;  // the probe tells nothing but that a board answers
    const auto& [probe, release, software, kind, typeLow, typeHigh, revision] = here.answers;
    const BoardIdentity identity{release, software, kind, typeLow + 256 * typeHigh};
    const bool sameRevision = here.bank != 0 || revision == BoardRevision();
    if (identity != here.known[static_cast<std::size_t>(here.bank)] || !sameRevision) return identityDiffers();
    here.question = 0;
    do ++here.bank;
    while (here.bank < Banks && !BoardPresent(here.bank));
    if (here.bank == Banks) beginReading();
}

void takeAnswer() {
    RecheckState& here = state();
    here.answerIsOut = false;
    if (Link().ReplyData.empty()) {
        if (here.bank != 0 && ++here.silences >= SilencesAllowed) refuse();
        return;
    }
    here.silences = 0;
    here.answers[here.question] = Link().ReplyData.front();
    if (++here.question == questionsOf(here.bank)) bankIsAnswered();
}

void askNext() {
    RecheckState& here = state();
    CurrentBank = here.bank;
    Link().ScanIndex = 0;
    here.answerIsOut = true;
    SendIdentityQuestion(IdentTable(here.bank, Questions[here.question]));
}

/// Suspended changes of pages that are gone too.
void holdDueChanges() {
    eachRecord([](int bank, int index) {
        if ((ParamFlags(bank, index) & flag::WriteDue) && IsChange(bank, index)) HoldWrite(bank, index);
    });
}

std::vector<PageChanges> heldByPage() {
    std::vector<PageChanges> pages;
    std::set<std::pair<const Control*, std::uint32_t>> counted;  // a value and its copy are one change
    for (const HeldWrite& each : state().held)
        for (const Change& change : Changes()) {
            if (change.bank != each.bank || change.index != each.index) continue;
            if (change.control && !counted.emplace(change.control, change.value).second) continue;
            const std::string page = change.page ? change.page->Caption.get() : change.pageCaption;
            const auto found =
                std::find_if(pages.begin(), pages.end(), [&](const PageChanges& known) { return known.page == page; });
            if (found == pages.end())
                pages.push_back({page, 1});
            else
                ++found->count;
        }
    return pages;
}

void releaseWrites(bool send) {
    const std::vector<HeldWrite> held = std::exchange(state().held, {});
    state().phase = Phase::Open;
    const int bank = CurrentBank;
    for (const HeldWrite& each : held) {
        if (!send) {
            ForgetChange(each.bank, each.index);
            continue;
        }
        CurrentBank = each.bank;
        ParamWrite(each.index, each.value);
    }
    CurrentBank = bank;
}

void readingEnds() {
    holdDueChanges();
    state().phase = state().held.empty() ? Phase::Open : Phase::Holding;
    if (!state().held.empty()) askUserSoon();
}

void askUser_Timer() {
    RecheckState& here = state();
    if (MessageIsOpen()) return;  // after the box that stands
    here.askUser.Enabled = false;
    if (here.phase == Phase::Closed) {
        if (Attendant().wantsToStartAnew() && here.phase == Phase::Closed) Attendant().startAnew();
    } else if (here.phase == Phase::Holding) {
        const bool send = Attendant().wantsHeldSent(heldByPage());
        // Another interruption while the box stood has it asked again.
        if (here.phase == Phase::Holding) releaseWrites(send);
    }
}

}  // namespace

void RememberIdentity(int bank, const BoardIdentity& identity) {
    state().known.at(static_cast<std::size_t>(bank)) = identity;
}

void InterruptLine() {
    const bool isNews = state().phase != Phase::Asking;
    state().differentReadings = 0;
    beginAsking();
    if (isNews) giveUpOrders();
    NoteInterruption();
}

const BoardIdentity& KnownIdentity(int bank) { return state().known.at(static_cast<std::size_t>(bank)); }

bool IsOtherMachine() { return state().phase == Phase::Closed; }

bool LineIsClosed() { return state().phase == Phase::Asking || state().phase == Phase::Closed; }

void RecheckTick() {
    RecheckState& here = state();
    if (here.phase == Phase::Asking && here.answerIsOut) takeAnswer();
    if (here.phase == Phase::Asking) askNext();
    if (here.phase != Phase::Reading) return;
    // A page that was closed meanwhile wants nothing any more.
    std::erase_if(here.unread, [](const auto& each) { return ParamTable(each.first, each.second).Watchers == 0; });
    if (here.unread.empty()) readingEnds();
}

bool IsReadingAgain() { return state().phase == Phase::Reading; }

bool WritesAreHeld() { return state().phase == Phase::Reading || state().phase == Phase::Holding; }

bool IsHeld(int bank, int index) {
    const auto& held = state().held;
    return std::any_of(held.begin(), held.end(),
                       [=](const HeldWrite& each) { return each.bank == bank && each.index == index; });
}

void HoldWrite(int bank, int index) {
    std::uint8_t& flags = ParamFlags(bank, index);
    flags = static_cast<std::uint8_t>(flags & ~flag::WriteDue);
    const ParamRecord& record = ParamTable(bank, index);
    std::uint32_t value = 0;
    for (std::size_t i = WrittenBytes; i-- > 0;) value = value * 256 + record.Value[i];
    DropHeldWrite(bank, index);
    state().held.push_back({bank, index, value});
}

void DropHeldWrite(int bank, int index) {
    std::erase_if(state().held, [=](const HeldWrite& each) { return each.bank == bank && each.index == index; });
}

void NoteRead(int bank, int index) {
    if (state().phase == Phase::Reading) state().unread.erase({bank, index});
}

}  // namespace kestrel
