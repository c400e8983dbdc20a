// How far a page is with its first values.
#include "link/first_values.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "link/page.h"
#include "link/param_table.h"
#include "platform/module_state.h"

namespace kestrel {

namespace {

struct Awaited {
    Page* page;
    std::set<std::pair<int, int>> missing;
    std::size_t all = 0;
};

}  // namespace

struct FirstValuesState {
    Page* loading = nullptr;
    std::vector<Awaited> pages;
};
template class Module<FirstValuesState>;

namespace {

FirstValuesState& state() { return stateOf<FirstValuesState>(); }

void show(const Awaited& awaited) {
    const std::size_t come = awaited.all - awaited.missing.size();
    awaited.page->FirstValues =
        awaited.missing.empty() ? Window::AllCame : static_cast<int>(Window::AllCame * come / awaited.all);
}

}  // namespace

AwaitingFirstValues::AwaitingFirstValues(Page& page) {
    state().loading = &page;
    state().pages.push_back({&page, {}});
}

AwaitingFirstValues::~AwaitingFirstValues() {
    state().loading = nullptr;
    Awaited& awaited = state().pages.back();
    awaited.all = awaited.missing.size();
    show(awaited);
    if (awaited.missing.empty()) state().pages.pop_back();
}

void NoteSubscribed(int bank, int index) {
    if (!state().loading || !BoardPresent(bank) || ParamIsFresh(index, bank)) return;
    state().pages.back().missing.emplace(bank, index);
}

void NoteArrived(int bank, int index) {
    std::vector<Awaited>& pages = state().pages;
    for (Awaited& awaited : pages)
        if (awaited.missing.erase({bank, index}) > 0) show(awaited);
    std::erase_if(pages, [](const Awaited& awaited) { return awaited.missing.empty(); });
}

void ForgetFirstValues(const Page& page) {
    std::erase_if(state().pages, [&page](const Awaited& awaited) { return awaited.page == &page; });
}

}  // namespace kestrel
