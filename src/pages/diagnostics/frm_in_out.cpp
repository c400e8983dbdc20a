// In/Out test: opening and closing, start and stop of the test, and what the master reports.
// See frm_in_out.h; the two slave boards have files of their own.
#include "pages/diagnostics/frm_in_out.h"

#include <algorithm>
#include <array>

#include "link/presence.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/lamp_runs.h"

namespace kestrel {

namespace {

constexpr int Inputs = 249;
constexpr int PageOpenMarker = 368;
constexpr int PageWord = 369;  ///< its value is never looked at

constexpr unsigned PageIsOpen = 255;
constexpr unsigned PageIsClosed = 0;

/// The one bit of the master's inputs that stands apart, then five in a row; the other two mean nothing.
constexpr std::array<LampRun, 2> InputLamps = {{{Inputs, 1, 1, 0}, {Inputs, 3, 5, 1}}};

constexpr std::array<ParamRun, 11> Subscriptions = {{
    {0, SectorPresence},
    {0, HotDrinkPresence},
    {0, Inputs},
    {0, PageWord},
    {alder::Bank, alder::Inputs1, alder::OutputEcho + alder::MailboxBytes - 1},
    {alder::Bank, alder::BoilerReading},
    {alder::Bank, alder::TestState},
    {cedar::Bank, cedar::GroupEcho, cedar::BitEcho},
    {cedar::Bank, cedar::TankReading},
    {cedar::Bank, cedar::TestState},
    {cedar::Bank, cedar::ReadingOffset},
}};

/// More than was subscribed to: releasing what nobody watches changes nothing.
constexpr std::array<ParamRun, 10> Releases = {{
    {0, HotDrinkPresence, SectorPresence},
    {0, Inputs},
    {0, PageOpenMarker},
    {0, PageWord},
    {alder::Bank, alder::BoilerReading, alder::TestState},
    {alder::Bank, alder::Command, alder::Mailbox + alder::MailboxBytes - 1},
    {cedar::Bank, cedar::TankReading, cedar::TestState},
    {cedar::Bank, cedar::GroupMailbox},
    {cedar::Bank, cedar::BitMailbox},
    {cedar::Bank, cedar::ReadingOffset},
}};

}  // namespace

FrmInOut::FrmInOut() : Page("FrmInOut") {
    Command1.OnClick([this] { Command1_Click(); });
    SwitchLed1.OnClick([this](int Index) { SwitchLed1_Click(Index); });
    SwitchLed3.OnClick([this](int Index) { SwitchLed3_Click(Index); });
    SwitchLed4.OnClick([this] { SwitchLed4_Click(); });
    Timer1.OnTimer([this] { Timer1_Timer(); });
    for (LedSwitch& output : SwitchLed1) output.standsForNoValue = true;
    for (LedSwitch& output : SwitchLed3) output.standsForNoValue = true;
    SwitchLed4.standsForNoValue = true;
    nameRows();
}

void FrmInOut::Form_Load() {
    DisableSwitches();
    tellMaster();
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
}

void FrmInOut::tellMaster() {
    CurrentBank = 0;
    ParamWrite(PageOpenMarker, PageIsOpen);
}

void FrmInOut::Form_Activate() { PageCaptions(); }

/// The boards are left in test mode: they fall out of it when their time runs out.
void FrmInOut::Form_Unload() {
    withdrawOrders();
    CurrentBank = 0;
    ParamWrite(PageOpenMarker, PageIsClosed);
    ParamWrite(PageWord, PageIsClosed);
    PageRelease();
    Timer1.Enabled = false;
}

void FrmInOut::PageSubscribe() { WatchAll(Subscriptions); }

void FrmInOut::PageRelease() { ReleaseAll(Releases); }

void FrmInOut::SLabel_Change(int n, ParamValue value) {
    Updating = true;
    if (CurrentBank == 0) masterChanged(n, value);
    if (CurrentBank == alder::Bank) alderChanged(n, value);
    if (CurrentBank == cedar::Bank) cedarChanged(n, value);
    Updating = false;
}

void FrmInOut::masterChanged(int n, ParamValue value) {
    ShowLamps(LedX1, InputLamps, LitBy::ClearBits, n, value);
    if (n == SectorPresence && value != CedarPresence) {
        CedarPresence = value;
        if (SaysPresent(value)) {
            EnableCedarFrame();
        } else {
            DisableCedarFrame();
            CedarInTest = true;
        }
        presenceChanged();
    }
    if (n == HotDrinkPresence && value != AlderPresence) {
        AlderPresence = value;
        if (SaysPresent(value)) {
            EnableAlderFrame();
        } else {
            DisableAlderFrame();
            AlderInTest = true;
        }
        presenceChanged();
    }
}

void FrmInOut::presenceChanged() { Command1.Enabled = SaysPresent(CedarPresence) || SaysPresent(AlderPresence); }

/// Takes back what a switch has ordered, also on a board that is away at this moment.
void FrmInOut::Command1_Click() {
    Command1.Enabled = false;
    withdrawOrders();
    switchOrdered_ = false;
    const unsigned time = TestActive ? TestTimeStop : TestTimeRun;
    writeAlderTestTime(time);
    writeCedarTestTime(time);
}

/// The test begins when the last present board reports it and ends when the first one drops it.
void FrmInOut::TestStateReported() {
    const bool active = AlderInTest && CedarInTest;
    if (active == TestActive) return;
    Command1.Enabled = true;
    TestActive = active;
    ShowTestState();
    setSwitches(active);
}

/// An order that is still out when its page stops waiting must not run at some later time.
void FrmInOut::Timer1_Timer() {
    if (switchOrdered_) withdrawOrders();
    EnableSwitches();
    Timer1.Enabled = false;
    PendingEcho = {};
    PendingCompressor = false;
}

void FrmInOut::beginSwitchOrder() {
    switchOrdered_ = true;
    Timer1.Enabled = false;
    Timer1.Enabled = true;
}

/// Echoes of before the order can look like the answer to it: the five seconds go on until it has gone out.
void FrmInOut::echoUnlocks() {
    Timer1.Enabled = switchOrdered_ && (AlderHandshake.isUnderWay() || CedarHandshake.isUnderWay());
    EnableSwitches();
}

void FrmInOut::LineInterrupted() {
    withdrawOrders();
    presenceChanged();  // a start or a stop that did not go out can be given again
}

void FrmInOut::withdrawOrders() {
    AlderHandshake.withdraw();
    CedarHandshake.withdraw();
}

void FrmInOut::setSwitches(bool live) {
    setAlderSwitches(live);
    setCedarSwitches(live);
}

/// All outputs of a board have been told for the first time: until then an order would write some that nobody has read.
void FrmInOut::outputsTold() {
    const bool locked = PendingCompressor || std::ranges::count(PendingEcho, true) > 0;
    if (!locked) EnableSwitches();
}

}  // namespace kestrel
