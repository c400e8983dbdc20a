// The serial control over a real port.
#include "qt/io/qt_serial_port.h"

#include <QFileInfo>
#include <QThread>
#include <algorithm>
#include <array>
#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include "qt/io/deliver.h"
#include "qt/io/port_trouble.h"
#include "qt/io/text.h"
#include "qt/window/words.h"

namespace kestrel::qt {

namespace {

/// What a link points to: programs find each other's locks by the device's real name.
QString realName(const std::string& device) {
    const QString real = QFileInfo(toQt(device)).canonicalFilePath();
    return real.isEmpty() ? toQt(device) : real;
}

/// How many bytes the device takes now. The toolkit's own way wakes the program once more for every frame.
qint64 writeAtOnce(QSerialPort& port, const char* first, qint64 size) {
#ifdef Q_OS_UNIX
    if (port.bytesToWrite() > 0) return 0;
    return std::max<qint64>(0, ::write(port.handle(), first, static_cast<std::size_t>(size)));
#else
    Q_UNUSED(port)
    Q_UNUSED(first)
    Q_UNUSED(size)
    return 0;
#endif
}

}  // namespace

QtSerialPort::QtSerialPort(Surroundings surroundings) : surroundings_(std::move(surroundings)) {
    port_.setBaudRate(QSerialPort::Baud19200);
    QObject::connect(&port_, &QSerialPort::readyRead, &port_, [this] {
        take();
        if (!collecting_) arrived();
    });
    QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                     [this](QSerialPort::SerialPortError error) { failed(error); });
}

QtSerialPort::~QtSerialPort() {
    close();
    surroundings_.onDestroy(*this);
}

void QtSerialPort::CommPort(int port) {
    if (state_ == State::Open) throw RunTimeError(error_number::SerialFirst, "The port is open");
    close();
    number_ = port;
}

void QtSerialPort::PortOpen(bool wanted) {
    if (wanted && state_ == State::Open) throw RunTimeError(error_number::SerialPortInUse, "The port is already open");
    close();
    if (wanted) open();
}

void QtSerialPort::open() {
    const std::string device = surroundings_.deviceOf(number_);
    if (device.empty())
        throw RunTimeError(error_number::SerialBadPort,
                           "Com" + std::to_string(number_) + ": " + word(Word::NoDevice).toStdString());
    port_.setPortName(realName(device));
    if (!port_.open(QIODevice::ReadWrite)) throw openingTrouble(device, port_);
    port_.clear();
    state_ = State::Open;
}

void QtSerialPort::close() {
    state_ = State::Closed;
    received_.clear();
    if (port_.isOpen()) port_.close();
}

void QtSerialPort::write(const Bytes& bytes) {
    if (state_ == State::Closed) throw RunTimeError(error_number::SerialNotOpen, "The port is not open");
    if (state_ == State::Lost) return;
    const auto* first = reinterpret_cast<const char*>(bytes.data());
    const auto size = static_cast<qint64>(bytes.size());
    const qint64 taken = writeAtOnce(port_, first, size);
    if (taken == size) return;
    port_.write(first + taken, size - taken);
    port_.flush();
}

void QtSerialPort::collect(int milliseconds) {
    if (state_ != State::Open) {
        QThread::msleep(static_cast<unsigned long>(milliseconds));
        return;
    }
    collecting_ = true;
    port_.waitForReadyRead(milliseconds);
    collecting_ = false;
    if (state_ == State::Lost) port_.close();
    if (!received_.empty())
        QMetaObject::invokeMethod(
            &port_, [this] { arrived(); }, Qt::QueuedConnection);
}

void QtSerialPort::take() {
    std::array<char, InputBufferSize> bytes;
    while (const auto count = static_cast<std::size_t>(std::max<qint64>(0, port_.read(bytes.data(), bytes.size())))) {
        const std::size_t room = std::min(InputBufferSize - received_.size(), count);
        received_.insert(received_.end(), bytes.begin(), bytes.begin() + room);
    }
}

void QtSerialPort::arrived() {
    if (!received_.empty()) deliver([this] { raiseComm(); });
}

void QtSerialPort::failed(QSerialPort::SerialPortError error) {
    const bool harmless = error == QSerialPort::NoError || error == QSerialPort::TimeoutError ||
                          error == QSerialPort::UnsupportedOperationError;
    if (harmless || state_ != State::Open) return;
    state_ = State::Lost;
    QMetaObject::invokeMethod(
        &port_, [this] { tellLoss(); }, Qt::QueuedConnection);
}

void QtSerialPort::tellLoss() {
    if (state_ != State::Lost) return;
    close();
    deliver([this] { raiseLost(); });
}

}  // namespace kestrel::qt
