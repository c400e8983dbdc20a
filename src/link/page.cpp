// The base of every page.
#include "link/page.h"

#include <cstdio>
#include <utility>

#include "link/observer.h"

namespace kestrel {

void Page::notify(int n, ParamValue value) {
    tell(&LinkObserver::tellingPage, *this, n, value);
    ++arrivals_;
    const int bank = CurrentBank;
    const Speaking board(nullptr, bank);
    keepsUpdating_ = false;
    try {
        {
            const ByThePage shown(*this);
            SLabel_Change(n, value);
        }
        Updating = keepsUpdating_;
        if (!keepsUpdating_) valueShown();
    } catch (const RunTimeError& error) {
        // It ends this notification alone. A mistake of the program's own is another type, and ends the run.
        const bool isNews = std::exchange(lastError_, error.what()) != error.what();
        if (isNews)
            std::fprintf(stderr, "kestrel: %s, parameter %d.%d = %lld: %s\n", name().c_str(), bank, n,
                         static_cast<long long>(value), error.what());
    }
    tell(&LinkObserver::pageTold, *this);
}

}  // namespace kestrel
