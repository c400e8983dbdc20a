// How a check fails: with its name, and with words about what was found, made where it failed and never before.
#pragma once

#include <sstream>
#include <string>

namespace kestrel::testing {

/// A check that did not hold. Not to be caught by the program.
struct CheckFailed {
    std::string check;
    std::string detail;
};
/// The rules of the program let the run go no further.
struct EndedByRules {
    std::string why;
};

template <class... Parts>
std::string say(const Parts&... parts) {
    std::ostringstream out;
    ((out << parts), ...);
    return out.str();
}

/// A record by its place; words are made of it only when they are needed.
struct place {
    int bank, index;
};
inline std::ostream& operator<<(std::ostream& out, const place& at) {
    return out << "bank " << at.bank << " record " << at.index;
}

template <class... Parts>
void require(bool holds, const char* check, const Parts&... detail) {
    if (!holds) throw CheckFailed{check, say(detail...)};
}
template <class Program, class Model>
void same(const char* check, const Program& program, const Model& model) {
    if (!(program == model)) throw CheckFailed{check, say(program, ", not ", model)};
}

}  // namespace kestrel::testing
