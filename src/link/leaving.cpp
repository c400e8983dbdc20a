// Closing waits for what is due.
#include "link/leaving.h"

#include <algorithm>
#include <list>
#include <string>
#include <utility>
#include <vector>

#include "link/attendant.h"
#include "link/changes.h"
#include "link/loaded_pages.h"
#include "link/recheck.h"
#include "platform/module_state.h"
#include "platform/movable.h"
#include "platform/outside.h"
#include "platform/platform.h"

namespace kestrel {

namespace {

constexpr int SettleMs = 1;
constexpr int TellMs = 20;

struct Leaving {
    explicit Leaving(Page* closed) : page(closed) {}
    Page* page;
    Timer limit{LeavingMs, Timer::OfTheLink};
};

void end();
void tell_Timer();
void changeEnded();
void settle_Timer();

}  // namespace

struct LeavingState {
    LeavingState() {
        limit.OnTimer([this] { FromOutside(this, end, Source::Program); });
        tell.OnTimer(tell_Timer);
        settle.OnTimer(settle_Timer);
        OnChangeEnded(changeEnded);
    }

    std::list<Leaving> pages;
    std::vector<PageChanges> left;
    std::function<void()> then;  ///< the end of the program
    bool tells = false;
    Timer limit{LeavingMs, Timer::OfTheLink};
    Timer settle{SettleMs, Timer::OfTheLink};
    Timer tell{TellMs, Timer::OfTheLink};  ///< a box must not stand in the middle of what unloads a page
};
template class Module<LeavingState>;

namespace {

LeavingState& state() { return stateOf<LeavingState>(); }

bool anyChanges() {
    const std::vector<Page*> pages = LoadedPages();
    return std::any_of(pages.begin(), pages.end(), [](const Page* page) { return HasChanges(*page); });
}

/// As an act of its own, since a change ends in the middle of an exchange; and one of the page's handlers may have
/// ended it.
void closeSoon(Page& page) {
    const auto close = [&page] {
        if (page.closing()) UnloadPageLater(page);
    };
    FromOutside(&page, close, Source::Program);
}

void forget(const Page& page) {
    std::erase_if(state().pages, [&page](const Leaving& each) { return each.page == &page; });
}

/// A change may end inside a handler of the very page.
void changeEnded() {
    if (!state().pages.empty() || state().then) state().settle.Enabled = true;
}

void settle_Timer() {
    state().settle.Enabled = false;
    std::vector<Page*> settled;
    for (const Leaving& each : state().pages)
        if (!HasChanges(*each.page)) settled.push_back(each.page);
    for (Page* page : settled) closeSoon(*page);
    if (state().then && !anyChanges()) FromOutside(&state(), end, Source::Program);
}

void tell_Timer() {
    if (MessageIsOpen()) return;  // after the box that stands
    state().tell.Enabled = false;
    if (!state().left.empty()) Attendant().tellLeft(std::exchange(state().left, {}));
}

void end() {
    state().limit.Enabled = false;
    const auto then = std::exchange(state().then, nullptr);
    if (!then) return;
    std::vector<PageChanges> left = std::exchange(state().left, {});
    for (Page* page : LoadedPages())
        if (const int count = LeaveChanges(*page)) left.push_back({page->Caption, count});
    if (state().tells && !left.empty()) Attendant().tellLeft(left);
    then();
    for (Page* page : LoadedPages()) page->endClosing();  // the program goes on
}

}  // namespace

void CloseWhenSettled(Page& page) {
    if (page.closing()) return;
    if (!HasChanges(page)) return UnloadPage(page);
    page.beginClosing();
    Leaving& leaving = state().pages.emplace_back(&page);
    leaving.limit.OnTimer([&page] { closeSoon(page); });
    leaving.limit.Enabled = true;
}

void StayOpen(Page& page) {
    if (!page.closing() || state().then) return;
    forget(page);
    page.endClosing();
}

void EndWhenSettled(std::function<void()> then, bool tells) {
    FinishGestures();
    if (!anyChanges()) return then();
    if (state().then) return;
    state().then = std::move(then);
    state().tells = tells;
    for (Page* page : LoadedPages()) page->beginClosing();
    state().limit.Enabled = true;
}

void LeavePage(Page& page) {
    forget(page);
    const int count = LeaveChanges(page);
    if (count == 0) return;
    state().left.push_back({page.Caption, count});
    state().tell.Enabled = true;
}

}  // namespace kestrel
