// The page of doses on a simulated machine, for its tests.
// Knows when the page is open to the user, what went over the line and what the boards hold.
#pragma once

#include <map>

#include "pages/beverage/frm_dosi.h"
#include "support/writes.h"

namespace kestrel::testing {

/// All values of the boards, but those of the clock.
using Boards = std::map<std::pair<int, int>, std::uint32_t>;

class Doses {
  public:
    Doses() {
        world.start();
        world.machine.onExchange = [this](const simulator::Exchange& exchange) {
            const int bank = static_cast<int>(exchange.request.board);
            if (exchange.request.write) writes.push_back({bank, exchange.parameter, exchange.value});
        };
    }

    World world;
    Writes writes;  ///< in the order of the line

    FrmDosi& open() { return world.open<FrmDosi>("FrmDosi"); }

    /// Opens the page at a selection whose steps have these valves and whose times are all different.
    FrmDosi& openAt(int selection, std::uint32_t first = 3, std::uint32_t second = 2, std::uint32_t third = 1) {
        const std::uint32_t valves[] = {first, second, third};
        for (int block = 0; block < 33; ++block)
            world.setBoard(1, 7 + 32 * block + selection,
                           block < 3 ? valves[block] : static_cast<std::uint32_t>(4 * block + selection));
        FrmDosi& page = open();
        if (selection != 0) page.HScroll7.UserMove(selection);
        settle(page);
        return page;
    }

    /// Lets time pass until the keys are live and the line is at rest; false after a virtual minute.
    bool settle(const FrmDosi& page) { return msUntilOpen(page) < 60'000 && world.settle(); }

    /// Lets time pass until the keys are live, a minute at most, and says how long that was.
    double msUntilOpen(const FrmDosi& page) {
        const Micros from = world.platform.now();
        while (!page.HScroll7.usable() && world.platform.now() - from < 60'000'000) world.run(1);
        return static_cast<double>(world.platform.now() - from) / 1000;
    }

    Boards boards() const {
        Boards all;
        for (int bank = 0; bank < Banks; ++bank)
            for (int n = 1; n < RecordCount(bank); ++n)
                if (bank != 0 || n < 239 || n > 248) all[{bank, n}] = world.board(bank, n);
        return all;
    }
};

/// What has changed, with its present value.
inline Boards changed(const Boards& before, const Boards& after) {
    Boards difference;
    for (const auto& [place, value] : after)
        if (before.at(place) != value) difference[place] = value;
    return difference;
}

/// Tells the page alone of a value, as if a board had sent it.
inline void say(Page& page, int bank, int n, ParamValue value) {
    CurrentBank = bank;
    page.notify(n, value);
}

}  // namespace kestrel::testing
