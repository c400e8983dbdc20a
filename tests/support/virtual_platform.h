// The machine under the program in tests: time is a number, files are a map, people are a script.
// Everything that was asked of it is recorded.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/platform.h"
#include "support/line.h"

namespace kestrel::testing {

/// Thrown where the process would end.
struct ProcessEnded {
    int status;
};

class VirtualTimer;
class VirtualSerial;

class VirtualPlatform : public Platform {
  public:
    /// Sets itself as the platform of the process, and takes itself away at the end.
    VirtualPlatform();
    ~VirtualPlatform() override;

    // Time. Events at the same microsecond are delivered in the order in which they were asked for; bytes come last.
    Micros now() const { return now_; }
    /// Delivers the next event. False when nothing will ever happen.
    bool step();
    /// Delivers the next event that is due by then. False when there is none.
    bool stepUntil(Micros limit);
    /// Delivers all events of the next so many milliseconds, and lets that time pass.
    void run(double milliseconds);
    void runUntil(Micros until);
    /// Lets time pass in which nothing is delivered, as while the process stands still.
    void letPass(Micros length) { now_ += length; }
    /// Called after every delivered event.
    std::function<void()> afterEvent;
    /// Called before the program hears of bytes that arrived, or of the loss of its open port.
    std::function<void(const Bytes&)> beforeArrival;
    std::function<void()> beforeLoss;
    int timersRunning() const { return static_cast<int>(running_.size()); }

    // The line.
    std::map<int, Line*> lines;                               ///< what stands on each port
    std::map<int, std::pair<int, std::string>> openFailures;  ///< error number and text of ports that cannot be opened
    bool portOpen() const;
    int opened = 0;              ///< how often a port was opened
    std::deque<int> commEvents;  ///< what the coming looks at the port's event find; without one, that bytes came

    // People.
    std::deque<Message::Answer> answers;  ///< to the coming message boxes; without one a box is answered OK
    std::vector<Message> messages;
    std::vector<std::string> shown;  ///< names of windows as they came to the front
    std::function<void()> whileMessageIsOpen;

    // Files.
    std::map<std::string, std::string> files;
    std::set<std::string> unwritable;  ///< files that cannot be written, and directories that take no new file
    std::set<std::string> unreadable;
    std::vector<std::string> written;  ///< every file that was written, in order
    std::filesystem::path directory = "/family/kestrel";
    std::filesystem::path usersDirectory;  ///< of an installed program, for its configuration; empty: it is portable
    /// Brings in the index and language files of a real directory.
    void install(const std::filesystem::path& realDirectory);
    void put(const std::string& name, const std::string& content) {
        files[(directory / name).generic_string()] = content;
    }
    const std::string& file(const std::string& name) const { return files.at((directory / name).generic_string()); }

    std::vector<std::string> started;  ///< programs that were started
    bool launcherIsThere = true;
    std::string separator = ".";
    std::optional<LocalTime> wallClock;  ///< else a run begins at 10:00
    std::string clipboard;

    std::unique_ptr<TimerBackend> makeTimer(std::function<void()> onExpiry) override;
    void PumpEvents() override;
    void BusyWait(int milliseconds) override;
    LocalTime localTime() const override;
    std::unique_ptr<SerialControl> makeSerialControl() override;
    std::string portDevice(int port) override { return "/dev/port" + std::to_string(port); }
    std::string portTrouble(int port, PortTrouble trouble) override;
    Message::Answer showMessage(const Message& message) override;
    void showMainWindow() override {}
    Extent mainWindowExtent() override { return {15000, 11000}; }
    Extent measure(Window&) override { return {6000, 4000}; }
    void showWindow(Window& window) override;
    void closeWindow(Window& window) override;
    Window* activeWindow() override { return active_; }
    void copyText(const std::string& text) override { clipboard = text; }
    std::filesystem::path programDirectory() const override { return directory; }
    std::string programName() const override { return "kestrel"; }
    std::filesystem::path configurationDirectory() const override {
        return usersDirectory.empty() ? directory : usersDirectory;
    }
    std::optional<std::filesystem::path> familyDirectory() const override {
        return usersDirectory.empty() ? Platform::familyDirectory() : std::nullopt;
    }
    void changeDirectory(const std::filesystem::path&) override {}
    std::vector<std::string> listFiles(const std::filesystem::path& in, const std::string& ending) override;
    std::string readFile(const std::filesystem::path& file) override;
    void writeFile(const std::filesystem::path& file, const std::string& content) override;
    void startProgram(const std::filesystem::path& program) override;
    [[noreturn]] void endProcess(int status) override { throw ProcessEnded{status}; }
    std::string decimalSeparator() const override { return separator; }
    std::string shortDate(int day, int month, int year) const override;

  private:
    friend class VirtualTimer;
    friend class VirtualSerial;
    VirtualTimer* nextTimer() const;
    std::optional<Micros> nextArrival(Micros limit) const;
    void collect();

    Micros now_ = 0;
    long sequence_ = 0;
    std::vector<VirtualTimer*> running_;
    VirtualSerial* serial_ = nullptr;
    Window* active_ = nullptr;
};

}  // namespace kestrel::testing
