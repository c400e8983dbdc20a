// A line of the test's own: a pseudo-terminal with no board at its end.
// It works on a thread of its own, since the program may wait for a reply without running its events.
#pragma once

#include <atomic>
#include <filesystem>
#include <memory>
#include <thread>

namespace kestrel::testing {

class Wire {
  public:
    /// The program's end is found at `link`. All that the program sends comes back to it.
    explicit Wire(std::filesystem::path link);
    /// One that goes away at the first byte that it hears.
    static std::unique_ptr<Wire> thatHangsUp(const std::filesystem::path& link);
    ~Wire();
    Wire(const Wire&) = delete;
    Wire& operator=(const Wire&) = delete;

  private:
    void carry();

    std::filesystem::path link_;
    int near_ = -1;
    int held_ = -1;  ///< the program's end, so that it stays when the program closes it
    std::atomic<bool> hangsUp_ = false;
    std::atomic<bool> ends_ = false;
    std::thread thread_;
};

}  // namespace kestrel::testing
