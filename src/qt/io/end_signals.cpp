// Signals that ask the program to end.
#include "qt/io/end_signals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#endif

namespace kestrel::qt {

#ifdef Q_OS_UNIX

namespace {

std::array<int, 2> channel{-1, -1};

void tell(int /*signal*/) {
    const char byte = 0;
    [[maybe_unused]] const auto written = write(channel[1], &byte, 1);
}

void take(int number) {
    struct sigaction present {};
    if (sigaction(number, nullptr, &present) != 0 || present.sa_handler == SIG_IGN) return;
    struct sigaction action {};
    action.sa_handler = tell;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    sigaction(number, &action, nullptr);
}

}  // namespace

void onEndSignal(std::function<void()> handler) {
    if (pipe(channel.data()) != 0) return;
    for (const int end : channel) fcntl(end, F_SETFD, FD_CLOEXEC);
    auto* notifier = new QSocketNotifier(channel[0], QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier, call = std::move(handler)] {
        notifier->setEnabled(false);
        call();
    });
    for (const int number : {SIGHUP, SIGINT, SIGTERM}) take(number);
}

#else

void onEndSignal(std::function<void()> /*handler*/) {}

#endif

}  // namespace kestrel::qt
