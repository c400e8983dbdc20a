// The serial control over a real port.
// A port that goes away is closed at once and told of once; left open it would report its error without end.
#pragma once

#include <QSerialPort>
#include <functional>
#include <string>

#include "platform/serial_control.h"

namespace kestrel::qt {

class QtSerialPort : public SerialControl {
  public:
    /// Bytes that wait to be taken; what arrives beyond them is dropped.
    static constexpr std::size_t InputBufferSize = 1024;

    struct Surroundings {
        std::function<std::string(int)> deviceOf;      ///< of a port number; empty when there is none
        std::function<void(QtSerialPort&)> onDestroy;  ///< the control is going
    };

    explicit QtSerialPort(Surroundings surroundings);
    ~QtSerialPort() override;

    void CommPort(int port) override;
    bool PortOpen() const override { return state_ == State::Open; }
    void PortOpen(bool open) override;
    int InBufferCount() const override { return static_cast<int>(received_.size()); }
    Bytes Input() override { return std::exchange(received_, {}); }
    int CommEvent() const override { return CommEventReceive; }

    /// Waits, 1 ms or more, or less if bytes come; collects what arrives and raises no event meanwhile. Bytes that then
    /// stand unread raise the receive event from the event loop.
    void collect(int milliseconds);

  protected:
    void write(const Bytes& bytes) override;

  private:
    enum class State { Closed, Open, Lost };

    void open();
    void close();
    void take();
    void arrived();
    void failed(QSerialPort::SerialPortError error);
    void tellLoss();

    Surroundings surroundings_;
    QSerialPort port_;
    int number_ = 1;
    State state_ = State::Closed;
    bool collecting_ = false;
    Bytes received_;
};

}  // namespace kestrel::qt
