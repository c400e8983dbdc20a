// Opening a port and probing for a board behind it.
#include "link/port_search.h"

#include <string>

#include "link/line_rest.h"
#include "link/link_engine.h"
#include "link/observer.h"
#include "link/recheck.h"
#include "platform/errors.h"
#include "platform/menu.h"
#include "platform/platform.h"

namespace kestrel {

namespace {

constexpr int ProbeWaitMs = 500;
constexpr std::size_t ProbeReplyBytes = 2;

bool isPortFailure(int number) {
    return number == error_number::DeviceUnavailable ||
           (number >= error_number::SerialFirst && number <= error_number::SerialLast);
}

MenuItem& portEntry(int port) {
    if (port < 1 || port > PortCount)
        throw RunTimeError(error_number::NoSuchElement, "There is no port " + std::to_string(port));
    return *Link().mnuCox[static_cast<std::size_t>(port)];
}

void probeBoard() {
    LinkState& link = Link();
    link.Comm1->Output(Bytes(5, 0));
    platform().BusyWait(ProbeWaitMs);
    Bytes reply = link.Comm1->Input();
    if (reply.empty()) reply = {'X', 'Y'};
    link.ReplyData = {reply.front()};
    if (reply.size() == ProbeReplyBytes && reply[0] == reply[1]) return;
    ExpectLateAnswer();
    throw RunTimeError(error_number::DeviceUnavailable, platform().portTrouble(link.ComPort, PortTrouble::NoBoard));
}

void tryPort() {
    LinkState& link = Link();
    for (int i = 1; i <= PortCount; ++i) portEntry(i).Checked = false;
    MenuItem& entry = portEntry(link.ComPort);
    entry.Checked = true;
    entry.Detail = platform().portDevice(link.ComPort);
    link.Comm1->PortOpen(false);
    link.Comm1->CommPort(link.ComPort);
    link.Comm1->PortOpen(true);
    probeBoard();
}

[[noreturn]] void endWithoutPort(int errorNumber, const std::string& reasons) {
    StopLink();  // the port tried last has no board, and the scan would go on behind the box
    Message message;
    message.title = "ERROR  " + std::to_string(errorNumber);
    message.text = "Check serial !\nSerial device unavailable\nor Board Not Ready";
    message.detail = reasons;
    message.isAboutTheLine = true;
    ShowMessage(message);
    EndProcess(EndedByTrouble);
}

}  // namespace

void OpenPort(int port) {
    tell(&LinkObserver::searchingPort);
    LinkState& link = Link();
    bool allTried = false;
    std::string reasons;
    if (port != 0) link.ComPort = port;
    for (;;) {
        try {
            tryPort();
            ClearPortTrouble();
            NotePortDevice();
            if (link.Timer1.Enabled) InterruptLine();
            return tell(&LinkObserver::portOpened);
        } catch (const RunTimeError& error) {
            if (!isPortFailure(error.number())) throw;
            MenuItem& failed = portEntry(link.ComPort);
            failed.Checked = false;
            failed.Enabled = false;
            failed.Detail = error.what();
            reasons += std::string(reasons.empty() ? "" : "\n") + error.what();
            if (++link.ComPort > PortCount) {
                if (allTried) endWithoutPort(error.number(), reasons);
                link.ComPort = 1;
                allTried = true;
                reasons.clear();  // from here on every port is tried
            }
        }
    }
}

}  // namespace kestrel
