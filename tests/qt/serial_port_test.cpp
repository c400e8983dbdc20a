// The real serial port: what a technician sees when it cannot be opened, and what happens when it goes away.
// The line is a pseudo-terminal; the program's side is the control as the link uses it.
#include "qt/io/qt_serial_port.h"

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>
#include <QTimer>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "platform/errors.h"
#include "qt/io/port_devices.h"
#include "qt/io/qt_platform.h"
#include "shell/session.h"
#include "support/processor_time.h"

namespace kestrel {
namespace {

using qt::QtPlatform;
using qt::QtSerialPort;
using testing::processorSeconds;

/// The board's side of a pseudo-terminal whose other side the program takes for a serial port.
class PseudoTerminal {
  public:
    PseudoTerminal() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
        if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) ADD_FAILURE() << "no pseudo-terminal";
        termios settings{};
        tcgetattr(master_, &settings);
        cfmakeraw(&settings);
        tcsetattr(master_, TCSANOW, &settings);
        device_ = ptsname(master_);
    }
    ~PseudoTerminal() { unplug(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    const std::string& device() const { return device_; }
    /// How many bytes fitted.
    ssize_t send(const std::string& bytes) const { return ::write(master_, bytes.data(), bytes.size()); }
    /// What the program has sent and has not been read yet.
    std::string received() const {
        std::array<char, 4096> buffer{};
        const ssize_t count = ::read(master_, buffer.data(), buffer.size());
        return count > 0 ? std::string(buffer.data(), static_cast<std::size_t>(count)) : std::string();
    }
    /// What unplugging an adapter is to the program.
    void unplug() {
        if (master_ >= 0) ::close(master_);
        master_ = -1;
    }

  private:
    int master_ = -1;
    std::string device_;
};

Bytes bytesOf(const std::string& text) { return {text.begin(), text.end()}; }

/// Number and text of the trouble; empty when the port was opened.
std::string openingTrouble(SerialControl& port) {
    try {
        port.PortOpen(true);
        return "";
    } catch (const RunTimeError& error) {
        EXPECT_FALSE(port.PortOpen());
        return std::to_string(error.number()) + " " + error.what();
    }
}

std::string expectedTrouble(int number, const std::string& text) { return std::to_string(number) + " " + text; }

class SerialPort : public ::testing::Test {
  protected:
    SerialPort() {
        std::filesystem::create_symlink(line.device(), link);
        setPlatform(&platform);
        port = platform.makeSerialControl();
        port->CommPort(1);
        port->OnComm([this] {
            ++events;
            const Bytes bytes = port->Input();
            taken.insert(taken.end(), bytes.begin(), bytes.end());
        });
        port->OnLost([this] {
            ++losses;
            openWhenTold = port->PortOpen();
        });
    }
    ~SerialPort() override {
        port.reset();
        setPlatform(nullptr);
    }

    PseudoTerminal line;
    QTemporaryDir directory;
    const std::string link = directory.filePath(QStringLiteral("port")).toStdString();
    Session session;
    QtPlatform platform{{.directory = "/tmp", .devices = {{1, line.device()}, {3, link}}}};
    std::unique_ptr<SerialControl> port;
    int events = 0;
    int losses = 0;
    bool openWhenTold = true;
    Bytes taken;
};

TEST_F(SerialPort, SendsAtOnceAndTellsOfWhatArrives) {
    port->PortOpen(true);
    port->Output({1, 2, 3});
    EXPECT_EQ(line.received(), "\1\2\3") << "a frame must not wait for the event loop";
    line.send("abc");
    EXPECT_TRUE(QTest::qWaitFor([this] { return taken == bytesOf("abc"); }, 500));
    EXPECT_GE(events, 1);
}

TEST_F(SerialPort, CollectsDuringABusyWaitWithoutAnyEvent) {
    port->PortOpen(true);
    line.send("ab");
    QElapsedTimer clock;
    clock.start();
    platform.BusyWait(60);
    EXPECT_GE(clock.nsecsElapsed(), 60'000'000);
    EXPECT_EQ(events, 0);
    EXPECT_EQ(port->Input(), bytesOf("ab"));
    QCoreApplication::processEvents();
    EXPECT_EQ(events, 0) << "bytes that were taken raise nothing afterwards";
    line.send("x");
    platform.BusyWait(30);
    EXPECT_TRUE(QTest::qWaitFor([this] { return taken == bytesOf("x"); }, 500)) << "what is left unread is told of";
}

TEST_F(SerialPort, LeavesTheWindowAliveUnderAnEndlessStream) {
    port->OnComm([this] { ++events; });
    port->PortOpen(true);
    std::atomic<bool> isOn = true;
    std::thread stream([&] {
        while (isOn) line.send(std::string(256, 'x'));
    });
    QElapsedTimer sinceBeat;
    qint64 longest = 0;
    QTimer heart;
    QObject::connect(&heart, &QTimer::timeout, &heart, [&] { longest = std::max(longest, sinceBeat.restart()); });
    sinceBeat.start();
    heart.start(5);
    QTest::qWait(250);
    isOn = false;
    stream.join();
    EXPECT_GT(events, 0);
    EXPECT_LT(longest, 100) << "ms between two events of the window";
    EXPECT_EQ(port->InBufferCount(), static_cast<int>(QtSerialPort::InputBufferSize));
}

TEST_F(SerialPort, ForgetsWhatStoodUnreadWhenReopened) {
    port->OnComm({});
    port->PortOpen(true);
    line.send("old");
    QTest::qWait(10);
    ASSERT_EQ(port->InBufferCount(), 3);
    line.send("older");  // stands in the system, not yet read by the program
    port->PortOpen(false);
    port->PortOpen(true);
    QTest::qWait(10);
    EXPECT_EQ(port->InBufferCount(), 0);
}

TEST_F(SerialPort, TellsOnceAndCheaplyThatTheLineIsGone) {
    port->PortOpen(true);
    QCoreApplication::processEvents();
    line.unplug();
    const double before = processorSeconds();
    QTest::qWait(300);
    EXPECT_LT(processorSeconds() - before, 0.03) << "of 0.3 s";
    EXPECT_EQ(losses, 1);
    EXPECT_FALSE(openWhenTold);
    EXPECT_THROW(port->Output({1}), RunTimeError) << "a lost port takes nothing more";
}

TEST_F(SerialPort, DoesNotSpinWhenTheLineGoesDuringABusyWait) {
    port->PortOpen(true);
    line.unplug();
    const double before = processorSeconds();
    platform.BusyWait(200);
    EXPECT_LT(processorSeconds() - before, 0.03);
    EXPECT_TRUE(port->Input().empty());
    EXPECT_EQ(losses, 0) << "no event during the wait";
    QCoreApplication::processEvents();
    EXPECT_EQ(losses, 1);
}

TEST_F(SerialPort, SaysNothingOfALossOnceAnotherPortIsChosen) {
    port->PortOpen(true);
    EXPECT_THROW(port->CommPort(3), RunTimeError) << "not while it is open";
    line.unplug();
    platform.BusyWait(20);
    EXPECT_NO_THROW(port->CommPort(3));
    QTest::qWait(20);
    EXPECT_EQ(losses, 0);
}

TEST_F(SerialPort, IsUsedByOneAtATimeWhateverItIsCalled) {
    port->PortOpen(true);
    const auto second = platform.makeSerialControl();
    second->CommPort(3);
    EXPECT_EQ(openingTrouble(*second),
              expectedTrouble(error_number::SerialPortInUse, link + ": in use by another program"));
    const pid_t holder = fork();  // which has all that is open here
    if (holder == 0) pause();
    std::string name;
    std::getline(std::ifstream("/proc/" + std::to_string(holder) + "/comm"), name);
    EXPECT_EQ(openingTrouble(*second),
              expectedTrouble(error_number::SerialPortInUse,
                              link + ": in use by " + name + " (" + std::to_string(holder) + ")"));
    kill(holder, SIGKILL);
    waitpid(holder, nullptr, 0);
    port->PortOpen(false);
    EXPECT_EQ(openingTrouble(*second), "");
}

TEST(UnopenablePort, SaysWhy) {
    const Session session;
    QTemporaryFile forbidden;
    ASSERT_TRUE(forbidden.open());
    ASSERT_TRUE(forbidden.setPermissions(QFile::ReadGroup | QFile::WriteGroup));
    const bool isSuperuser = geteuid() == 0;
    const group* const terminals = getgrnam("tty");
    if (isSuperuser && terminals) {
        ASSERT_EQ(fchown(forbidden.handle(), 0, terminals->gr_gid), 0);
    }
    const std::string path = forbidden.fileName().toStdString();
    const std::string group = QFileInfo(forbidden).group().toStdString();
    QtPlatform platform({.directory = "/tmp", .devices = {{1, "/dev/ttyKestrel0"}, {2, "/dev/null"}, {3, path}}});
    const auto port = platform.makeSerialControl();
    port->CommPort(1);
    EXPECT_EQ(openingTrouble(*port), expectedTrouble(error_number::SerialBadPort, "/dev/ttyKestrel0: not there"));
    port->CommPort(2);
    EXPECT_TRUE(openingTrouble(*port).starts_with(expectedTrouble(error_number::SerialDevice, "/dev/null: ")));
    port->CommPort(3);
    const pid_t user = fork();  // who has no right beyond the permissions
    if (user == 0) {
        constexpr uid_t Nobody = 65534;
        if (isSuperuser && (setgroups(0, nullptr) != 0 || setgid(Nobody) != 0 || setuid(Nobody) != 0)) _exit(1);
        const std::string expected =
            expectedTrouble(error_number::SerialNoPermission, path + ": no permission; needs the group " + group +
                                                                  ": sudo usermod -aG " + group + " " +
                                                                  getpwuid(geteuid())->pw_name + ", then log in again");
        const std::string said = openingTrouble(*port);
        if (said != expected) fprintf(stderr, "%s\nnot %s\n", said.c_str(), expected.c_str());
        _exit(said == expected ? 0 : 1);
    }
    int status = -1;
    waitpid(user, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST(PortDevices, GiveNamedDevicesFirstAndKeepWhatTheyGave) {
    using Devices = std::vector<std::string>;
    qt::PortDevices ports({{2, "/dev/named"}});
    const auto deviceOf = [&](int port, const Devices& present) { return ports.device(port, [&] { return present; }); };
    EXPECT_EQ(deviceOf(1, {"/dev/usb0", "/dev/named", "/dev/usb1"}), "/dev/usb0");
    EXPECT_EQ(deviceOf(2, {}), "/dev/named");
    EXPECT_EQ(deviceOf(3, {"/dev/usb1"}), "/dev/usb1") << "a device is given once";
    EXPECT_EQ(deviceOf(1, {"/dev/usb1"}), "/dev/usb0") << "unplugging one adapter moves no other";
    EXPECT_EQ(deviceOf(4, {"/dev/usb0", "/dev/usb1"}), "");
    EXPECT_EQ(deviceOf(4, {"/dev/new", "/dev/newer"}), "/dev/new") << "an adapter that comes later gets a free port";
}

}  // namespace
}  // namespace kestrel
