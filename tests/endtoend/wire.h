// A line of the test's own: a pseudo-terminal that leads to a device, or into nothing.
// It works on a thread of its own, since the program may wait for a reply without running its events.
#pragma once

#include <atomic>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>

namespace kestrel::testing {

class Wire {
  public:
    /// The program's end is found at `link`. What comes from the device is passed on byte by byte with pauses between;
    /// without a device all that the program sends comes back to it.
    explicit Wire(std::filesystem::path link, const std::string& device = {});
    /// A device that goes away at the first byte that it hears.
    static std::unique_ptr<Wire> thatHangsUp(const std::filesystem::path& link);
    ~Wire();
    Wire(const Wire&) = delete;
    Wire& operator=(const Wire&) = delete;

  private:
    void carry();

    std::filesystem::path link_;
    int near_ = -1;
    int held_ = -1;  ///< the program's end, so that it stays when the program closes it
    int far_ = -1;   ///< the device
    std::atomic<bool> hangsUp_ = false;
    std::atomic<bool> ends_ = false;
    std::thread thread_;
};

}  // namespace kestrel::testing
