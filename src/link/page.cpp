// The base of every page.
#include "link/page.h"

#include <cstdio>

#include "link/observer.h"

namespace kestrel {

void Page::notify(int n, ParamValue value) {
    tell(&LinkObserver::tellingPage, *this, n, value);
    ++arrivals_;
    const Speaking board(nullptr, true);
    const int bank = CurrentBank;
    keepsUpdating_ = false;
    Updating = true;
    const struct Guard {
        Page& page;
        ~Guard() { page.Updating = page.keepsUpdating_; }
    } guard{*this};
    try {
        SLabel_Change(n, value);
    } catch (const RunTimeError& error) {
        // It ends this notification alone. A mistake of the program's own is another type, and ends the run.
        std::fprintf(stderr, "kestrel: %s, parameter %d.%d = %lld: %s\n", name().c_str(), bank, n,
                     static_cast<long long>(value), error.what());
    }
    tell(&LinkObserver::pageTold, *this);
}

}  // namespace kestrel
