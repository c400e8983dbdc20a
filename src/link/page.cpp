// The base of every page.
#include "link/page.h"

#include <cstdio>

#include "link/observer.h"

namespace kestrel {

void Page::notify(int n, ParamValue value) {
    tell(&LinkObserver::tellingPage, *this, n, value);
    ++arrivals_;
    const Speaking board(nullptr, true);
    keepsUpdating_ = false;
    Updating = true;
    try {
        SLabel_Change(n, value);
        Updating = keepsUpdating_;
        if (!Updating) valueShown();
    } catch (const RunTimeError& error) {
        Updating = false;
        std::fprintf(stderr, "kestrel: %s, told of parameter %d: %s\n", name().c_str(), n, error.what());
    }
    tell(&LinkObserver::pageTold, *this);
}

}  // namespace kestrel
