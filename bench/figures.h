// How a benchmark program reports: a figure, its unit, its limit, and whether it holds.
// Times are the median of several rounds, so that one disturbance does not decide.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace kestrel::bench {

/// Median time of a call in microseconds, over so many rounds of so many calls each.
template <class Call>
double medianMicros(int rounds, int calls, Call&& call) {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        const auto from = std::chrono::steady_clock::now();
        for (int i = 0; i < calls; ++i) call();
        const std::chrono::duration<double, std::micro> took = std::chrono::steady_clock::now() - from;
        times.push_back(took.count() / calls);
    }
    std::nth_element(times.begin(), times.begin() + rounds / 2, times.end());
    return times[static_cast<std::size_t>(rounds / 2)];
}

/// Prints one line and says whether the figure is within its limit.
inline bool atMost(const char* what, double figure, double limit, const char* unit) {
    const bool holds = figure <= limit;
    std::printf("%-58s %10.3f %-4s (at most %.3f) %s\n", what, figure, unit, limit, holds ? "ok" : "MISSED");
    return holds;
}

inline bool atLeast(const char* what, double figure, double limit, const char* unit) {
    const bool holds = figure >= limit;
    std::printf("%-58s %10.3f %-4s (at least %.3f) %s\n", what, figure, unit, limit, holds ? "ok" : "MISSED");
    return holds;
}

}  // namespace kestrel::bench
