// What kestrelctl makes of a serial line, on a pseudo-terminal with the simulated machine behind it: exchanges a second
// against what the rules allow, processor time an exchange against a plain client of another protocol side by side,
// memory and start. Exit 1 when a limit is missed.
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

#include "bench/figures.h"

namespace {

using namespace kestrel;
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr double TickSeconds = 0.040;
constexpr double LeastShare = 0.98;
constexpr double CostLimit = 1.2;
constexpr double MemoryLimit = 12;
constexpr double StartLimit = 10;
constexpr double RestMilliseconds = 5;  ///< in which the link listens before its first question
constexpr int Starts = 25;              ///< the best of which counts: others use the computer too
constexpr int MeasureSeconds = 20;

pid_t start(const std::vector<std::string>& command, const std::string& output) {
    std::vector<char*> arguments;
    for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t id = -1;
    if (posix_spawn(&id, arguments[0], &actions, nullptr, arguments.data(), environ) != 0) std::exit(EXIT_FAILURE);
    posix_spawn_file_actions_destroy(&actions);
    return id;
}

void end(pid_t id) {
    kill(id, SIGTERM);
    waitpid(id, nullptr, 0);
}

/// On the processor until now, to the nanosecond.
double processorMicros(pid_t id) {
    double nanoseconds = 0;
    std::ifstream("/proc/" + std::to_string(id) + "/schedstat") >> nanoseconds;
    return nanoseconds / 1e3;
}

double mostMemoryMiB(pid_t id) {
    std::ifstream in("/proc/" + std::to_string(id) + "/status");
    for (std::string word; in >> word;)
        if (word == "VmHWM:") {
            double kibibytes = 0;
            in >> kibibytes;
            return kibibytes / 1024;
        }
    return 0;
}

/// Seconds at which the machine heard the reads of parameters, in its log.
std::vector<double> readsIn(const fs::path& log) {
    std::vector<double> times;
    std::ifstream in(log);
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        double time = 0;
        std::string board, direction, subject;
        if (words >> time >> board >> direction >> subject && direction == "read" && subject != "identity" &&
            subject != "at")
            times.push_back(time);
    }
    return times;
}

/// How many exchanges a plain client has told of.
int lastNumberIn(const fs::path& file) {
    int number = 0;
    std::ifstream in(file);
    for (int next = 0; in >> next;) number = next;
    return number;
}

/// From the start of the process to its first byte on the line, in milliseconds.
double startMilliseconds() {
    const int line = posix_openpt(O_RDWR | O_NOCTTY);
    if (line < 0 || grantpt(line) != 0 || unlockpt(line) != 0) return 1e9;
    const auto from = Clock::now();
    const pid_t id = start({KESTREL_CTL, "identify", "--port", ptsname(line)}, "/dev/null");
    pollfd arrival{line, POLLIN, 0};
    while (poll(&arrival, 1, 5000) > 0 && (arrival.revents & POLLIN) == 0) std::this_thread::yield();
    const std::chrono::duration<double, std::milli> took = Clock::now() - from;
    end(id);
    close(line);
    return took.count();
}

}  // namespace

int main() {
    const fs::path root = fs::temp_directory_path() / ("kestrel-ctl-bench-" + std::to_string(getpid()));
    fs::create_directories(root);
    const std::string port = (root / "port").string();
    const fs::path log = root / "log";
    const pid_t board = start({KESTREL_BOARD, "--still", "--link", port}, log.string());
    std::this_thread::sleep_for(std::chrono::seconds(1));
    const pid_t ctl = start({KESTREL_CTL, "read", (root / "file").string(), "--port", port}, "/dev/null");
    std::this_thread::sleep_for(std::chrono::seconds(2));

    // Both at the same time, so that whatever else the computer does falls on both.
    const pid_t plain = start({KESTREL_MODBUS_CLIENT}, (root / "plain").string());
    std::this_thread::sleep_for(std::chrono::seconds(1));
    const double before = processorMicros(ctl);
    const double plainBefore = processorMicros(plain);
    const std::size_t first = readsIn(log).size();
    const int plainFirst = lastNumberIn(root / "plain");
    std::this_thread::sleep_for(std::chrono::seconds(MeasureSeconds));
    const double micros = (processorMicros(ctl) - before) / static_cast<double>(readsIn(log).size() - first);
    const double plainMicros = (processorMicros(plain) - plainBefore) / (lastNumberIn(root / "plain") - plainFirst);
    end(plain);
    const double memory = mostMemoryMiB(ctl);
    waitpid(ctl, nullptr, 0);
    end(board);

    const std::vector<double> times = readsIn(log);
    const auto count = static_cast<double>(times.size());
    // One pass over the three banks; the end of a bank costs a tick.
    const double shortest = (count - 1 + 2) * TickSeconds;
    std::vector<double> starts;
    for (int i = 0; i < Starts; ++i) starts.push_back(startMilliseconds());
    fs::remove_all(root);

    std::printf("%.0f exchanges; processor time an exchange: kestrelctl %.0f us, plain client %.0f us\n", count, micros,
                plainMicros);
    bool holds = bench::atLeast("exchanges a second, of what the rules allow",
                                shortest / (times.back() - times.front()), LeastShare, "");
    holds &= bench::atMost("processor time an exchange, times plain client", micros / plainMicros, CostLimit, "");
    holds &= bench::atMost("most memory", memory, MemoryLimit, "MiB");
    holds &= bench::atMost("start to the first byte, but for the rest of the line",
                           *std::ranges::min_element(starts) - RestMilliseconds, StartLimit, "ms");
    return holds ? EXIT_SUCCESS : EXIT_FAILURE;
}
