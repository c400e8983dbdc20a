// What the window costs beside the least that a window can be: start, memory, opening a page.
// Runs the program and its counterpart in turn and compares medians. Exit status 1 when a limit is missed.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "bench/figures.h"

namespace {

using namespace kestrel;

constexpr int Rounds = 11;
constexpr double StartLimit = 2.0;
constexpr double OpeningLimit = 2.0;
constexpr double MemoryLimit = 1.5;
constexpr const char* StayForPages = "4000";

struct Pair {
    double first = 0;
    double second = 0;
};

Pair twoNumbersOf(const std::string& command) {
    FILE* output = popen(command.c_str(), "r");
    Pair numbers;
    const int found = output ? std::fscanf(output, "%lf %lf", &numbers.first, &numbers.second) : 0;
    if (output) pclose(output);
    if (found != 2) throw std::runtime_error("no figures from: " + command);
    return numbers;
}

/// Microseconds to the first painted window, and resident kilobytes.
Pair started(const std::string& program, const std::string& stay = "0") {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto micros = std::chrono::duration_cast<std::chrono::microseconds>(now).count();
    return twoNumbersOf("KESTREL_BENCH_START=" + std::to_string(micros) + " KESTREL_BENCH_STAY=" + stay + " " +
                        program);
}

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

}  // namespace

int main() {
    const std::string program = std::string(KESTREL_START_BENCH) + " --demo --directory " + KESTREL_INSTALLATION;
    const std::string withPages = program + " --open FrmTempi --open FrmTotali";
    const std::string empty = KESTREL_EMPTY_FRAME;
    std::vector<double> ownStart;
    std::vector<double> emptyStart;
    for (int i = 0; i < Rounds; ++i) {
        ownStart.push_back(started(program).first);
        emptyStart.push_back(started(empty).first);
    }
    std::printf("first painted window: program %.1f ms, empty frame %.1f ms\n", median(ownStart) / 1000,
                median(emptyStart) / 1000);
    bool holds = bench::atMost("start to first painted window, times empty frame",
                               median(ownStart) / median(emptyStart), StartLimit, "");
    const double ownMemory = started(withPages, StayForPages).second;
    const double emptyMemory = started(empty, StayForPages).second;
    std::printf("resident: program with two pages %.1f MiB, empty frame %.1f MiB\n", ownMemory / 1024,
                emptyMemory / 1024);
    holds &= bench::atMost("resident memory, times empty frame", ownMemory / emptyMemory, MemoryLimit, "");
    const Pair opening = twoNumbersOf(std::string(KESTREL_PAGE_BENCH) + " --demo --directory " + KESTREL_INSTALLATION);
    std::printf("opening: page %.2f ms, bare child window %.2f ms\n", opening.first / 1000, opening.second / 1000);
    holds &= bench::atMost("opening a page, times bare child window", opening.first / opening.second, OpeningLimit, "");
    return holds ? EXIT_SUCCESS : EXIT_FAILURE;
}
