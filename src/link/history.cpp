// What the user has changed in this run.
#include "link/history.h"

#include <algorithm>

#include "link/loaded_pages.h"
#include "platform/module_state.h"
#include "platform/names_on_page.h"
#include "platform/platform.h"
#include "platform/switches.h"

namespace kestrel {

struct History {
    std::vector<PastChange> all;
    int last = 0;
    std::function<void()> onNews;
    const Control* actingOn = nullptr;  ///< of the newest change
    int act = 0;
    const Control* puttingBack = nullptr;
    int putsBack = 0;
};
template class Module<History>;

namespace {

constexpr std::size_t Most = 1000;

History& state() { return stateOf<History>(); }

void tellNews() {
    if (state().onNews) state().onNews();
}

std::size_t placeOf(Page& page, const Control& control) {
    std::size_t place = 0, found = 0;
    eachControl(page.Arrange(), [&](Control& each) {
        if (&each == &control) found = place;
        ++place;
    });
    return found;
}

std::vector<HeldAt> selectorsOf(Page& page) {
    std::vector<HeldAt> selectors;
    std::size_t place = 0;
    eachControl(page.Arrange(), [&](const Control& each) {
        if (each.isSelector) selectors.push_back({place, each.held()});
        ++place;
    });
    return selectors;
}

PastChange describe(Page& page, const Control& control) {
    PastChange change;
    change.number = ++state().last;
    change.time = TimeOfDayText(platform().localTime());
    change.page = page.name();
    change.pageCaption = page.Caption;
    change.control = NameOnPage(page, control);
    change.place = placeOf(page, control);
    change.isTwoState = dynamic_cast<const ToggleSwitch*>(&control) != nullptr;
    change.before = control.textBefore();
    change.now = control.text();
    change.heldBefore = control.heldBefore();
    change.held = control.held();
    change.selectors = selectorsOf(page);
    if (state().puttingBack == &control) change.putsBack = std::exchange(state().putsBack, 0);
    return change;
}

void settle(PastChange& change, Fate fate) {
    const bool anyOpen = std::any_of(change.records.begin(), change.records.end(),
                                     [](const PastChange::Record& each) { return each.isOpen; });
    if (change.fate == Fate::Waiting || fate > change.fate) change.fate = fate;
    if (anyOpen && change.fate == Fate::Confirmed) change.fate = Fate::Waiting;
}

/// Whether the newest change is what the user is doing to this control right now.
bool isNewest(const Control& control) {
    return state().actingOn == &control && state().act == control.userChanges() && !state().all.empty();
}

/// An act that changes nothing sends the last change once more.
void writtenOnceMore(const std::string& page, const std::string& held, int bank, int index) {
    for (auto change = state().all.rbegin(); change != state().all.rend(); ++change)
        for (PastChange::Record& each : change->records) {
            if (each.bank != bank || each.index != index) continue;
            if (change->page != page || change->held != held) return;
            each.isOpen = true;
            change->fate = Fate::Waiting;
            return tellNews();
        }
}

}  // namespace

const std::vector<PastChange>& PastChanges() { return state().all; }

const PastChange* FindPastChange(int number) {
    const auto found = std::find_if(state().all.begin(), state().all.end(),
                                    [number](const PastChange& each) { return each.number == number; });
    return found == state().all.end() ? nullptr : &*found;
}

bool IsPutBack(const PastChange& change) {
    return std::any_of(state().all.begin(), state().all.end(), [&change](const PastChange& each) {
        return each.putsBack == change.number && each.fate <= Fate::Waiting;
    });
}

void OnHistory(std::function<void()> handler) { state().onNews = std::move(handler); }

Control* ControlAt(Page& page, std::size_t place) {
    Control* found = nullptr;
    eachControl(page.Arrange(), [&](Control& each) {
        if (place-- == 0) found = &each;
    });
    return found;
}

void NotePast(const Control& control, int bank, int index) {
    Page* const page = control.window() ? FindLoadedPage(control.window()->name()) : nullptr;
    if (!page || !control.standsForValue()) return;
    History& here = state();
    if (!isNewest(control)) {
        if (control.held() == control.heldBefore()) return writtenOnceMore(page->name(), control.held(), bank, index);
        here.actingOn = &control;
        here.act = control.userChanges();
        here.all.push_back(describe(*page, control));
        if (here.all.size() > Most) here.all.erase(here.all.begin());
    }
    here.all.back().records.push_back({bank, index, true});
    tellNews();
}

void EndPast(int bank, int index, Fate fate) {
    for (auto change = state().all.rbegin(); change != state().all.rend(); ++change)
        for (PastChange::Record& each : change->records) {
            if (!each.isOpen || each.bank != bank || each.index != index) continue;
            each.isOpen = false;
            const Control* const acting = Control::acting();
            const bool isOfOneAct = change == state().all.rbegin() && acting && isNewest(*acting);
            if (fate != Fate::Replaced || !isOfOneAct) settle(*change, fate);
            return tellNews();
        }
}

void EndActsOn(const Page& page) {
    const Control* const last = state().actingOn;
    if (last && last->window() == &page) state().actingOn = nullptr;
}

void EndHistoryOfBoards() {
    for (PastChange& each : state().all) {
        each.isOfOthers = true;
        if (each.fate == Fate::Waiting) each.fate = Fate::Withdrawn;
    }
    tellNews();
}

void ExpectPutBack(const Control* control, int number) {
    state().puttingBack = control;
    state().putsBack = number;
}

}  // namespace kestrel
