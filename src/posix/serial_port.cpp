// The serial control over a device file.
#include "posix/serial_port.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include "language/port_words.h"
#include "platform/errors.h"
#include "posix/device_access.h"

namespace kestrel::posix {

namespace {

/// Raw bytes at the line's pace; a read gives what is there.
bool setLine(int descriptor) {
    termios line{};
    if (tcgetattr(descriptor, &line) != 0) return false;
    line.c_iflag = 0;
    line.c_oflag = 0;
    line.c_lflag = 0;
    line.c_cflag = CS8 | CREAD | CLOCAL;
    line.c_cc[VMIN] = 1;
    line.c_cc[VTIME] = 0;
    cfsetispeed(&line, B19200);
    cfsetospeed(&line, B19200);
    return tcsetattr(descriptor, TCSANOW, &line) == 0;
}

}  // namespace

void failToOpen(const std::string& device, int error) {
    const std::string of = device + ": ";
    if (error == ENOENT || error == ENXIO || error == ENODEV)
        throw RunTimeError(error_number::SerialBadPort, of + portWord(PortWord::NotThere));
    if (!isPermitted(device))
        throw RunTimeError(error_number::SerialNoPermission, of + portWord(PortWord::NoPermission) + groupHint(device));
    if (error == EBUSY || error == EWOULDBLOCK) {
        const std::string holder = holderOf(device);
        throw RunTimeError(
            error_number::SerialPortInUse,
            of + (holder.empty() ? portWord(PortWord::InUse) : portWord(PortWord::InUseBy) + " " + holder));
    }
    throw RunTimeError(error_number::SerialDevice, of + std::generic_category().message(error));
}

SerialPort::SerialPort(DeviceOf deviceOf, Watching watching)
    : deviceOf_(std::move(deviceOf)), watching_(std::move(watching)) {}

void SerialPort::CommPort(int port) {
    if (PortOpen()) throw RunTimeError(error_number::SerialFirst, "The port is open");
    number_ = port;
}

void SerialPort::PortOpen(bool wanted) {
    if (wanted && PortOpen()) throw RunTimeError(error_number::SerialPortInUse, "The port is already open");
    close();
    if (wanted) open();
}

/// A privileged user may open what others have taken for themselves, so the lock is asked for too.
void SerialPort::open() {
    const std::string device = deviceOf_(number_);
    const int opened = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (opened < 0) failToOpen(device, errno);
    descriptor_ = opened;
    const bool isOurs = flock(opened, LOCK_EX | LOCK_NB) == 0;
    if (!isOurs || ioctl(opened, TIOCEXCL) != 0 || !setLine(opened)) {
        const int error = errno;
        descriptor_ = -1;
        ::close(opened);
        failToOpen(device, error);
    }
    tcflush(opened, TCIOFLUSH);
    watching_(*this, opened);
}

/// What has not gone out by now never will, and must not hold up the closing.
void SerialPort::close() {
    lost_ = arrived_ = false;
    received_.clear();
    if (descriptor_ < 0) return;
    watching_(*this, -1);
    tcflush(descriptor_, TCIOFLUSH);
    ioctl(descriptor_, TIOCNXCL);
    ::close(std::exchange(descriptor_, -1));
}

void SerialPort::write(const Bytes& bytes) {
    if (lost_) return;
    if (descriptor_ < 0) throw RunTimeError(error_number::SerialNotOpen, "The port is not open");
    const ssize_t taken = ::write(descriptor_, bytes.data(), bytes.size());
    lost_ = taken < 0 && errno != EAGAIN && errno != EINTR;
}

void SerialPort::collect() {
    std::array<std::uint8_t, InputBufferSize> bytes;
    const ssize_t count = ::read(descriptor_, bytes.data(), bytes.size());
    if (count <= 0) {
        lost_ = lost_ || count == 0 || (errno != EAGAIN && errno != EINTR);
        return;
    }
    arrived_ = true;
    const auto room =
        static_cast<std::ptrdiff_t>(std::min(InputBufferSize - received_.size(), static_cast<std::size_t>(count)));
    received_.insert(received_.end(), bytes.begin(), bytes.begin() + room);
}

void SerialPort::tell() {
    if (lost_) {
        close();
        raiseLost();
    } else if (std::exchange(arrived_, false)) {
        raiseComm();
    }
}

}  // namespace kestrel::posix
