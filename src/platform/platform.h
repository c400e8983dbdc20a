// All that the logic asks of the machine under it.
// One process-wide instance: a real one for people, one with virtual time for tests.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/serial_control.h"
#include "platform/timer.h"

namespace kestrel {

class Window;

struct Message {
    enum class Icon { Critical, Exclamation };
    enum class Buttons { Ok, RetryCancel, YesNo };
    enum class Answer { Ok, Retry, Cancel, Yes, No };

    std::string text;
    std::string title;
    Icon icon = Icon::Critical;
    Buttons buttons = Buttons::Ok;
    std::string detail = {};  ///< what more is known, such as the reason given by the system; may be empty
    /// Nothing answers: before the detail the box says what to check, and it offers the demo.
    bool isAboutTheLine = false;
};

/// What the program itself finds out about a port; the rest is said when it cannot be opened.
enum class PortTrouble { NoBoard, Gone, Closed };

/// Exit status of a run that trouble ended.
inline constexpr int EndedByTrouble = 1;

/// Width and height in twips.
struct Extent {
    int width = 0;
    int height = 0;
};

/// What the clock on the wall says.
struct LocalTime {
    int year = 0;
    int month = 1;  ///< 1 to 12
    int day = 1;
    int hour = 0;
    int minute = 0;
};
/// "10:32".
std::string TimeOfDayText(const LocalTime& time);

/// What stands for the device of a simulated machine.
inline constexpr const char* SimulatedDevice = "demo";

/// The machine under the program; abstract so that the whole program runs in virtual time without a toolkit.
class Platform {
  public:
    virtual ~Platform() = default;

    // Time.
    /// A timer that calls the handler from the event loop.
    virtual std::unique_ptr<TimerBackend> makeTimer(std::function<void()> onExpiry) = 0;
    /// Waits for the next event and delivers it.
    virtual void PumpEvents() = 0;
    /// Waits without delivering any event.
    virtual void BusyWait(int milliseconds) = 0;
    /// For people: no rule of the program counts by it.
    virtual LocalTime localTime() const;

    // The line.
    virtual std::unique_ptr<SerialControl> makeSerialControl() = 0;
    /// The device behind a port, 1 to 4, for people to read; where the machine has none, it says so, and
    /// `SimulatedDevice` where it is simulated.
    virtual std::string portDevice(int port) = 0;
    /// The device and what is wrong with it, in the user's language.
    virtual std::string portTrouble(int port, PortTrouble trouble) = 0;

    // People.
    /// Shows a message box and waits for its answer; events go on meanwhile.
    virtual Message::Answer showMessage(const Message& message) = 0;
    virtual void showMainWindow() = 0;
    /// Size of the main window.
    virtual Extent mainWindowExtent() = 0;
    /// Size that a child window takes with its present texts.
    virtual Extent measure(Window& window) = 0;
    /// Shows a child window, in front of the others; its Form_Activate runs when it comes to the front.
    virtual void showWindow(Window& window) = 0;
    virtual void closeWindow(Window& window) = 0;
    /// The user has put the child window away as an icon; showing it brings it back.
    virtual bool isMinimized(Window& /*window*/) { return false; }
    /// The child window in front, or null.
    virtual Window* activeWindow() = 0;
    /// Puts a text where other programs can take it from.
    virtual void copyText(const std::string& /*text*/) {}

    // Files. Failures are run-time errors with the number of their kind and the system's reason as text.
    /// Where configuration, index and language files lie.
    virtual std::filesystem::path programDirectory() const = 0;
    /// Name and version of the toolkit that shows the windows; empty where there is none.
    virtual std::string toolkit() const { return {}; }
    /// The program's file name without extension.
    virtual std::string programName() const = 0;
    /// Where the configuration is written: the program's directory, or the user's own place where that one is closed.
    virtual std::filesystem::path configurationDirectory() const { return programDirectory(); }
    /// The directory above, with the family's launcher and configuration; a program of the system has none.
    virtual std::optional<std::filesystem::path> familyDirectory() const { return programDirectory().parent_path(); }
    virtual void changeDirectory(const std::filesystem::path& directory) = 0;
    /// Names of the files of a directory that end so, in order of name.
    virtual std::vector<std::string> listFiles(const std::filesystem::path& directory, const std::string& ending) = 0;
    virtual std::string readFile(const std::filesystem::path& file) = 0;
    /// Replaces the file whole: at any moment either the old text or the new one stands there.
    virtual void writeFile(const std::filesystem::path& file, const std::string& content) = 0;

    // The process.
    virtual void startProgram(const std::filesystem::path& program) = 0;
    /// Closes the port and all files and ends the process.
    [[noreturn]] virtual void endProcess(int status) = 0;

    // The user's ways of writing.
    virtual std::string decimalSeparator() const = 0;
    /// A date in the system's short format; the year has four digits.
    virtual std::string shortDate(int day, int month, int year) const = 0;
};

/// The process-wide instance. Asking before one is set is a programming error.
Platform& platform();
/// Shows a message box through the platform.
Message::Answer ShowMessage(const Message& message);
/// Whether one stands: the program asks nothing by itself meanwhile.
bool MessageIsOpen();
/// Ends the process through the platform.
[[noreturn]] void EndProcess(int status);
/// Sets the instance; the caller keeps it alive. Null takes it away.
void setPlatform(Platform* instance);

}  // namespace kestrel
