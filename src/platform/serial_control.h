// The serial control: one port at 19200 baud, 8 data bits, no parity, 1 stop bit.
// Failures are run-time errors with the control's numbers, 8000 to 8021.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace kestrel {

using Bytes = std::vector<std::uint8_t>;

/// The value of CommEvent that says that bytes have been received.
inline constexpr int CommEventReceive = 2;
inline constexpr int CommEventClearToSend = 3;
inline constexpr int CommEventCarrier = 5;

/// One serial port; abstract because it is a device, a machine in the process, or a test's line.
class SerialControl {
  public:
    virtual ~SerialControl() = default;

    /// Number of the port, 1 to 4. Not while the port is open.
    virtual void CommPort(int port) = 0;
    virtual bool PortOpen() const = 0;
    /// Opens or closes; closing drops what stands unread and unsent. The error's text names the device and says
    /// whether it is missing, in use or not permitted.
    virtual void PortOpen(bool open) = 0;
    /// Bytes that arrived and have not been taken.
    virtual int InBufferCount() const = 0;
    /// Takes all bytes that have arrived.
    virtual Bytes Input() = 0;
    /// What the event that is being raised is about: CommEventReceive and its like.
    virtual int CommEvent() const = 0;

    /// Sends. A byte that came before a request cannot be its answer, so what stands unread is dropped first.
    void Output(const Bytes& bytes) {
        Input();
        write(bytes);
    }

    /// Raised for every arrival of bytes.
    void OnComm(std::function<void()> handler) { onComm_ = std::move(handler); }
    /// Raised once when the port goes away under the program; it is closed by then.
    void OnLost(std::function<void()> handler) { onLost_ = std::move(handler); }

  protected:
    virtual void write(const Bytes& bytes) = 0;
    void raiseComm() const {
        if (onComm_) onComm_();
    }
    void raiseLost() const {
        if (onLost_) onLost_();
    }

  private:
    std::function<void()> onComm_;
    std::function<void()> onLost_;
};

}  // namespace kestrel
