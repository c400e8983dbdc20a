// The two kinds of trouble that the program tells apart by type.
// No other exception crosses a folder.
#pragma once

#include <stdexcept>
#include <string>

namespace kestrel {

/// A mistake of the program itself (parameter number 0, a record in an impossible state). Ends the run.
class ProgrammingError : public std::logic_error {
  public:
    using std::logic_error::logic_error;
};

/// What the system calls a run-time error. The notification of one page swallows it; elsewhere it reaches the top,
/// shows a message box and ends the run in good order.
class RunTimeError : public std::runtime_error {
  public:
    RunTimeError(int number, const std::string& text) : std::runtime_error(text), number_(number) {}
    int number() const { return number_; }

  private:
    int number_;
};

/// Numbers of the run-time errors that something in the program looks at or shows.
namespace error_number {
inline constexpr int Overflow = 6;
inline constexpr int SubscriptOutOfRange = 9;
inline constexpr int FileNotFound = 53;
inline constexpr int FileAccess = 75;
inline constexpr int PathNotFound = 76;
inline constexpr int PastEndOfFile = 62;
inline constexpr int TypeMismatch = 13;
inline constexpr int NoSuchElement = 340;
inline constexpr int DeviceUnavailable = 68;
inline constexpr int SerialFirst = 8000;  ///< the serial control's own numbers run from here ...
inline constexpr int SerialBadPort = 8002;
inline constexpr int SerialPortInUse = 8005;
inline constexpr int SerialNoPermission = 8010;
inline constexpr int SerialNotOpen = 8018;
inline constexpr int SerialDevice = 8020;
inline constexpr int SerialLast = 8021;  ///< ... to here
}  // namespace error_number

}  // namespace kestrel
