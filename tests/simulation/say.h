// Words about what was found, from anything that can be printed.
// Used where a check failed, never before.
#pragma once

#include <sstream>
#include <string>

namespace kestrel::testing {

template <class... Parts>
std::string say(const Parts&... parts) {
    std::ostringstream out;
    (out << ... << parts);
    return out.str();
}

inline std::string place(int bank, int index) { return say("bank ", bank, " record ", index); }

}  // namespace kestrel::testing
