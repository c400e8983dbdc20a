// Values that reach a page without a machine: the mirror takes the value, then the page is told.
// For tests of one page alone; the whole road of a value needs a World.
#pragma once

#include <memory>
#include <utility>

#include "link/fan_out.h"
#include "link/identification.h"
#include "shell/start_up.h"
#include "support/virtual_platform.h"

namespace kestrel::testing {

/// A platform and the tables of a fresh process; no port, no boards, no texts.
class Bench {
  public:
    Bench() { ResetProgram(); }
    ~Bench() { ResetProgram(); }

    VirtualPlatform platform;

    template <class P, class... Arguments>
    P& load(Arguments&&... arguments) {
        return dynamic_cast<P&>(LoadPage(std::make_unique<P>(std::forward<Arguments>(arguments)...)));
    }
};

/// Puts a value of four bytes into the mirror, not yet known to be the board's.
inline void preload(int bank, int n, std::uint32_t value) {
    ParamRecord& record = ParamTable(bank, n);
    record.Command = 3;
    StoreValue(record, value);
}

/// The board has sent, or confirmed, this value.
inline void tell(Page& page, int bank, int n, std::uint32_t value) {
    preload(bank, n, value);
    ParamFlags(bank, n) |= flag::Valid;
    CurrentBank = bank;
    page.notify(n, value);
}

}  // namespace kestrel::testing
