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
constexpr useconds_t PauseUs = 20'000;

int openRaw(const char* device) {
    const int descriptor = open(device, O_RDWR | O_NOCTTY);
    termios raw{};
    EXPECT_EQ(tcgetattr(descriptor, &raw), 0) << device;
    cfmakeraw(&raw);
    EXPECT_EQ(tcsetattr(descriptor, TCSANOW, &raw), 0) << device;
    return descriptor;
}

}  // namespace

Wire::Wire(std::filesystem::path link, const std::string& device)
    : link_(std::move(link)), near_(posix_openpt(O_RDWR | O_NOCTTY)) {
    EXPECT_TRUE(grantpt(near_) == 0 && unlockpt(near_) == 0);
    held_ = openRaw(ptsname(near_));
    if (!device.empty()) far_ = openRaw(device.c_str());
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
    for (const int descriptor : {near_, held_, far_})
        if (descriptor >= 0) close(descriptor);
}

void Wire::carry() {
    std::array<char, 256> bytes;
    while (!ends_) {
        pollfd ready[] = {{near_, POLLIN, 0}, {far_, POLLIN, 0}};
        poll(ready, 2, LookEveryMs);
        for (const pollfd& from : ready) {
            const ssize_t count = (from.revents & POLLIN) != 0 ? read(from.fd, bytes.data(), bytes.size()) : 0;
            if (count > 0 && hangsUp_) close(std::exchange(near_, -1));
            const bool isReply = from.fd == far_;
            for (ssize_t i = 0; i < count && near_ >= 0; ++i) {
                if (isReply) usleep(PauseUs);
                if (write(isReply || far_ < 0 ? near_ : far_, &bytes[static_cast<std::size_t>(i)], 1) < 0) return;
            }
        }
    }
}

}  // namespace kestrel::testing
