// What went over the line to a simulated machine, in order.
// Kept apart for writes and reads, since tests ask for one or the other.
#pragma once

#include <algorithm>
#include <tuple>
#include <vector>

#include "link/fan_out.h"
#include "support/world.h"

namespace kestrel::testing {

/// Bank, parameter, value.
using Written = std::tuple<int, int, std::uint32_t>;

/// Records from its construction on; the world must outlive it.
class WireLog {
  public:
    explicit WireLog(World& world) : world_(world) {
        world.machine.onExchange = [this](const simulator::Exchange& exchange) { take(exchange); };
    }
    ~WireLog() { world_.machine.onExchange = nullptr; }
    WireLog(const WireLog&) = delete;
    WireLog& operator=(const WireLog&) = delete;

    std::vector<Written> writes;
    /// The writes since the last call, sorted: which of two comes first on the line depends on where the scan stands.
    std::vector<Written> takeWrites() {
        std::vector<Written> taken = std::move(writes);
        writes.clear();
        std::sort(taken.begin(), taken.end());
        return taken;
    }
    std::vector<std::pair<int, int>> reads;  ///< bank, parameter

  private:
    void take(const simulator::Exchange& exchange) {
        const int bank = static_cast<int>(exchange.request.board);
        if (exchange.request.write)
            writes.emplace_back(bank, exchange.parameter, exchange.value);
        else
            reads.emplace_back(bank, exchange.parameter);
    }
    World& world_;
};

/// Tells a page that a board has reported this value.
inline void tell(Page& page, int bank, int parameter, ParamValue value) {
    CurrentBank = bank;
    page.notify(parameter, value);
}

}  // namespace kestrel::testing
