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
    Leaving(Page* inPage, std::function<void()> inThen) : page(inPage), then(std::move(inThen)) {}
    Page* page;
    std::function<void()> then;  ///< nothing: the page closes
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

auto find(const Page& page) {
    return std::find_if(state().pages.begin(), state().pages.end(),
                        [&page](const Leaving& each) { return each.page == &page; });
}

void forget(const Page& page) {
    if (const auto found = find(page); found != state().pages.end()) state().pages.erase(found);
}

void goOn(Page& page) {
    const auto found = find(page);
    if (found == state().pages.end()) return;
    const std::function<void()> then = std::move(found->then);
    if (!then) return UnloadPageLater(page);
    LeavePage(page);
    page.endClosing();
    then();
}

/// As an act of its own, since a change ends in the middle of an exchange; and one of the page's handlers may have
/// ended it.
void goOnSoon(Page& page) {
    FromOutside(
        &page, [&page] { goOn(page); }, Source::Program);
}

void await(Page& page, std::function<void()> then) {
    page.beginClosing();
    Leaving& leaving = state().pages.emplace_back(&page, std::move(then));
    leaving.limit.OnTimer([&page] { goOnSoon(page); });
    leaving.limit.Enabled = true;
}

/// A change may end inside a handler of the very page.
void changeEnded() {
    if (!state().pages.empty() || state().then) state().settle.Enabled = true;
}

void settle_Timer() {
    state().settle.Enabled = false;
    std::vector<Page*> settled;
    for (const Leaving& each : state().pages)
        if (each.then ? !HasChanges(*each.page) : !anyChanges()) settled.push_back(each.page);
    for (Page* page : settled) goOnSoon(*page);
    if (state().then && !anyChanges()) FromOutside(&state(), end, Source::Program);
}

void tell_Timer() {
    if (MessageIsOpen()) return;  // after the box that stands
    state().tell.Enabled = false;
    for (Page* page : LoadedPages())
        if (const int count = LeaveSuspendedChanges(*page)) state().left.push_back({page->Caption, count});
    if (!state().left.empty()) Attendant().tellLeft(std::exchange(state().left, {}));
}

void end() {
    state().limit.Enabled = false;
    if (state().tells && MessageIsOpen()) {  // after the box that stands
        state().limit.Enabled = true;
        return;
    }
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
    if (!anyChanges()) return UnloadPageLater(page);  // one of its own handlers may have asked for it
    await(page, nullptr);
}

void WhenSettled(Page& page, std::function<void()> then) {
    if (page.closing()) return;
    if (!HasChanges(page)) return then();
    await(page, std::move(then));
}

void StayOpen(Page& page) {
    if (!page.closing() || state().then) return;
    if (const auto waiting = find(page); waiting == state().pages.end() || waiting->then) return;
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
    if (const int count = LeaveChanges(page)) state().left.push_back({page.Caption, count});
    state().tell.Enabled = true;  // it may suspend changes of other pages, too
}

}  // namespace kestrel
