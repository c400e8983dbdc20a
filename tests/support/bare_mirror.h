// Pages over a mirror without a line: three boards are there, and the test plays the link.
// For rules that hang on what arrives when; whole machines stand in world.h.
#pragma once

#include <compare>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <vector>

#include "link/fan_out.h"
#include "support/virtual_platform.h"

namespace kestrel::testing {

/// A value that the program has written into the mirror and that has not gone out.
struct DueWrite {
    int bank;
    int parameter;
    std::uint32_t value;
    auto operator<=>(const DueWrite&) const = default;
};
void PrintTo(const DueWrite& write, std::ostream* out);
using DueWrites = std::vector<DueWrite>;

class BareMirror {
  public:
    /// The texts are the English ones. Every parameter is as wide as a write.
    BareMirror();
    ~BareMirror();

    VirtualPlatform platform;

    template <class P>
    P& load() {
        return dynamic_cast<P&>(LoadPage(std::make_unique<P>()));
    }
    /// The board's value of a parameter arrives as the reply to a read.
    void arrive(int bank, int parameter, std::uint32_t value);
    /// The write that is due goes out and is acknowledged.
    void deliver(int bank, int parameter);
    /// Delivers everything that is due, in the order of a scan, and whatever that makes due, and tells what it was.
    DueWrites deliverAll();
    /// All that is due, by bank and parameter.
    DueWrites due() const;
    void run(double milliseconds) { platform.run(milliseconds); }
};

}  // namespace kestrel::testing
