// The loaded pages and the fan-out.
#include "link/loaded_pages.h"

#include <algorithm>

#include "link/first_values.h"
#include "link/history.h"
#include "link/leaving.h"
#include "link/observer.h"
#include "platform/module_state.h"
#include "platform/platform.h"

namespace kestrel {

struct PageState {
    std::vector<std::unique_ptr<Page>> loaded;
    std::vector<std::unique_ptr<Page>> leaving;  ///< unloaded pages that one of their own handlers still runs on
    std::unique_ptr<Timer> leavingTimer;
};
template class Module<PageState>;

namespace {

constexpr int AtOnceMs = 1;

PageState& state() { return stateOf<PageState>(); }

auto slotOf(const Page& page) {
    return std::find_if(state().loaded.begin(), state().loaded.end(),
                        [&](const std::unique_ptr<Page>& slot) { return slot.get() == &page; });
}

void leavingTimer_Timer() {
    state().leavingTimer->Enabled = false;
    state().leaving.clear();
}

/// Unloads a page and hands it over, or null where it is not loaded.
std::unique_ptr<Page> takeOut(Page& page) {
    const auto slot = slotOf(page);
    if (slot == state().loaded.end()) return nullptr;
    std::unique_ptr<Page> leaving = std::move(*slot);
    state().loaded.erase(slot);
    EndActsOn(*leaving);
    ForgetFirstValues(page);
    leaving->Form_Unload();
    LeavePage(*leaving);
    platform().closeWindow(*leaving);
    return leaving;
}

}  // namespace

std::vector<Page*> LoadedPages() {
    std::vector<Page*> pages;
    for (const auto& page : state().loaded) pages.push_back(page.get());
    return pages;
}

Page* FindLoadedPage(const std::string& name) {
    for (const auto& page : state().loaded)
        if (page->name() == name) return page.get();
    return nullptr;
}

Page& LoadPage(std::unique_ptr<Page> page) {
    tell(&LinkObserver::loadingPage, *page);
    Page& loaded = *state().loaded.emplace_back(std::move(page));
    const Layout layout = loaded.Arrange();
    settleLayout(layout);
    eachControl(layout, [&loaded](Control& control) { control.standOn(&loaded); });
    loaded.OnClose([&loaded] { CloseWhenSettled(loaded); });
    {
        const AwaitingFirstValues awaiting(loaded);
        loaded.Form_Load();
    }
    if (!loaded.isSelector) eachControl(loaded.Arrange(), [](Control& control) { control.awaitValue(); });
    return loaded;
}

void UnloadPage(Page& page) { takeOut(page); }

void UnloadPageLater(Page& page) {
    std::unique_ptr<Page> leaving = takeOut(page);
    if (!leaving) return;
    leaving->beginClosing();  // acts that still wait find dead controls
    state().leaving.push_back(std::move(leaving));
    if (!state().leavingTimer) {
        state().leavingTimer = std::make_unique<Timer>(AtOnceMs);
        state().leavingTimer->OnTimer(leavingTimer_Timer);
    }
    state().leavingTimer->Enabled = true;
}

void NotifyPages(int index, const Bytes& data, int n) {
    const int highest = std::min(n, static_cast<int>(data.size()) - 1);
    const ParamValue value = ValueOf(data.data(), highest);
    // By position: a handler may open or close pages, and those loaded meanwhile hear of this value too.
    for (std::size_t i = 0; i < state().loaded.size(); ++i) state().loaded[i]->notify(index, value);
}

}  // namespace kestrel
