// The board's side of a pseudo-terminal.
// See pseudo_terminal.h.
#include "pseudo_terminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace kestrel::testing {

PseudoTerminal::PseudoTerminal() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) ADD_FAILURE() << "no pseudo-terminal";
    termios settings{};
    tcgetattr(master_, &settings);
    cfmakeraw(&settings);
    tcsetattr(master_, TCSANOW, &settings);
    device_ = ptsname(master_);
}

void PseudoTerminal::send(const std::string& bytes, Amount amount) {
    const ssize_t sent = ::write(master_, bytes.data(), bytes.size());
    if (amount == All) {
        EXPECT_EQ(sent, static_cast<ssize_t>(bytes.size()));
    }
}

std::string PseudoTerminal::received() {
    std::array<char, 4096> buffer{};
    const ssize_t count = ::read(master_, buffer.data(), buffer.size());
    return count > 0 ? std::string(buffer.data(), static_cast<std::size_t>(count)) : std::string();
}

void PseudoTerminal::unplug() {
    if (master_ >= 0) ::close(master_);
    master_ = -1;
}

}  // namespace kestrel::testing
