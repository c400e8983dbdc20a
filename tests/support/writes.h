// What the program wrote, as the machine's end of the line saw it.
// Parameter numbers are found by the address in the frame, not by the program's tables.
#pragma once

#include <algorithm>
#include <compare>
#include <ostream>
#include <utility>
#include <vector>

#include "support/world.h"

namespace kestrel::testing {

struct Written {
    int bank;
    int parameter;
    std::uint32_t value;
    auto operator<=>(const Written&) const = default;
};
using Writes = std::vector<Written>;

inline std::ostream& operator<<(std::ostream& out, const Written& w) {
    return out << "bank " << w.bank << ": " << w.parameter << " = " << w.value;
}

/// Collects every write frame from now on, repeats included.
class WriteLog {
  public:
    explicit WriteLog(World& world) : machine_(world.machine) {
        machine_.onExchange = [this](const simulator::Exchange& exchange) {
            if (exchange.request.write)
                writes_.push_back({static_cast<int>(exchange.request.board), exchange.parameter, exchange.value});
        };
    }
    ~WriteLog() { machine_.onExchange = nullptr; }
    WriteLog(const WriteLog&) = delete;
    WriteLog& operator=(const WriteLog&) = delete;

    /// What was collected since the last call, by bank and number: which of two writes the scan meets first depends
    /// on where it stands.
    Writes take() {
        std::sort(writes_.begin(), writes_.end());
        return takeInOrder();
    }
    /// The same in the order of the line.
    Writes takeInOrder() { return std::exchange(writes_, {}); }

  private:
    simulator::Machine& machine_;
    Writes writes_;
};

/// Does something as the user, lets the line come to rest, and gives what was written, in order of parameters.
template <class Act>
Writes writesOf(World& world, Act&& act) {
    WriteLog log(world);
    act();
    world.settle();
    return log.take();
}

/// Subscriptions that are left over all banks.
inline int watchersLeft() {
    int count = 0;
    for (int bank = 0; bank < Banks; ++bank)
        for (int n = 1; n < RecordCount(bank); ++n) count += ParamTable(bank, n).Watchers;
    return count;
}

}  // namespace kestrel::testing
