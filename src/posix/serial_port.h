// The serial control over a device file: 19200 baud, 8 data bits, no parity, 1 stop bit.
// A port that goes away is closed at once and told of once.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/serial_control.h"

namespace kestrel::posix {

class SerialPort : public SerialControl {
  public:
    /// Bytes that wait to be taken; what arrives beyond them is dropped.
    static constexpr std::size_t InputBufferSize = 1024;

    /// What the open port is told to the event loop by: its descriptor, or -1 when it is closed.
    using Watching = std::function<void(SerialPort& port, int descriptor)>;
    /// The device behind a port number; empty where there is none.
    using DeviceOf = std::function<std::string(int port)>;

    SerialPort(DeviceOf deviceOf, Watching watching);
    ~SerialPort() override { close(); }

    void CommPort(int port) override;
    bool PortOpen() const override { return descriptor_ >= 0; }
    void PortOpen(bool open) override;
    int InBufferCount() const override { return static_cast<int>(received_.size()); }
    Bytes Input() override { return std::exchange(received_, {}); }
    int CommEvent() const override { return CommEventReceive; }

    /// The descriptor has something to say. Takes what has arrived, and notices a loss. Raises no event.
    void collect();
    /// Raises the event that what was collected is worth.
    void tell();
    bool isLost() const { return lost_; }
    bool hasNews() const { return lost_ || arrived_; }

  protected:
    void write(const Bytes& bytes) override;

  private:
    void open();
    void close();

    DeviceOf deviceOf_;
    Watching watching_;
    int number_ = 1;
    int descriptor_ = -1;
    bool lost_ = false;
    bool arrived_ = false;  ///< since the last event
    Bytes received_;
};

/// Why the device cannot be opened, with the numbers of the serial control; what the system said is `error`.
[[noreturn]] void failToOpen(const std::string& device, int error);

}  // namespace kestrel::posix
