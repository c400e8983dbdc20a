// The program with somebody at its keyboard: the same run as the real one, and one act at the right moment.
// The test starts it as a process of its own, since every act ends the process.
#pragma once

#include <QApplication>
#include <string>

namespace kestrel::testing {

/// The argument that makes the test program run as the driven program: the act, the directory, the device.
inline constexpr const char* DrivenArgument = "--driven";
/// Called for the demo, the test program leaves this file in the directory that it is given.
inline constexpr const char* DemoMark = "demo-ran";

/// Acts: "menu" leaves by the keys of the File menu, "close" closes the main window, "close-identifying" does so while
/// boards are being identified, "signal-identifying" and "signal-in-box" send SIGTERM then and while a message box is
/// open, "work" opens pages, changes the language, waits for values and closes the window, "demo" chooses the demo in a
/// box, "trouble" lets a run-time error reach the top and presses Enter in its box.
[[noreturn]] void runDriven(QApplication& application, const std::string& act, const std::string& directory,
                            const std::string& device);

}  // namespace kestrel::testing
