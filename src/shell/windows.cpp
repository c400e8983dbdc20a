// Opening and closing pages by name.
#include "shell/windows.h"

#include "link/leaving.h"
#include "link/loaded_pages.h"
#include "platform/errors.h"
#include "platform/module_state.h"
#include "platform/platform.h"

namespace kestrel {

struct RegistryState {
    PageRegistry pages;
};
template class Module<RegistryState>;

namespace {
PageRegistry& registered() { return stateOf<RegistryState>().pages; }
}  // namespace

void RegisterPages(PageRegistry registry) { registered() = std::move(registry); }

bool PageIsRegistered(const std::string& name) { return registered().contains(name); }

std::unique_ptr<Page> MakePage(const std::string& name) {
    const auto factory = registered().find(name);
    if (factory == registered().end())
        throw RunTimeError(error_number::NoSuchElement, "There is no page \"" + name + "\"");
    return factory->second();
}

Page& ShowPage(const std::string& name) {
    Page* page = FindLoadedPage(name);
    if (!page) page = &LoadPage(MakePage(name));
    StayOpen(*page);
    platform().showWindow(*page);
    return *page;
}

void ClosePages() {
    while (!LoadedPages().empty()) UnloadPage(*LoadedPages().front());
}

}  // namespace kestrel
