// The pages that there are, by class name.
// A new page is added here and opens from the menu.
#pragma once

#include "link/loaded_pages.h"

namespace kestrel {

PageRegistry AllPages();

}  // namespace kestrel
