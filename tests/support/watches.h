// Who is subscribed to what: the counts in the mirror, by bank and number.
// A page that leaves a subscription behind keeps the line busy for the rest of the run.
#pragma once

#include <cstdio>
#include <map>
#include <sstream>
#include <string>
#include <utility>

#include "link/param_table.h"

namespace kestrel::testing {

using Watches = std::map<std::pair<int, int>, int>;

/// Every record that has subscribers, with their number.
inline Watches watches() {
    constexpr int Used = 1500;  // more than any page names
    Watches found;
    for (int bank = 0; bank < Banks; ++bank)
        for (int index = 1; index < Used; ++index)
            if (const int count = ParamTable(bank, index).Watchers; count > 0) found[{bank, index}] = count;
    return found;
}

/// One subscription for each number of a list such as "0: 1 84-85 2: 7-1031/32": behind its bank a number, a run, or a
/// run at equal distances.
inline Watches watchesOf(const std::string& list) {
    Watches result;
    int bank = 0;
    std::istringstream words(list);
    for (std::string word; words >> word;) {
        int first = 0, last = 0, distance = 1;
        const int given = std::sscanf(word.c_str(), "%d-%d/%d", &first, &last, &distance);
        if (word.back() == ':')
            bank = first;
        else
            for (int n = first; n <= (given == 1 ? first : last); n += distance) ++result[{bank, n}];
    }
    return result;
}

}  // namespace kestrel::testing
