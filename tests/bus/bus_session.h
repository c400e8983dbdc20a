// A desktop of a test's own: a screen in memory, a session bus, the accessibility bus, and the program in its demo.
// Each is a process that the test starts and ends.
#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

namespace kestrel::testing {

class BusSession {
  public:
    /// Starts all of it, and the program with these arguments beside those of the demo; throws where one does not come.
    explicit BusSession(const QStringList& arguments);
    ~BusSession();
    BusSession(const BusSession&) = delete;
    BusSession& operator=(const BusSession&) = delete;

    const QDBusConnection& bus() const { return bus_; }
    /// The program's name on the accessibility bus; waits until it is there.
    QString programOnBus();
    bool isRunning() { return program_.state() == QProcess::Running && !program_.waitForFinished(0); }
    /// What the program has said on standard error so far.
    QString complaints();

  private:
    void prepareDirectories();
    QString startScreen();
    QString startSessionBus();
    void startAccessibility(const QString& sessionBus);
    void startProgram(const QStringList& arguments);

    QTemporaryDir directory_;
    QProcessEnvironment environment_;
    QProcess screen_, sessionBus_, accessibility_, program_;
    QDBusConnection bus_{QString()};
    QString complaints_;
};

}  // namespace kestrel::testing
