// Puts a change of the user's back.
#include "shell/put_back.h"

#include <algorithm>

#include "language/window_texts.h"
#include "link/history.h"
#include "link/loaded_pages.h"
#include "link/recheck.h"
#include "platform/errors.h"
#include "platform/module_state.h"
#include "platform/outside.h"
#include "platform/platform.h"
#include "shell/main_window.h"

namespace kestrel {

namespace {

constexpr int TickMs = 50;
constexpr int PatienceTicks = 200;  ///< ten seconds: a page of the slowest adapter has come by then

enum class Step {
    Rest,
    Choose,  ///< what the page shows, as it was then
    Read,
    Set,
    Done,  ///< the change should be in the history
};

enum class Refusal { ValueIsAnother, CannotBeRead, PageRefuses, OtherBoards };

void tick_Timer();

}  // namespace

struct PuttingBack {
    PuttingBack() { tick.OnTimer(tick_Timer); }
    ~PuttingBack() { ForgetActs(this); }

    Step step = Step::Rest;
    PastChange change;
    bool isBeingRead = false;  ///< by itself: the page was opened for it, or shows something else now
    int ticksLeft = 0;
    Timer tick{TickMs};
};
template class Module<PuttingBack>;

namespace {

constexpr int NotPutBackLine = 720;
constexpr int FirstReasonLine = 721;
constexpr const char* Reasons[] = {"the board has another value now", "its value could not be read",
                                   "the page does not take it now", "other boards are on the line now"};

PuttingBack& state() { return stateOf<PuttingBack>(); }

void rest() {
    state().step = Step::Rest;
    state().tick.Enabled = false;
    ExpectPutBack(nullptr, 0);
}

void refuse(Refusal why) {
    rest();
    const auto reason = static_cast<int>(why);
    Message message;
    message.title = "Kestrel";
    message.icon = Message::Icon::Exclamation;
    message.text = WindowText(NotPutBackLine, "This was not put back:") + "\n" + state().change.pageCaption + ": " +
                   state().change.control + "\n" + WindowText(FirstReasonLine + reason, Reasons[reason]);
    ShowMessage(message);
}

/// Where the page does not show yet what it showed then, the user's act that makes it; true when there is none left.
bool isChosen(Page& page) {
    for (const HeldAt& wanted : state().change.selectors) {
        Control* const selector = ControlAt(page, wanted.place);
        if (!selector || selector->held() == wanted.held) continue;
        state().isBeingRead = true;
        if (selector->usable()) selector->UserRestore(wanted.held);
        return false;
    }
    return true;
}

/// Nothing of what the change wrote is on its way, this or another's.
bool isSettled() {
    const PastChange* const change = FindPastChange(state().change.number);
    return change && change->fate != Fate::Waiting && !LineIsClosed();
}

/// What it wrote has been read since: a record that is read once is no longer to be visited then.
bool isRead() {
    const auto& records = state().change.records;
    return std::all_of(records.begin(), records.end(), [](const PastChange::Record& each) {
        const ParamRecord& record = ParamTable(each.bank, each.index);
        const bool isVisited = record.Period != 0 || !(ParamFlags(each.bank, each.index) & flag::Pending);
        return record.Watchers == 0 || (ParamIsFresh(each.index, each.bank) && isVisited);
    });
}

void set(Control& control) {
    if (control.held() != state().change.held) return refuse(Refusal::ValueIsAnother);
    state().step = Step::Done;
    ExpectPutBack(&control, state().change.number);
    control.UserRestore(state().change.heldBefore);
}

void go(Page& page) {
    Control* const control = ControlAt(page, state().change.place);
    if (!control || page.closing()) return;
    switch (state().step) {
        case Step::Choose:
            if (!isSettled() || !isChosen(page)) return;
            if (!state().isBeingRead) page.ReadAgain();
            state().step = Step::Read;
            return;
        case Step::Read:
            if (isRead() && !control->unread()) state().step = Step::Set;
            return;
        case Step::Set:
            if (control->usable() && !control->waiting()) set(*control);
            return;
        case Step::Done:
            if (const PastChange* const change = FindPastChange(state().change.number); change && IsPutBack(*change))
                rest();
            return;
        case Step::Rest:
            return;
    }
}

/// Between exchanges, as every act of the user.
void tick_Timer() {
    Page* const page = FindLoadedPage(state().change.page);
    if (!page) return rest();  // the menu did not open it, or the user has closed it
    if (MessageIsOpen()) return;
    go(*page);
    if (state().step == Step::Rest || --state().ticksLeft > 0) return;
    refuse(state().step < Step::Set ? Refusal::CannotBeRead : Refusal::PageRefuses);
}

void begin(int number) {
    const PastChange* const change = FindPastChange(number);
    if (!change || state().step != Step::Rest) return;
    state().change = *change;
    if (change->isOfOthers) return refuse(Refusal::OtherBoards);
    state().isBeingRead = FindLoadedPage(change->page) == nullptr;
    ChooseEntryOf(change->page);
    state().step = Step::Choose;
    state().ticksLeft = PatienceTicks;
    state().tick.Enabled = true;
}

}  // namespace

void PutBack(int number) {
    FromOutside(&state(), [number] { begin(number); });
}

void PutBackLast() {
    const auto& all = PastChanges();
    const auto last = std::find_if(all.rbegin(), all.rend(), [](const PastChange& each) {
        const bool isMade = each.fate == Fate::Confirmed || each.fate == Fate::Waiting || each.fate == Fate::Replaced;
        return isMade && each.putsBack == 0 && !each.isOfOthers && !IsPutBack(each);
    });
    if (last != all.rend()) PutBack(last->number);
}

bool IsPuttingBack() { return state().step != Step::Rest; }

}  // namespace kestrel
