// Plays one plan from the start of the program to its end, with checks after every event.
// After the trouble the line heals, and everything must come right.
#pragma once

#include <string>

#include "simulation/checks.h"
#include "simulation/plan.h"

namespace kestrel::testing {

struct Outcome {
    std::string failedCheck;  ///< empty: all held
    std::string detail;
    std::string ended;  ///< why the run ended early, where it did, by the rules of the program
    std::uint64_t hash = 0;
    Micros played = 0;
    Counts counts{};
};

Outcome play(const Plan& plan);

/// The same failure with less: faults, incidents and acts are dropped as long as the same check fails.
Plan shorten(const Plan& plan, const std::string& failedCheck);

}  // namespace kestrel::testing
