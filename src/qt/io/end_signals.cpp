// Signals that ask the program to end.
#include "qt/io/end_signals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#ifdef Q_OS_UNIX
#include "posix/end_signals.h"
#endif

namespace kestrel::qt {

#ifdef Q_OS_UNIX

void onEndSignal(std::function<void()> handler) {
    const int descriptor = posix::endSignalDescriptor();
    if (descriptor < 0) return;
    auto* notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier, call = std::move(handler)] {
        notifier->setEnabled(false);
        call();
    });
}

#else

void onEndSignal(std::function<void()> /*handler*/) {}

#endif

}  // namespace kestrel::qt
