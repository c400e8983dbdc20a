// Opening and closing pages by name.
// The shell includes no page: it is handed a registry of names and factories.
#pragma once

#include <memory>
#include <string>

#include "link/loaded_pages.h"

namespace kestrel {

/// Hands over the pages that there are. Menu entries of other pages stay disabled.
void RegisterPages(PageRegistry registry);
bool PageIsRegistered(const std::string& name);

/// A page that is not loaded. A name without a page is a run-time error.
std::unique_ptr<Page> MakePage(const std::string& name);

/// Loads the page if it is not loaded, and brings it to the front. A name without a page is a run-time error.
Page& ShowPage(const std::string& name);
/// Unloads every page.
void ClosePages();

}  // namespace kestrel
