// Who is subscribed to what: the counts in the mirror, by bank and number.
// A page that leaves a subscription behind keeps the line busy for the rest of the run.
#pragma once

#include <initializer_list>
#include <map>
#include <tuple>
#include <utility>

#include "link/param_table.h"

namespace kestrel::testing {

using Watches = std::map<std::pair<int, int>, int>;

/// Every record that has subscribers, with their number.
inline Watches watches() {
    Watches found;
    for (int bank = 0; bank < Banks; ++bank)
        for (int index = 1; index < ParamRecords; ++index)
            if (const int count = ParamTable(bank, index).Watchers; count > 0) found[{bank, index}] = count;
    return found;
}

/// One subscription for each number of each run of bank, first and last.
inline Watches watchesOf(std::initializer_list<std::tuple<int, int, int>> runs) {
    Watches result;
    for (const auto& [bank, first, last] : runs)
        for (int n = first; n <= last; ++n) ++result[{bank, n}];
    return result;
}

}  // namespace kestrel::testing
