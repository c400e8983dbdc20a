// A desktop of a test's own.
#include "bus_session.h"

#include <QDBusMessage>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "accessible_node.h"

namespace kestrel::testing {

namespace {

constexpr int LongestStartMs = 60'000;
constexpr int LongestEndMs = 5'000;
constexpr const char* AccessibilityLauncher = "/usr/libexec/at-spi-bus-launcher";
constexpr const char* Connection = "kestrel-test-accessibility";

QString firstLineOf(QProcess& process) {
    while (!process.canReadLine())
        if (!process.waitForReadyRead(LongestStartMs)) throw std::runtime_error(process.program().toStdString());
    return QString::fromUtf8(process.readLine()).trimmed();
}

void end(QProcess& process) {
    if (process.state() == QProcess::NotRunning) return;
    process.terminate();
    if (process.waitForFinished(LongestEndMs)) return;
    process.kill();
    process.waitForFinished(LongestEndMs);
}

}  // namespace

BusSession::BusSession(const QStringList& arguments) : environment_(QProcessEnvironment::systemEnvironment()) {
    prepareDirectories();
    environment_.insert(QStringLiteral("DISPLAY"), u':' + startScreen());
    const QString sessionBus = startSessionBus();
    environment_.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), sessionBus);
    startAccessibility(sessionBus);
    startProgram(arguments);
}

BusSession::~BusSession() {
    QDBusConnection::disconnectFromBus(QString::fromLatin1(Connection));
    for (QProcess* each : {&program_, &accessibility_, &sessionBus_, &screen_}) end(*each);
}

/// The program's texts are English here, and sockets lie where they go with the test.
void BusSession::prepareDirectories() {
    namespace fs = std::filesystem;
    const fs::path installation = directory_.path().toStdString() + "/kestrel";
    fs::create_directory(installation);
    for (const auto& entry : fs::directory_iterator(KESTREL_INSTALLATION))
        if (entry.path().extension() == ".inx" || entry.path().extension() == ".lng")
            fs::copy(entry.path(), installation);
    std::ofstream(installation / "kestrel.ini") << "Com=1\r\nLingua=English\r\n";
    environment_.insert(QStringLiteral("XDG_RUNTIME_DIR"), directory_.path());
    environment_.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment_.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    // What the libraries of the screen keep until the end is not ours.
    environment_.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
}

QString BusSession::startScreen() {
    screen_.start(QStringLiteral("Xvfb"), {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                                           QStringLiteral("0"), QStringLiteral("1400x900x24")});
    return firstLineOf(screen_);
}

QString BusSession::startSessionBus() {
    sessionBus_.setProcessEnvironment(environment_);
    sessionBus_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
    return firstLineOf(sessionBus_);
}

void BusSession::startAccessibility(const QString& sessionBus) {
    accessibility_.setProcessEnvironment(environment_);
    accessibility_.start(QString::fromLatin1(AccessibilityLauncher), {QStringLiteral("--launch-immediately")});
    const QString name = QString::fromLatin1(Connection) + QStringLiteral("-session");
    const QDBusConnection session = QDBusConnection::connectToBus(sessionBus, name);
    const QDBusMessage question =
        QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                       QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    const QDBusMessage answer = session.call(question, QDBus::Block, LongestStartMs);
    if (answer.type() != QDBusMessage::ReplyMessage) throw std::runtime_error(answer.errorMessage().toStdString());
    bus_ = QDBusConnection::connectToBus(answer.arguments().constFirst().toString(), QString::fromLatin1(Connection));
    QDBusConnection::disconnectFromBus(name);
}

void BusSession::startProgram(const QStringList& arguments) {
    program_.setProcessEnvironment(environment_);
    program_.start(QStringLiteral(KESTREL_INSTALLATION "/kestrel"),
                   QStringList{QStringLiteral("--demo"), QStringLiteral("--directory"),
                               directory_.path() + QStringLiteral("/kestrel")} +
                       arguments);
    if (!program_.waitForStarted(LongestStartMs)) throw std::runtime_error("the program does not start");
}

QString BusSession::programOnBus() {
    const Node desktop{bus_, QStringLiteral("org.a11y.atspi.Registry"),
                       QStringLiteral("/org/a11y/atspi/accessible/root")};
    QElapsedTimer time;
    for (time.start(); !time.hasExpired(LongestStartMs) && isRunning(); QThread::msleep(50))
        for (const Node& application : desktop.children())
            if (!application.service.isEmpty() && application.name() == QStringLiteral("Kestrel"))
                return application.service;
    throw std::runtime_error("the program is not on the bus: " + complaints().toStdString());
}

QString BusSession::complaints() {
    program_.waitForReadyRead(1);
    return complaints_ += QString::fromUtf8(program_.readAllStandardError());
}

}  // namespace kestrel::testing
