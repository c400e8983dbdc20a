// What the real program makes of a serial line, on a pseudo-terminal with the simulated machine behind it: exchanges a
// second against what the rules allow, and processor time an exchange against a minimal loop side by side. Exit 1 when
// a limit is missed.
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "bench/figures.h"

namespace {

using namespace kestrel;
namespace fs = std::filesystem;

constexpr double TickSeconds = 0.040;
constexpr double WrapTicks = 3;  // a bank's end costs a tick of its own
constexpr double LeastShare = 0.97;
constexpr double CostLimit = 1.3;
constexpr int SettleSeconds = 8;
constexpr int MeasureSeconds = 30;
/// Every record is sent at every second pass, so that the line is as busy as polling can make it.
constexpr char PolledAtEverySecondPass = 1;
constexpr std::size_t RecordSize = 9;
constexpr std::size_t PeriodOffset = 3;

struct Child {
    pid_t id = -1;

    Child(const std::vector<std::string>& command, const std::string& outputFile) {
        std::vector<char*> arguments;
        for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 1, outputFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
        posix_spawn(&id, arguments[0], &actions, nullptr, arguments.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        kill(id, SIGTERM);
        waitpid(id, nullptr, 0);
    }

    /// On the processor until now; the scheduler counts it to the nanosecond.
    double processorSeconds() const {
        std::ifstream in("/proc/" + std::to_string(id) + "/schedstat");
        double nanoseconds = 0;
        in >> nanoseconds;
        return nanoseconds / 1e9;
    }
};

std::vector<std::string> linesOf(const fs::path& file) {
    std::vector<std::string> lines;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

void pause(int seconds) { std::this_thread::sleep_for(std::chrono::seconds(seconds)); }

/// The installation with every parameter polled, in a directory of its own.
fs::path busyInstallation(const fs::path& root) {
    const fs::path directory = root / "family" / "kestrel";
    fs::create_directories(directory);
    for (const auto& entry : fs::directory_iterator(KESTREL_INSTALLATION)) {
        const std::string ending = entry.path().extension().string();
        if (ending != ".inx" && ending != ".lng") continue;
        std::ifstream in(entry.path(), std::ios::binary);
        std::string bytes((std::istreambuf_iterator<char>(in)), {});
        const bool isParameterFile = entry.path().stem().string().size() > 5;
        if (ending == ".inx" && isParameterFile)
            for (std::size_t at = PeriodOffset; at < bytes.size(); at += RecordSize)
                bytes[at] = PolledAtEverySecondPass;
        std::ofstream(directory / entry.path().filename(), std::ios::binary) << bytes;
    }
    std::ofstream(directory / "kestrel.ini") << "Com=1\nLingua=English\n";
    return directory;
}

/// The bytes between the first brackets of a line of the machine's log, without blanks.
std::string requestIn(const std::string& line) {
    const auto from = line.find('[');
    std::string hex = line.substr(from + 1, line.find(']') - from - 1);
    std::erase(hex, ' ');
    return hex;
}

std::set<std::string> framesIn(const fs::path& log, std::size_t from) {
    const std::vector<std::string> lines = linesOf(log);
    std::set<std::string> frames;
    for (std::size_t i = from; i < lines.size(); ++i) frames.insert(requestIn(lines[i]));
    return frames;
}

/// A simulated machine on a pseudo-terminal of its own, which keeps a log of its exchanges.
class Line {
  public:
    Line(const fs::path& directory, const fs::path& port)
        : port_(port.string()),
          log_(port_ + ".log"),
          board_({KESTREL_BOARD, "--directory", directory.string(), "--link", port_}, log_.string()) {
        pause(1);
    }
    const std::string& port() const { return port_; }
    const fs::path& log() const { return log_; }
    std::size_t exchanges() const { return linesOf(log_).size(); }

  private:
    std::string port_;
    fs::path log_;
    Child board_;
};

/// What a program on a line does between two looks at it.
class Load {
  public:
    Load(const Child& program, const Line& line)
        : program_(program), line_(line), exchanges_(line.exchanges()), seconds_(program.processorSeconds()) {}
    double exchanges() const { return static_cast<double>(line_.exchanges() - exchanges_); }
    double microsPerExchange() const { return (program_.processorSeconds() - seconds_) * 1e6 / exchanges(); }

  private:
    const Child& program_;
    const Line& line_;
    std::size_t exchanges_;
    double seconds_;
};

}  // namespace

int main() {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const fs::path root = fs::temp_directory_path() / ("kestrel-bench-" + std::to_string(getpid()));
    const fs::path directory = busyInstallation(root);
    std::set<std::string> frames;
    double perSecond = 0;
    double programMicros = 0;
    double minimalMicros = 0;
    {
        const Line line(directory, root / "port");
        const Child kestrel({KESTREL_PROGRAM, "--directory", directory.string(), "--com", "1=" + line.port(), "--open",
                             "FrmTempi", "--open", "FrmTotali"},
                            "/dev/null");
        pause(SettleSeconds);
        const std::size_t settled = line.exchanges();
        pause(SettleSeconds);
        frames = framesIn(line.log(), settled);

        // Both at the same time, so that whatever else the machine does falls on both.
        const Line other(directory, root / "other");
        std::vector<std::string> command{KESTREL_MINIMAL_SERIAL, other.port()};
        command.insert(command.end(), frames.begin(), frames.end());
        const Child loop(command, "/dev/null");
        pause(1);
        const Load program(kestrel, line);
        const Load minimal(loop, other);
        pause(MeasureSeconds);
        programMicros = program.microsPerExchange();
        minimalMicros = minimal.microsPerExchange();
        perSecond = program.exchanges() / MeasureSeconds;
    }
    fs::remove_all(root);
    const auto polled = static_cast<double>(frames.size());
    // Two passes send each record once: one pass sends them all, and both have the ends of three banks.
    const double ceiling = polled / ((polled + 2 * WrapTicks) * TickSeconds);
    std::printf("%.0f records polled; at most %.2f exchanges a second by the rules\n", polled, ceiling);
    std::printf("processor time an exchange: program %.0f us, minimal loop %.0f us\n", programMicros, minimalMicros);
    bool holds = bench::atLeast("exchanges a second, of what the rules allow", perSecond / ceiling, LeastShare, "");
    holds &=
        bench::atMost("processor time an exchange, times minimal loop", programMicros / minimalMicros, CostLimit, "");
    return holds ? EXIT_SUCCESS : EXIT_FAILURE;
}
