// Signals that ask a program to end.
#include "posix/end_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>

namespace kestrel::posix {

namespace {

constexpr std::array Numbers = {SIGHUP, SIGINT, SIGTERM};

volatile sig_atomic_t ends = 0;
std::array<int, 2> channel{-1, -1};

bool take(int number, void (*handler)(int), int flags) {
    struct sigaction present {};
    if (sigaction(number, nullptr, &present) != 0 || present.sa_handler == SIG_IGN) return false;
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    return sigaction(number, &action, nullptr) == 0;
}

}  // namespace

EndSignals::EndSignals() {
    ends = 0;
    sigset_t blocked;
    sigemptyset(&blocked);
    for (const int number : Numbers)
        if (take(
                number, [](int) { ends = ends + 1; }, 0))
            sigaddset(&blocked, number);
    signal(SIGPIPE, SIG_IGN);
    sigprocmask(SIG_BLOCK, &blocked, &before_);
}

EndSignals::~EndSignals() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

int EndSignals::wanted() { return ends; }

int endSignalDescriptor() {
    if (pipe(channel.data()) != 0) return -1;
    for (const int end : channel) fcntl(end, F_SETFD, FD_CLOEXEC);
    const auto tell = [](int) {
        const char byte = 0;
        [[maybe_unused]] const auto written = write(channel[1], &byte, 1);
    };
    for (const int number : Numbers) take(number, tell, static_cast<int>(SA_RESTART | SA_RESETHAND));
    return channel[0];
}

}  // namespace kestrel::posix
