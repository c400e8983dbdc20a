// kestrel-board: the simulated machine on a pseudo-terminal, for the program, for people and for end-to-end tests.
// Time is the real one; between events the program sleeps.
#include <fcntl.h>
#include <sys/select.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <iostream>
#include <stdexcept>
#include <string>
#include <system_error>

#include "command_line/data_directory.h"
#include "program_version.h"
#include "simulator/board_options.h"
#include "simulator/commands.h"
#include "simulator/machine.h"

namespace {

using namespace kestrel::simulator;

constexpr const char* programName = "kestrel-board";

[[noreturn]] void failWith(const std::string& what) {
    throw std::runtime_error(what + ": " + std::generic_category().message(errno));
}

// One end of a pseudo-terminal; the PC opens the other end by its path.
//
// While no PC has that other end open, this program holds it open itself: otherwise the wait for input would return at
// once, over and over. The first bytes of a PC end the holding, so that its going away can be noticed.
class PseudoTerminal {
  public:
    explicit PseudoTerminal(std::filesystem::path link) : link_(std::move(link)) {}
    ~PseudoTerminal() { close(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    bool isOpen() const { return own_ >= 0; }
    int descriptor() const { return own_; }
    const std::string& path() const { return path_; }

    void open();
    void close();
    Bytes read();
    void write(const Bytes& bytes);

  private:
    void hold();
    void release();
    void placeLink() const;
    void removeLink() const;

    std::filesystem::path link_;
    std::string path_;
    int own_ = -1;
    int held_ = -1;
};

void PseudoTerminal::open() {
    own_ = posix_openpt(O_RDWR | O_NOCTTY);
    if (own_ < 0 || grantpt(own_) != 0 || unlockpt(own_) != 0) failWith("cannot open a pseudo-terminal");
    path_ = ptsname(own_);
    fcntl(own_, F_SETFL, O_NONBLOCK);
    hold();
    if (held_ < 0) failWith("cannot open " + path_);
    termios raw{};
    tcgetattr(held_, &raw);
    raw.c_iflag = 0;
    raw.c_oflag = 0;
    raw.c_lflag = 0;
    raw.c_cflag = CS8 | CREAD | CLOCAL;
    cfsetispeed(&raw, B19200);
    cfsetospeed(&raw, B19200);
    tcsetattr(held_, TCSANOW, &raw);
    placeLink();
}

void PseudoTerminal::close() {
    if (!isOpen()) return;
    removeLink();
    release();
    ::close(own_);
    own_ = -1;
}

void PseudoTerminal::hold() {
    if (held_ < 0) held_ = ::open(path_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
}

void PseudoTerminal::release() {
    if (held_ >= 0) ::close(held_);
    held_ = -1;
}

// What the PC sent. When the PC has gone, what it left unread goes too, as on a real port.
Bytes PseudoTerminal::read() {
    Bytes bytes(4096);
    const ssize_t count = ::read(own_, bytes.data(), bytes.size());
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (count > 0) {
        release();
    } else if (count == 0 || errno == EIO) {
        hold();
        tcflush(held_, TCIOFLUSH);
        // A PC that ended badly may have left the other end locked for everybody; only a new one helps then.
        if (held_ < 0) close();
    }
    return bytes;
}

// Bytes that nobody takes are lost, as they are on a wire.
void PseudoTerminal::write(const Bytes& bytes) {
    if (isOpen() && held_ < 0 && !bytes.empty() && ::write(own_, bytes.data(), bytes.size()) < 0 && errno == EIO)
        hold();
}

// The new link takes the place of an old one in one step, so that the path never leads nowhere.
void PseudoTerminal::placeLink() const {
    if (link_.empty()) return;
    std::error_code error;
    const auto status = std::filesystem::symlink_status(link_, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_symlink(status)) {
        throw std::runtime_error(link_.string() + " exists and is not a symbolic link");
    }
    const std::string aside = link_.string() + "." + std::to_string(getpid());
    if (symlink(path_.c_str(), aside.c_str()) != 0 || rename(aside.c_str(), link_.c_str()) != 0) {
        failWith("cannot make the link " + link_.string());
    }
}

void PseudoTerminal::removeLink() const {
    std::error_code error;
    if (!link_.empty() && std::filesystem::read_symlink(link_, error) == path_) std::filesystem::remove(link_, error);
}

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

volatile std::sig_atomic_t endWanted = 0;

// The signals that end the program are let through only while it waits, so that none is missed between two looks.
sigset_t catchSignals() {
    struct sigaction action {};
    action.sa_handler = [](int) { endWanted = 1; };
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        sigaction(number, &action, nullptr);
        sigaddset(&blocked, number);
    }
    std::signal(SIGPIPE, SIG_IGN);
    sigprocmask(SIG_BLOCK, &blocked, &before);
    return before;
}

class Program {
  public:
    explicit Program(const BoardOptions& options) : machine_(options.machine), terminal_(options.link) {
        if (!options.quiet) {
            machine_.onExchange = [](const Exchange& exchange) { std::cout << describe(exchange) << '\n'; };
        }
    }

    void run() {
        const sigset_t waitMask = catchSignals();
        terminal_.open();
        std::cout << terminal_.path() << std::endl;
        while (endWanted == 0) {
            terminal_.write(machine_.takeOutput(now()));
            followPort();
            std::cout.flush();
            if (!waitAndTake(waitMask)) return;
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
        if (ready < 0 && errno != EINTR) failWith("cannot wait for input");
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
    PseudoTerminal terminal_;
    Commands commands_;
};

DateTime localTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min};
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
