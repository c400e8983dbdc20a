// The serial control over a simulated machine in the same process, in real time.
// Bytes arrive from the event loop when the machine's line has carried them.
#pragma once

#include <chrono>
#include <memory>

#include "platform/serial_control.h"
#include "platform/timer.h"
#include "simulator/machine.h"

namespace kestrel {

class DemoPort : public SerialControl {
  public:
    /// The machine is switched on now; every port number leads to it. Needs the platform.
    explicit DemoPort(std::shared_ptr<simulator::Machine> machine);

    void CommPort(int port) override;
    bool PortOpen() const override { return isOpen_; }
    void PortOpen(bool open) override;
    int InBufferCount() const override { return static_cast<int>(received_.size()); }
    Bytes Input() override;
    int CommEvent() const override { return CommEventReceive; }

  protected:
    void write(const Bytes& bytes) override;

  private:
    simulator::Micros now() const;
    void serve();
    /// Takes over what has arrived by now; it is lost while the port is closed. True if anything came.
    bool collect();
    void waitForMachine();

    const std::chrono::steady_clock::time_point switchedOn_ = std::chrono::steady_clock::now();
    std::shared_ptr<simulator::Machine> machine_;
    std::unique_ptr<TimerBackend> next_;
    bool isOpen_ = false;
    Bytes received_;
};

}  // namespace kestrel
