// The link engine: keeps the mirror and the boards in step, one exchange at a time.
// It has no thread and no queue: a timer looks for the next record, a serial event finishes the exchange.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "link/frames.h"
#include "platform/serial_control.h"
#include "platform/status_bar.h"
#include "platform/timer.h"

namespace kestrel {

class MenuItem;

inline constexpr int PortCount = 4;
inline constexpr int ScanTickMs = 40;
inline constexpr int ReplyTimeoutMs = 1000;
inline constexpr int LampMs = 500;
inline constexpr int IdentificationTimeoutMs = 2000;
inline constexpr int LateReplyMs = 5000;

/// State of the engine; its names are those of the window of no size that carries the serial control and the timers.
struct LinkState {
    int ScanIndex = 0;           ///< record cursor inside CurrentBank
    bool LinkIdle = true;        ///< no exchange is open
    bool LinkSetup = false;      ///< the port is being opened or boards identified: replies are not stored
    bool ReplyTimedOut = false;  ///< looked at by identification alone
    Bytes ReplyData;             ///< the reply's value bytes; empty: nothing usable arrived
    Request RequestBytes;        ///< the request that is open, or was last
    int RequestBank = 0;         ///< whose board the open request, or the last one, is for
    int RetryCount = 0;          ///< bad replies to the present request
    int ComPort = 0;             ///< 1 to 4
    std::string Device;          ///< behind the port when it was opened last
    std::string PortTrouble;     ///< why the port could not be opened or was lost, for people

    std::int64_t SpoiledArrivals = 0;  ///< bad and half replies, and bytes that nobody asked for

    Timer Timer1{ScanTickMs, Timer::OfTheLink};               ///< scan tick
    Timer Timer2{ReplyTimeoutMs, Timer::OfTheLink};           ///< reply time-out
    Timer Timer3{LampMs, Timer::OfTheLink};                   ///< send lamp off
    Timer Timer4{LampMs, Timer::OfTheLink};                   ///< receive lamp off
    Timer Timer5{IdentificationTimeoutMs, Timer::OfTheLink};  ///< identification time-out
    Timer ReopenTimer{ReplyTimeoutMs, Timer::OfTheLink};      ///< tries a port that was lost while no exchange was open
    Timer RestTimer{0, Timer::OfTheLink};                     ///< identification: how long nothing, or no answer, came
    Timer LateTimer{LateReplyMs, Timer::OfTheLink};           ///< identification: an older answer may still come
    std::unique_ptr<SerialControl> Comm1;

    StatusBar* statusBar = nullptr;                 ///< where the lamps are
    std::array<MenuItem*, PortCount + 1> mnuCox{};  ///< port entries 1 to 4 of the menu
};

LinkState& Link();

/// Makes the serial control and sets the timers' handlers. The status bar must have its four panels by then.
void SetUpLink(StatusBar& statusBar, const std::array<MenuItem*, PortCount + 1>& portEntries);

/// Takes the notice about the port out of the status bar.
void ClearPortTrouble();
/// Gives the open exchange up: nothing is repeated, and what still comes answers nothing.
void CloseExchange();
/// Nothing goes out any more: timers off, port closed. The lamps go out and the status bar says so.
void StopLink();

/// The scan: visits records from ScanIndex in CurrentBank and sends at most one frame. Only while LinkIdle.
void LinkNextRecord();
/// Builds and sends the frame of RequestBytes and opens the exchange.
void LinkSendFrame();
/// Remembers the device behind the present port. True when it is another one than before.
bool NotePortDevice();
/// Ends the open exchange: what waits outside comes in now.
void EndExchange();
/// Stores ReplyData in the record at ScanIndex, tells the pages, moves the scan on and closes the exchange.
void LinkAcceptReply();
/// The serial event.
void Comm1_OnComm();

/// The lamps, by number: 1 and 4 send off and on, 2 and 5 receive, 3 and 6 error. Others are ignored.
void SetLinkIndicator(int lamp);

}  // namespace kestrel
