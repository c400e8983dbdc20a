// What the window costs beside the least that a window can be: start, memory, opening a page, a value that arrives.
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
constexpr double StartLimit = 1.5;
constexpr double OpeningLimit = 1.5;
constexpr double MemoryLimit = 1.5;
constexpr double ValueLimit = 1.5;
constexpr const char* StayForPages = "4000";

std::vector<double> numbersOf(const std::string& command, std::size_t count) {
    FILE* output = popen(command.c_str(), "r");
    std::vector<double> numbers;
    for (double number = 0; output && std::fscanf(output, "%lf", &number) == 1;) numbers.push_back(number);
    if (output) pclose(output);
    if (numbers.size() != count) throw std::runtime_error("no figures from: " + command);
    return numbers;
}

/// Microseconds to the first painted window, and resident kilobytes.
std::vector<double> started(const std::string& program, const std::string& stay = "0") {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto micros = std::chrono::duration_cast<std::chrono::microseconds>(now).count();
    return numbersOf("KESTREL_BENCH_START=" + std::to_string(micros) + " KESTREL_BENCH_STAY=" + stay + " " + program,
                     2);
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
        ownStart.push_back(started(program)[0]);
        emptyStart.push_back(started(empty)[0]);
    }
    std::printf("first painted window: program %.1f ms, empty frame %.1f ms\n", median(ownStart) / 1000,
                median(emptyStart) / 1000);
    bool holds = bench::atMost("start to first painted window, times empty frame",
                               median(ownStart) / median(emptyStart), StartLimit, "");
    const double ownMemory = started(withPages, StayForPages)[1];
    const double emptyMemory = started(empty, StayForPages)[1];
    std::printf("resident: program with two pages %.1f MiB, empty frame %.1f MiB\n", ownMemory / 1024,
                emptyMemory / 1024);
    holds &= bench::atMost("resident memory, times empty frame", ownMemory / emptyMemory, MemoryLimit, "");
    const std::vector<double> pages =
        numbersOf(std::string(KESTREL_PAGE_BENCH) + " --demo --directory " + KESTREL_INSTALLATION, 4);
    std::printf("opening: page %.2f ms, bare child window %.2f ms\n", pages[0] / 1000, pages[1] / 1000);
    holds &= bench::atMost("opening a page, times bare child window", pages[0] / pages[1], OpeningLimit, "");
    std::printf("with 25 pages open: value %.0f us, text of a label of fixed size %.0f us\n", pages[2], pages[3]);
    holds &= bench::atMost("a value that arrives, times such a text", pages[2] / pages[3], ValueLimit, "");
    return holds ? EXIT_SUCCESS : EXIT_FAILURE;
}
