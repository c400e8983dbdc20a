// The link engine.
#include "link/link_engine.h"

#include <algorithm>
#include <string>
#include <utility>

#include "link/changes.h"
#include "link/first_values.h"
#include "link/loaded_pages.h"
#include "link/observer.h"
#include "link/param_table.h"
#include "link/recheck.h"
#include "link/silence.h"
#include "platform/errors.h"
#include "platform/module_state.h"
#include "platform/outside.h"
#include "platform/platform.h"

namespace kestrel {

template class Module<LinkState>;

namespace {

constexpr int BadRepliesAllowed = 4;
constexpr std::uint8_t WriteBit = 128;
/// A record whose period has this bit keeps the link on itself until its board answers.
constexpr std::uint8_t RepeatWithoutEnd = 2;
constexpr const char* CheckInterface = "Check serial interface ";
constexpr int TextPanel = 1;

namespace lamp {
constexpr int SendOff = 1, ReceiveOff = 2, ErrorOff = 3, SendOn = 4, ReceiveOn = 5, ErrorOn = 6;
constexpr int FirstPanel = 2, Kinds = 3;
}  // namespace lamp

void restart(Timer& timer) {
    timer.Enabled = false;
    timer.Enabled = true;
}

void nextBank() { CurrentBank = CurrentBank >= Banks - 1 ? 0 : CurrentBank + 1; }

void showPortTrouble(const std::string& reason) {
    StatusPanel& panel = Link().statusBar->Panels(TextPanel);
    Link().PortTrouble = reason;
    panel.Text = CheckInterface;
    panel.ToolTip = reason;
}

/// The port is open again, whether or not anything is asked for. A notice that no loss called for waits for a reply.
void takeLossBack() {
    if (!Link().PortTrouble.empty()) ClearPortTrouble();
}

/// While the boards are being identified for the first time, a lost port is a silent one.
void interrupted() {
    if (Link().Timer1.Enabled || LineIsClosed() || WritesAreHeld()) InterruptLine();
}

/// Closes the port, which drops half a reply included, and opens it again. False, with the reason shown, when it
/// cannot be opened.
bool reopenPort() {
    LinkState& link = Link();
    try {
        link.Comm1->PortOpen(false);
        link.Comm1->PortOpen(true);
    } catch (const RunTimeError& error) {
        showPortTrouble(error.what());
        interrupted();
        return false;
    }
    if (NotePortDevice()) interrupted();
    return true;
}

/// Whether a record with this period is sent now; counts the period down or reloads it.
bool passesGate(std::uint8_t& period) {
    if (period == 0) return true;
    if ((period & 0xF0) != 0) {
        period = static_cast<std::uint8_t>(period - 16);
        return false;
    }
    period = static_cast<std::uint8_t>(period * 17);
    return true;
}

void sendRecord(const ParamRecord& record, std::uint8_t& flags) {
    Request& request = Link().RequestBytes;
    request.Addr2 = record.Addr2;
    request.Addr1 = record.Addr1;
    request.Command = record.Command;
    request.Addr0 = record.Addr0;
    request.Data.assign(record.Value.begin(), record.Value.begin() + WrittenBytes);
    if (flags & flag::WriteDue) {
        request.Command |= WriteBit;
        flags = static_cast<std::uint8_t>(flags & ~flag::WriteDue);
    }
    request.n = ValueNibble(request.Command);
    LinkSendFrame();
}

/// A frame goes again to the board that it was for and to no other: where a page has moved the bank meanwhile, the
/// exchange ends with nothing stored.
void repeatFrame() {
    if (CurrentBank == Link().RequestBank) return LinkSendFrame();
    Link().RetryCount = 0;
    EndExchange();
}

void Timer1_Timer() {
    LinkState& link = Link();
    link.Timer1.Enabled = false;
    if (link.LinkIdle && !AnyActWaits()) {
        // While the port is away nothing is taken from the table: what the user changes waits for its return.
        if (!link.Comm1->PortOpen()) {
            link.ReopenTimer.Enabled = true;
        } else {
            RecheckTick();
            if (!LineIsClosed()) LinkNextRecord();
        }
    }
    link.Timer1.Enabled = true;
}

void Timer2_Timer() {
    LinkState& link = Link();
    SetLinkIndicator(lamp::ErrorOn);
    SetLinkIndicator(lamp::ReceiveOff);
    link.Timer2.Enabled = false;
    if (link.Comm1->InBufferCount() > 0) ++link.SpoiledArrivals;
    if (!reopenPort()) {
        link.Timer2.Enabled = true;
        return;
    }
    takeLossBack();
    if (!LineIsClosed() && (ParamTable(CurrentBank, link.ScanIndex).Period & RepeatWithoutEnd))
        repeatFrame();
    else
        EndExchange();
}

void Timer3_Timer() {
    SetLinkIndicator(lamp::SendOff);
    Link().Timer3.Enabled = false;
}

void Timer4_Timer() {
    SetLinkIndicator(lamp::ReceiveOff);
    SetLinkIndicator(lamp::ErrorOff);
    Link().Timer4.Enabled = false;
}

/// The port went away under the program. An open exchange runs into its time-out, which reopens; with none open the
/// scan tick starts a timer for it at the same pace.
void Comm1_OnLost() {
    showPortTrouble(platform().portTrouble(Link().ComPort, PortTrouble::Gone));
    interrupted();
}

void ReopenTimer_Timer() {
    LinkState& link = Link();
    const bool done = !link.LinkIdle || link.Comm1->PortOpen() || reopenPort();
    if (!done) return;
    link.ReopenTimer.Enabled = false;
    if (link.LinkIdle) ClearPortTrouble();
}

}  // namespace

bool NotePortDevice() {
    LinkState& link = Link();
    const std::string device = platform().portDevice(link.ComPort);
    return std::exchange(link.Device, device) != device;
}

LinkState& Link() { return stateOf<LinkState>(); }

void SetUpLink(StatusBar& statusBar, const std::array<MenuItem*, PortCount + 1>& portEntries) {
    LinkState& link = Link();
    link.statusBar = &statusBar;
    link.mnuCox = portEntries;
    link.Comm1 = platform().makeSerialControl();
    link.Comm1->OnComm([] { Comm1_OnComm(); });
    link.Comm1->OnLost([] { Comm1_OnLost(); });
    link.Timer1.OnTimer(Timer1_Timer);
    link.Timer2.OnTimer(Timer2_Timer);
    link.Timer3.OnTimer(Timer3_Timer);
    link.Timer4.OnTimer(Timer4_Timer);
    link.Timer5.OnTimer([] { Link().ReplyTimedOut = true; });
    link.ReopenTimer.OnTimer(ReopenTimer_Timer);
    for (Timer* once : {&link.RestTimer, &link.LateTimer}) once->OnTimer([once] { once->Enabled = false; });
}

void ClearPortTrouble() {
    StatusPanel& panel = Link().statusBar->Panels(TextPanel);
    if (panel.Text.get().empty()) return;
    Link().PortTrouble.clear();
    panel.Text = "";
    panel.ToolTip = "";
}

void CloseExchange() {
    tell(&LinkObserver::exchangeGivenUp);
    Link().Timer2.Enabled = false;
    EndExchange();
}

void StopLink() {
    LinkState& link = Link();
    if (!link.Comm1) return;
    for (Timer* timer : {&link.Timer1, &link.Timer2, &link.Timer3, &link.Timer4, &link.Timer5, &link.ReopenTimer,
                         &link.RestTimer, &link.LateTimer})
        timer->Enabled = false;
    CloseExchange();
    StopListening();
    link.Comm1->PortOpen(false);
    for (const int off : {lamp::SendOff, lamp::ReceiveOff, lamp::ErrorOff}) SetLinkIndicator(off);
    showPortTrouble(platform().portTrouble(link.ComPort, PortTrouble::Closed));
}

void LinkNextRecord() {
    LinkState& link = Link();
    const int end = RecordCount(CurrentBank);
    // An absent board gets nothing, although its bank has the length of its identity file.
    while (BoardPresent(CurrentBank)) {
        ParamRecord& record = ParamTable(CurrentBank, link.ScanIndex);
        std::uint8_t& flags = ParamFlags(CurrentBank, link.ScanIndex);
        if ((flags & flag::Pending) && passesGate(record.Period)) {
            const bool held = (flags & flag::WriteDue) && WritesAreHeld() && IsChange(CurrentBank, link.ScanIndex);
            if (held) HoldWrite(CurrentBank, link.ScanIndex);
            sendRecord(record, flags);
            return;
        }
        link.ScanIndex = NextPending(CurrentBank, link.ScanIndex + 1, end);
        if (link.ScanIndex >= end) break;
    }
    link.ScanIndex = 0;
    nextBank();
}

void LinkSendFrame() {
    LinkState& link = Link();
    restart(link.Timer3);
    SetLinkIndicator(lamp::SendOn);
    if (std::exchange(link.LinkIdle, false)) {
        link.RequestBank = CurrentBank;
        tell(&LinkObserver::exchangeOpened);
    }
    ExchangeOpened();
    NoteAsked(CurrentBank);
    const Bytes frame = BuildFrame(link.RequestBytes, CurrentBank);
    restart(link.Timer2);  // a port lost during identification leaves it running
    try {
        if (!link.Comm1->PortOpen()) link.Comm1->PortOpen(true);
        link.Comm1->Output(frame);
        tell(&LinkObserver::frameSent, frame);
    } catch (const RunTimeError& error) {
        tell(&LinkObserver::frameLost, frame);
        showPortTrouble(error.what());  // the time-out that now runs reopens the port
    }
}

void Comm1_OnComm() {
    LinkState& link = Link();
    if (link.Comm1->CommEvent() != CommEventReceive) return;
    const int event = link.Comm1->CommEvent();
    if (event == CommEventClearToSend) {
        showPortTrouble({});
        reopenPort();
        return;
    }
    if (event != CommEventReceive) return;
    if (link.LinkIdle) {
        link.Comm1->Input();  // no exchange is open: these bytes answer nothing
        ++link.SpoiledArrivals;
        return;
    }
    if (!ReplyIsComplete(link.RequestBytes, link.Comm1->InBufferCount())) return;
    const Bytes received = link.Comm1->Input();
    link.Timer2.Enabled = false;
    restart(link.Timer4);
    SetLinkIndicator(lamp::ReceiveOn);
    SetLinkIndicator(lamp::ErrorOff);
    ClearPortTrouble();
    Judgement judgement = JudgeReply(link.RequestBytes, received);
    link.ReplyData = judgement.good ? std::move(judgement.data) : Bytes{};
    judgement.good ? NoteHeard(link.RequestBank) : void(++link.SpoiledArrivals);
    tell(&LinkObserver::replyJudged, received, judgement.good);
    if (link.RetryCount != BadRepliesAllowed) {
        if (!judgement.good) {
            SetLinkIndicator(lamp::ErrorOn);
            ++link.RetryCount;
            repeatFrame();
            return;
        }
    } else {
        link.ReplyData.clear();
    }
    link.RetryCount = 0;
    if (link.LinkSetup)
        EndExchange();
    else
        LinkAcceptReply();
}

void EndExchange() {
    if (!std::exchange(Link().LinkIdle, true)) tell(&LinkObserver::exchangeClosed);
    ExchangeEnded();
}

void LinkAcceptReply() {
    LinkState& link = Link();
    std::uint8_t& stored = ParamFlags(CurrentBank, link.ScanIndex);
    ParamRecord& record = ParamTable(CurrentBank, link.ScanIndex);
    // What the user has changed while the record was being read stands: the reply is older.
    const bool older = (stored & flag::WriteDue) && !(link.RequestBytes.Command & WriteBit);
    if ((stored & flag::Pending) && !link.ReplyData.empty() && !older) {
        auto flags = static_cast<std::uint8_t>(stored | flag::Valid);
        const auto notPending = static_cast<std::uint8_t>(~flag::Pending);
        if (flags & flag::OneVisit) flags &= notPending;
        if (!(flags & flag::Watched))
            throw ProgrammingError("Parameter " + std::to_string(link.ScanIndex) + " is pending but not in use");
        if (record.Period == 0) flags &= notPending;
        stored = flags;
        const std::size_t padded = std::max<std::size_t>(link.ReplyData.size(), WrittenBytes);
        for (std::size_t i = 0; i < padded; ++i) record.Value[i] = i < link.ReplyData.size() ? link.ReplyData[i] : 0;
        const int bank = CurrentBank;
        const int index = link.ScanIndex;
        NoteArrived(bank, index);
        tell(&LinkObserver::recordStored, index);
        NotifyPages(index, link.ReplyData, link.RequestBytes.n);
        NoteRead(bank, index);
        SettleChange(bank, index);
    }
    ++link.ScanIndex;
    if (link.ScanIndex == RecordCount(CurrentBank)) {
        link.ScanIndex = 0;
        nextBank();
    }
    EndExchange();
}

void SetLinkIndicator(int state) {
    if (state < lamp::SendOff || state > lamp::ErrorOn) return;
    StatusPanel& panel = Link().statusBar->Panels(lamp::FirstPanel + (state - 1) % lamp::Kinds);
    if (panel.Tag == state) return;
    panel.Tag = state;
    panel.Picture = state;
}

}  // namespace kestrel
