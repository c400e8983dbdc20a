// One end of a pseudo-terminal.
#include "posix/pseudo_terminal.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace kestrel::posix {

namespace {

[[noreturn]] void failWith(const std::string& what) {
    throw std::runtime_error(what + ": " + std::generic_category().message(errno));
}

}  // namespace

void PseudoTerminal::open() {
    own_ = posix_openpt(O_RDWR | O_NOCTTY);
    if (own_ < 0 || grantpt(own_) != 0 || unlockpt(own_) != 0) failWith("cannot open a pseudo-terminal");
    path_ = ptsname(own_);
    fcntl(own_, F_SETFL, O_NONBLOCK);
    hold();
    if (held_ < 0) failWith("cannot open " + path_);
    termios raw{};
    tcgetattr(held_, &raw);
    raw.c_iflag = 0;
    raw.c_oflag = 0;
    raw.c_lflag = 0;
    raw.c_cflag = CS8 | CREAD | CLOCAL;
    cfsetispeed(&raw, B19200);
    cfsetospeed(&raw, B19200);
    tcsetattr(held_, TCSANOW, &raw);
    placeLink();
}

void PseudoTerminal::close() {
    if (!isOpen()) return;
    removeLink();
    release();
    ::close(own_);
    own_ = -1;
}

void PseudoTerminal::hold() {
    if (held_ < 0) held_ = ::open(path_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
}

void PseudoTerminal::release() {
    if (held_ >= 0) ::close(held_);
    held_ = -1;
}

Bytes PseudoTerminal::read() {
    Bytes bytes(4096);
    const ssize_t count = ::read(own_, bytes.data(), bytes.size());
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (count > 0) {
        release();
    } else if (count == 0 || errno == EIO) {
        hold();
        tcflush(held_, TCIOFLUSH);
        // A program that ended badly may have left the other end locked for everybody; only a new one helps then.
        if (held_ < 0) close();
    }
    return bytes;
}

void PseudoTerminal::write(const Bytes& bytes) {
    if (isOpen() && held_ < 0 && !bytes.empty() && ::write(own_, bytes.data(), bytes.size()) < 0 && errno == EIO)
        hold();
}

void PseudoTerminal::placeLink() const {
    if (link_.empty()) return;
    std::error_code error;
    const auto status = std::filesystem::symlink_status(link_, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_symlink(status)) {
        throw std::runtime_error(link_.string() + " exists and is not a symbolic link");
    }
    const std::string aside = link_.string() + "." + std::to_string(getpid());
    if (symlink(path_.c_str(), aside.c_str()) != 0 || rename(aside.c_str(), link_.c_str()) != 0) {
        failWith("cannot make the link " + link_.string());
    }
}

void PseudoTerminal::removeLink() const {
    std::error_code error;
    if (!link_.empty() && std::filesystem::read_symlink(link_, error) == path_) std::filesystem::remove(link_, error);
}

}  // namespace kestrel::posix
