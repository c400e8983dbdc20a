// A line of the test's own.
#include "wire.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <utility>

namespace kestrel::testing {

namespace {

constexpr int LookEveryMs = 10;

}  // namespace

Wire::Wire(std::filesystem::path link) : link_(std::move(link)), near_(posix_openpt(O_RDWR | O_NOCTTY)) {
    EXPECT_TRUE(grantpt(near_) == 0 && unlockpt(near_) == 0);
    held_ = open(ptsname(near_), O_RDWR | O_NOCTTY);
    termios raw{};
    EXPECT_EQ(tcgetattr(held_, &raw), 0);
    cfmakeraw(&raw);
    EXPECT_EQ(tcsetattr(held_, TCSANOW, &raw), 0);
    std::filesystem::create_symlink(ptsname(near_), link_);
    thread_ = std::thread([this] { carry(); });
}

std::unique_ptr<Wire> Wire::thatHangsUp(const std::filesystem::path& link) {
    auto wire = std::make_unique<Wire>(link);
    wire->hangsUp_ = true;
    return wire;
}

Wire::~Wire() {
    ends_ = true;
    thread_.join();
    std::filesystem::remove(link_);
    for (const int descriptor : {near_, held_})
        if (descriptor >= 0) close(descriptor);
}

void Wire::carry() {
    std::array<char, 256> bytes;
    while (!ends_) {
        pollfd ready = {near_, POLLIN, 0};
        poll(&ready, 1, LookEveryMs);
        const ssize_t count = (ready.revents & POLLIN) != 0 ? read(near_, bytes.data(), bytes.size()) : 0;
        if (count > 0 && hangsUp_) close(std::exchange(near_, -1));
        if (count > 0 && near_ >= 0 && write(near_, bytes.data(), static_cast<std::size_t>(count)) < 0) return;
    }
}

}  // namespace kestrel::testing
