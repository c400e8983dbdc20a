// The display that windows are shown on, and the loop that brings its events.
#include "qt/io/display.h"

#include <QString>
#include <cstdio>
#include <cstdlib>

#include "platform/platform.h"

namespace kestrel::qt {

namespace {

constexpr const char* PlatformVariable = "QT_QPA_PLATFORM";
constexpr const char* InMemory = "offscreen";

bool hasDisplay() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", PlatformVariable})
        if (!qEnvironmentVariableIsEmpty(variable)) return true;
    return false;
#else
    return true;
#endif
}

QString firstWarning;

/// The fatal message itself only says that there is no platform; the warning before it says why.
void showFatal(QtMsgType type, const QMessageLogContext& /*where*/, const QString& text) {
    if (type == QtWarningMsg && firstWarning.isEmpty()) firstWarning = text;
    if (type == QtCriticalMsg) std::fprintf(stderr, "kestrel: %s\n", qPrintable(text));
    if (type != QtFatalMsg) return;
    const QString reason = firstWarning.isEmpty() ? text : firstWarning;
    std::fprintf(stderr, "kestrel: the display cannot be used: %s\n", qPrintable(reason.section(u'\n', 0, 0)));
    std::_Exit(EndedByTrouble);
}

}  // namespace

bool prepareDisplay(bool isNeeded) {
    if (hasDisplay()) return true;
    if (!isNeeded) return qputenv(PlatformVariable, InMemory);
    std::fprintf(stderr, "kestrel: there is no display (DISPLAY and WAYLAND_DISPLAY are not set)\n");
    return false;
}

void chooseEventLoop() { qputenv("QT_NO_GLIB", "1"); }

FatalMessagesInOneLine::FatalMessagesInOneLine() { qInstallMessageHandler(showFatal); }
FatalMessagesInOneLine::~FatalMessagesInOneLine() { qInstallMessageHandler(nullptr); }

}  // namespace kestrel::qt
