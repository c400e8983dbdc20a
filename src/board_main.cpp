// kestrel-board: the simulated machine on a pseudo-terminal, for the program, for people and for end-to-end tests.
// Time is the real one; between events the program sleeps.
#include <sys/select.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <iostream>
#include <string>
#include <system_error>

#include "command_line/data_directory.h"
#include "posix/end_signals.h"
#include "posix/pseudo_terminal.h"
#include "posix/time_of_day.h"
#include "program_version.h"
#include "simulator/board_options.h"
#include "simulator/commands.h"
#include "simulator/machine.h"

namespace {

using namespace kestrel::simulator;

constexpr const char* programName = "kestrel-board";

// Commands from standard input, line by line.
class Commands {
  public:
    // Not from something like /dev/null or a file that a script left there: its end says nothing.
    Commands() {
        struct stat status {};
        const bool known = fstat(STDIN_FILENO, &status) == 0;
        endCounts_ = known && (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode) || isatty(STDIN_FILENO) != 0);
        open_ = known;
    }

    // Whether they can be read now: a program in the background of a terminal would be stopped for trying.
    bool isOpen() const {
        const pid_t foreground = tcgetpgrp(STDIN_FILENO);
        return open_ && (foreground < 0 || foreground == getpgrp());
    }

    // Carries out what has come; false when the program is to end.
    bool takeInput(Machine& machine) {
        char buffer[1024];
        const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) return true;
        if (count <= 0) {
            open_ = false;
            return !endCounts_;
        }
        pending_.append(buffer, static_cast<std::size_t>(count));
        for (std::size_t end; (end = pending_.find('\n')) != std::string::npos;) {
            const std::string line = pending_.substr(0, end);
            pending_.erase(0, end + 1);
            if (!run(machine, line)) return false;
        }
        return true;
    }

  private:
    static bool run(Machine& machine, const std::string& line) {
        if (line == "quit") return false;
        try {
            const std::string answer = runCommand(machine, line);
            if (!answer.empty()) std::cout << answer << '\n';
        } catch (const kestrel::BadOption& error) {
            std::cerr << programName << ": " << error.what() << std::endl;
        }
        return true;
    }

    std::string pending_;
    bool open_ = true;
    bool endCounts_ = true;
};

class Program {
  public:
    explicit Program(const BoardOptions& options) : machine_(options.machine), terminal_(options.link) {
        if (!options.quiet) {
            machine_.onExchange = [](const Exchange& exchange) { std::cout << describe(exchange) << '\n'; };
        }
    }

    void run() {
        const kestrel::posix::EndSignals signals;
        terminal_.open();
        std::cout << terminal_.path() << std::endl;
        while (kestrel::posix::EndSignals::wanted() == 0) {
            terminal_.write(machine_.takeOutput(now()));
            followPort();
            std::cout.flush();
            if (!waitAndTake(signals.whileWaiting())) return;
        }
    }

  private:
    Micros now() const {
        const auto passed = std::chrono::steady_clock::now() - start_;
        return std::chrono::duration_cast<std::chrono::microseconds>(passed).count();
    }

    void followPort() {
        if (machine_.portOpen() == terminal_.isOpen()) return;
        if (terminal_.isOpen()) {
            terminal_.close();
        } else {
            terminal_.open();
            std::cout << "port " << terminal_.path() << '\n';
        }
    }

    // False when the program is to end.
    bool waitAndTake(const sigset_t& waitMask) {
        fd_set readable;
        FD_ZERO(&readable);
        if (commands_.isOpen()) FD_SET(STDIN_FILENO, &readable);
        if (terminal_.isOpen()) FD_SET(terminal_.descriptor(), &readable);
        timespec timeout{};
        const auto next = machine_.nextEvent();
        if (next) {
            const Micros left = std::max<Micros>(*next - now(), 0);
            timeout.tv_sec = static_cast<std::time_t>(left / second);
            timeout.tv_nsec = static_cast<long>(left % second) * 1000;
        }
        const int highest = terminal_.isOpen() ? terminal_.descriptor() : STDIN_FILENO;
        const int ready = pselect(highest + 1, &readable, nullptr, nullptr, next ? &timeout : nullptr, &waitMask);
        if (ready < 0 && errno != EINTR)
            throw std::system_error(errno, std::generic_category(), "cannot wait for input");
        if (ready <= 0) return true;
        if (terminal_.isOpen() && FD_ISSET(terminal_.descriptor(), &readable)) {
            const Bytes bytes = terminal_.read();
            if (!bytes.empty()) machine_.send(now(), bytes);
        }
        if (!FD_ISSET(STDIN_FILENO, &readable)) return true;
        machine_.advance(now());  // what is ordered happens now, not when the line was last heard
        return commands_.takeInput(machine_);
    }

    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    Machine machine_;
    kestrel::posix::PseudoTerminal terminal_;
    Commands commands_;
};

DateTime localTime() {
    const std::tm now = kestrel::posix::timeOfDay();
    return {now.tm_year + 1900, now.tm_mon + 1, now.tm_mday, now.tm_hour, now.tm_min};
}

}  // namespace

int main(int argc, char** argv) {
    BoardOptions options;
    try {
        options = parseBoardOptions({argv + 1, argv + argc});
    } catch (const kestrel::BadOption& error) {
        std::cerr << programName << ": " << error.what() << '\n';
        return kestrel::EndedByBadOption;
    }
    if (options.help || options.version) {
        std::cout << (options.help ? helpText(boardText())
                                   : std::string(programName) + " " + kestrel::ProgramVersion + "\n");
        return 0;
    }
    options.machine.clock = localTime();
    if (options.machine.directory.empty()) options.machine.directory = kestrel::dataDirectory(kestrel::ownExecutable());
    try {
        Program(options).run();
    } catch (const std::exception& error) {
        std::cerr << programName << ": " << error.what() << '\n';
        return 1;
    }
    return 0;
}
