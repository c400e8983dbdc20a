// The demo's serial port: to the link it must behave like a real one, down to a pulled plug.
// The machine is the one of the installation, in real time.
#include "demo/demo_port.h"

#include <gtest/gtest.h>

#include <QTest>

#include "platform/errors.h"
#include "qt/io/qt_platform.h"

namespace kestrel::qt {
namespace {

const Bytes Probe{0, 0, 0, 0, 0};

class DemoLine : public ::testing::Test {
  protected:
    DemoLine() {
        port.OnComm([this] { ++events; });
        port.OnLost([this] { ++losses; });
        port.PortOpen(true);
    }

    static std::shared_ptr<simulator::Machine> makeMachine() {
        simulator::MachineOptions options;
        options.directory = KESTREL_INSTALLATION;
        return std::make_shared<simulator::Machine>(options);
    }

    QtPlatform platform{{.directory = "/tmp", .devices = {}}};
    struct Standing {
        explicit Standing(QtPlatform& instance) { setPlatform(&instance); }
        ~Standing() { setPlatform(nullptr); }
    } standing{platform};
    std::shared_ptr<simulator::Machine> machine = makeMachine();
    DemoPort port{machine};
    int events = 0;
    int losses = 0;
};

TEST_F(DemoLine, AnswersFromTheEventLoop) {
    port.Output(Probe);
    EXPECT_EQ(port.InBufferCount(), 0) << "a reply takes its time";
    EXPECT_TRUE(QTest::qWaitFor([this] { return port.InBufferCount() == 2; }, 1000));
    EXPECT_GE(events, 1);
    const Bytes reply = port.Input();
    EXPECT_EQ(reply[0], reply[1]);
}

TEST_F(DemoLine, AnswersDuringABusyWaitWithoutAnyEvent) {
    port.Output(Probe);
    platform.BusyWait(50);
    EXPECT_EQ(port.Input().size(), 2U);
    EXPECT_EQ(events, 0);
}

TEST_F(DemoLine, ForgetsAReplyThatCameWhileClosed) {
    port.Output(Probe);
    port.PortOpen(false);
    QTest::qWait(40);
    port.PortOpen(true);
    EXPECT_TRUE(port.Input().empty());
}

TEST_F(DemoLine, TellsOnceThatItWasUnpluggedAndOpensWhenItIsBack) {
    machine->portLost();
    port.Output(Probe);
    EXPECT_TRUE(QTest::qWaitFor([this] { return losses > 0; }, 1000));
    EXPECT_FALSE(port.PortOpen());
    EXPECT_THROW(port.PortOpen(true), RunTimeError);
    EXPECT_THROW(port.Output(Probe), RunTimeError);
    machine->portBack();
    port.PortOpen(true);
    EXPECT_TRUE(port.PortOpen());
    EXPECT_EQ(losses, 1);
}

}  // namespace
}  // namespace kestrel::qt
