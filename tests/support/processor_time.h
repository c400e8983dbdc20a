// Processor time that this process has used so far.
// For tests that say what the program may cost.
#pragma once

#include <sys/resource.h>

namespace kestrel::testing {

/// How many times longer than in use an act may take in this build.
#ifdef __SANITIZE_ADDRESS__
inline constexpr double BuildAllowance = 4;
#else
inline constexpr double BuildAllowance = 1;
#endif

inline double processorSeconds() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

}  // namespace kestrel::testing
