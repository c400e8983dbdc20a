// The loaded pages, and the fan-out of every received value to all of them.
// Opening or closing a page between two replies needs no other registration.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "link/page.h"
#include "platform/serial_control.h"

namespace kestrel {

/// The pages that there are, by class name.
using PageRegistry = std::map<std::string, std::function<std::unique_ptr<Page>()>>;

/// The loaded pages in the order in which they were loaded.
std::vector<Page*> LoadedPages();
/// The loaded page of this class name, or null.
Page* FindLoadedPage(const std::string& name);
/// Loads a page: from its Form_Load on it hears of every value.
Page& LoadPage(std::unique_ptr<Page> page);
/// Form_Unload, then the page is gone. Not to be called from a handler of one of the page's own controls.
void UnloadPage(Page& page);
/// For handlers of the page's own controls: unloads the page and takes it from the screen at once, so that no more of
/// the user's acts reach it, and lets it go when the present event is over.
void UnloadPageLater(Page& page);

/// Tells every loaded page that parameter `index` of the current bank has the value of these bytes.
void NotifyPages(int index, const Bytes& data, int n);

}  // namespace kestrel
