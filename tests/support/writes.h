// What the program wrote, as the machine's end of the line saw it.
// Parameter numbers are found by the address in the frame, not by the program's tables.
#pragma once

#include <algorithm>
#include <ostream>
#include <vector>

#include "support/world.h"

namespace kestrel::testing {

struct Write {
    int bank;
    int parameter;
    std::uint32_t value;
    auto operator<=>(const Write&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Write& write) {
    return out << write.bank << ':' << write.parameter << '=' << write.value;
}

using Writes = std::vector<Write>;

/// Does something as the user, lets the line come to rest, and gives what was written, in order of parameters.
template <class Act>
Writes writesOf(World& world, Act&& act) {
    Writes writes;
    world.machine.onExchange = [&](const simulator::Exchange& exchange) {
        if (!exchange.request.write) return;
        const int bank = static_cast<int>(simulator::indexOf(exchange.request.board));
        writes.push_back({bank, exchange.parameter, exchange.value});
    };
    act();
    world.settle();
    world.machine.onExchange = nullptr;
    std::sort(writes.begin(), writes.end());
    return writes;
}

/// Subscriptions that are left over all banks.
inline int watchersLeft() {
    int count = 0;
    for (int bank = 0; bank < Banks; ++bank)
        for (int n = 1; n < RecordCount(bank); ++n) count += ParamTable(bank, n).Watchers;
    return count;
}

}  // namespace kestrel::testing
