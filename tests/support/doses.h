// The page of doses on a simulated machine, for its tests.
// Knows when the page is open to the user and what the boards hold.
#pragma once

#include <map>

#include "pages/beverage/frm_dosi.h"
#include "support/wire_log.h"

namespace kestrel::testing {

/// All values of the boards, but those that run by themselves: the clock and what a dispense moves.
using Boards = std::map<std::pair<int, int>, std::uint32_t>;

class Doses {
  public:
    Doses() { world.start(); }

    World world;

    /// Opens the page and waits until it is filled.
    FrmDosi& open() { return world.open<FrmDosi>("FrmDosi"); }

    /// Gives the three steps of a selection these valves, and each field of time a value of its own.
    void setRecipe(int selection, std::uint32_t first, std::uint32_t second, std::uint32_t third) {
        const std::uint32_t valves[] = {first, second, third};
        for (int block = 0; block < 33; ++block)
            world.setBoard(1, 7 + 32 * block + selection,
                           block < 3 ? valves[block] : static_cast<std::uint32_t>(4 * block + selection));
    }

    /// Lets time pass until the keys are live; false after so many virtual seconds.
    bool waitUntilOpen(const FrmDosi& page, int seconds = 60) {
        for (int waited = 0; waited < 1000 * seconds; waited += 10) {
            if (page.HScroll7.usable()) return true;
            world.run(10);
        }
        return false;
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

}  // namespace kestrel::testing
