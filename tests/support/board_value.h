// A value of one parameter of one board: as it stands there, or as the program writes it.
// Lists of them are compared whole, so that a write too many fails a test as well as one that is missing.
#pragma once

#include <algorithm>
#include <compare>
#include <cstdint>
#include <ostream>
#include <vector>

namespace kestrel::testing {

struct BoardValue {
    int bank;
    int parameter;
    std::uint32_t value;
    auto operator<=>(const BoardValue&) const = default;
};
using Writes = std::vector<BoardValue>;

inline std::ostream& operator<<(std::ostream& out, const BoardValue& v) {
    return out << "bank " << v.bank << ": " << v.parameter << " = " << v.value;
}

inline Writes sorted(Writes writes) {
    std::sort(writes.begin(), writes.end());
    return writes;
}

/// A setting that the board keeps twice, or once where the shadow is the parameter itself.
struct Setting {
    int bank;
    int parameter;
    int shadow;

    /// What writes it, by number.
    Writes as(std::uint32_t value) const {
        if (shadow == parameter) return {{bank, parameter, value}};
        return sorted({{bank, parameter, value}, {bank, shadow, value}});
    }
};

}  // namespace kestrel::testing
