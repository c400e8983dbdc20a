// The base of every page.
#include "link/page.h"

#include "link/observer.h"

namespace kestrel {

void Page::notify(int n, ParamValue value) {
    tell(&LinkObserver::tellingPage, *this, n, value);
    ++arrivals_;
    const Speaking board(nullptr, true);
    try {
        SLabel_Change(n, value);
    } catch (const RunTimeError&) {
        // an error in one page's notification leaves that notification alone
    }
    tell(&LinkObserver::pageTold, *this);
}

}  // namespace kestrel
