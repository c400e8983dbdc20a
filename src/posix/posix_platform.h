// The machine under a program without a window: the system's clock, its serial devices and its files.
// The event loop is one wait for the line, the timers and the signals that ask for the end.
#pragma once

#include <locale.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/platform.h"
#include "posix/end_signals.h"
#include "posix/posix_timer.h"
#include "posix/serial_port.h"

namespace kestrel::posix {

/// Thrown where the process is to end, through all that stands above; whoever began the program catches it.
struct ProcessEnd {
    int status;
};

class PosixPlatform : public Platform {
  public:
    struct Setup {
        std::filesystem::path directory;                              ///< the program's
        std::string program;                                          ///< its name
        std::string device;                                           ///< behind every port; empty: none
        std::function<std::unique_ptr<SerialControl>()> simulated{};  ///< a line to use in place of the device, or null
        std::function<Message::Answer(const Message&)> onMessage;
    };

    /// From now on the signals that end a program are noted.
    explicit PosixPlatform(Setup setup);
    ~PosixPlatform() override;

    /// The device behind every port, from the next opening on.
    void useDevice(const std::string& device) { setup_.device = device; }

    std::unique_ptr<TimerBackend> makeTimer(std::function<void()> onExpiry) override;
    void PumpEvents() override;
    void BusyWait(int milliseconds) override;

    std::unique_ptr<SerialControl> makeSerialControl() override;
    std::string portDevice(int port) override;
    std::string portTrouble(int port, PortTrouble trouble) override;

    Message::Answer showMessage(const Message& message) override { return setup_.onMessage(message); }

    std::filesystem::path programDirectory() const override { return setup_.directory; }
    std::string programName() const override { return setup_.program; }
    void changeDirectory(const std::filesystem::path& directory) override;
    std::vector<std::string> listFiles(const std::filesystem::path& directory, const std::string& ending) override;
    std::string readFile(const std::filesystem::path& file) override;
    void writeFile(const std::filesystem::path& file, const std::string& content) override;

    [[noreturn]] void endProcess(int status) override { throw ProcessEnd{status}; }

    std::string decimalSeparator() const override;
    std::string shortDate(int day, int month, int year) const override;

    // There is no window, and no other program to start.
    void showMainWindow() override {}
    Extent mainWindowExtent() override { return {}; }
    Extent measure(Window&) override { return {}; }
    void showWindow(Window&) override {}
    void closeWindow(Window&) override {}
    Window* activeWindow() override { return nullptr; }
    void startProgram(const std::filesystem::path&) override {}

  private:
    /// Waits until then, or until bytes come or a port is lost.
    void wait(Clock::time_point until);

    Setup setup_;
    EndSignals signals_;
    locale_t locale_;  ///< the user's, for figures and dates of people alone
    TimerList timers_;
    SerialPort* open_ = nullptr;
    int descriptor_ = -1;  ///< of the open port
};

}  // namespace kestrel::posix
