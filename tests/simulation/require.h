// How a check fails: with its name, and with words about what was found, made where it failed and never before.
#pragma once

#include <sstream>
#include <string>

#include "simulation/reference_model.h"

namespace kestrel::testing {

/// A check that did not hold. Not to be caught by the program.
struct CheckFailed {
    std::string check;
    std::string detail;
};

template <class... Parts>
std::string say(const Parts&... parts) {
    std::ostringstream out;
    ((out << parts), ...);
    return out.str();
}

using Place = reference::Place;

template <class... Parts>
void require(bool holds, const char* check, const Parts&... detail) {
    if (!holds) throw CheckFailed{check, say(detail...)};
}
template <class Program, class Model>
void same(const char* check, const Program& program, const Model& model) {
    if (!(program == model)) throw CheckFailed{check, say(program, ", not ", model)};
}

}  // namespace kestrel::testing
