// Pages over a mirror without a line: three boards are there, and the test plays the link.
// For rules that hang on what arrives when; whole machines stand in world.h.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "link/loaded_pages.h"
#include "shell/session.h"
#include "support/board_value.h"
#include "support/virtual_platform.h"

namespace kestrel::testing {

class BareMirror {
  public:
    /// The texts are the English ones. Every parameter is as wide as a write.
    BareMirror();

    VirtualPlatform platform;
    Session session;

    template <class P, class... Arguments>
    P& load(Arguments&&... arguments) {
        return dynamic_cast<P&>(LoadPage(std::make_unique<P>(std::forward<Arguments>(arguments)...)));
    }
    /// The board's value of a parameter arrives as the reply to a read.
    void arrive(int bank, int parameter, std::uint32_t value);
    /// The write that is due goes out and is acknowledged.
    void deliver(int bank, int parameter);
    /// Delivers everything that is due, in the order of a scan, and whatever that makes due, and tells what it was.
    Writes deliverAll();
    /// All that is due, by bank and parameter.
    Writes due() const;
    void run(double milliseconds) { platform.run(milliseconds); }
};

}  // namespace kestrel::testing
