// The base of every page.
#include "link/page.h"

namespace kestrel {

void Page::notify(int n, ParamValue value) {
    ++arrivals_;
    const Speaking board(nullptr, true);
    try {
        SLabel_Change(n, value);
    } catch (const RunTimeError&) {
        return;  // an error in one page's notification leaves that notification alone
    }
}

}  // namespace kestrel
