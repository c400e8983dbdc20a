// The machine under the program, for people: Qt's event loop, windows, boxes and the real file system.
// What is asked of it is said in platform/platform.h.
#pragma once

#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "platform/platform.h"
#include "qt/io/port_devices.h"
#include "qt/window/message_boxes.h"

namespace kestrel::qt {

class MainWindowView;
class QtSerialPort;
class TimerQueue;

class QtPlatform : public Platform {
  public:
    struct Setup {
        std::filesystem::path directory;     ///< the program's directory, absolute
        std::map<int, std::string> devices;  ///< by port number, as the user named them
        /// A line to use in place of real ports, or null.
        std::function<std::unique_ptr<SerialControl>()> simulated{};
        bool isOfTheSystem = false;  ///< installed in bin and share: nothing is written there, and no family is above
        /// Nobody is there to answer: messages go to standard error, and the answer is the one that changes nothing.
        bool isUnattended = false;
        /// The program and its arguments that open the demo; empty where it is not offered.
        QStringList demo{};
    };

    explicit QtPlatform(Setup setup);
    ~QtPlatform() override;

    std::unique_ptr<TimerBackend> makeTimer(std::function<void()> onExpiry) override;
    void PumpEvents() override;
    void BusyWait(int milliseconds) override;

    std::unique_ptr<SerialControl> makeSerialControl() override;
    std::string portDevice(int port) override;
    std::string portTrouble(int port, PortTrouble trouble) override;

    Message::Answer showMessage(const Message& message) override;
    void showMainWindow() override;
    Extent mainWindowExtent() override;
    Extent measure(Window& window) override;
    void showWindow(Window& window) override;
    void closeWindow(Window& window) override;
    bool isMinimized(Window& window) override;
    Window* activeWindow() override;
    void copyText(const std::string& text) override;

    std::filesystem::path programDirectory() const override { return setup_.directory; }
    std::string programName() const override;
    std::filesystem::path configurationDirectory() const override;
    std::optional<std::filesystem::path> familyDirectory() const override;
    std::string toolkit() const override { return std::string("Qt ") + qVersion(); }
    void changeDirectory(const std::filesystem::path& directory) override;
    std::vector<std::string> listFiles(const std::filesystem::path& directory, const std::string& ending) override;
    std::string readFile(const std::filesystem::path& file) override;
    void writeFile(const std::filesystem::path& file, const std::string& content) override;

    void startProgram(const std::filesystem::path& program) override;
    [[noreturn]] void endProcess(int status) override;

    std::string decimalSeparator() const override { return decimalSeparator_; }
    std::string shortDate(int day, int month, int year) const override;

    /// The main window, which exists from the first thing that is asked of it.
    MainWindowView& mainWindow();

  private:
    std::string deviceOf(int port);
    void openDemo();

    Setup setup_;
    PortDevices portDevices_;
    std::vector<QtSerialPort*> ports_;
    std::shared_ptr<TimerQueue> timers_;
    MessageBoxes boxes_;
    std::string decimalSeparator_;
    std::unique_ptr<MainWindowView> mainWindow_;
};

}  // namespace kestrel::qt
