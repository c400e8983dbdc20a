// The loaded pages and the fan-out.
// See fan_out.h.
#include "link/fan_out.h"

#include <algorithm>

#include "platform/platform.h"

namespace kestrel {

namespace {

constexpr int AtOnceMs = 1;

struct PageState {
    std::vector<std::unique_ptr<Page>> loaded;
    std::vector<Page*> leaving;  ///< loaded pages that are to go after the present event
    std::unique_ptr<Timer> leavingTimer;
};

PageState& state() {
    static PageState instance;
    return instance;
}

auto slotOf(const Page& page) {
    return std::find_if(state().loaded.begin(), state().loaded.end(),
                        [&](const std::unique_ptr<Page>& slot) { return slot.get() == &page; });
}

void leavingTimer_Timer() {
    state().leavingTimer->Enabled = false;
    while (!state().leaving.empty()) UnloadPage(*state().leaving.front());
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
    Page& loaded = *state().loaded.emplace_back(std::move(page));
    settleLayout(loaded.Arrange());
    loaded.OnClose([&loaded] { UnloadPage(loaded); });
    loaded.Form_Load();
    return loaded;
}

void UnloadPage(Page& page) {
    const auto slot = slotOf(page);
    if (slot == state().loaded.end()) return;
    const std::unique_ptr<Page> leaving = std::move(*slot);
    state().loaded.erase(slot);
    std::erase(state().leaving, &page);
    leaving->Form_Unload();
    platform().closeWindow(*leaving);
}

void UnloadPageLater(Page& page) {
    if (slotOf(page) == state().loaded.end()) return;
    state().leaving.push_back(&page);
    if (!state().leavingTimer) {
        state().leavingTimer = std::make_unique<Timer>(AtOnceMs);
        state().leavingTimer->OnTimer(leavingTimer_Timer);
    }
    state().leavingTimer->Enabled = true;
}

void ResetPages() { state() = {}; }

void NotifyPages(int index, const Bytes& data, int n) {
    const int highest = std::min(n, static_cast<int>(data.size()) - 1);
    const ParamValue value = ValueOf(data.data(), highest);
    // By position: a handler may open or close pages, and those loaded meanwhile hear of this value too.
    for (std::size_t i = 0; i < state().loaded.size(); ++i) state().loaded[i]->notify(index, value);
}

}  // namespace kestrel
