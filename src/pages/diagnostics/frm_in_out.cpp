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

constexpr unsigned PageIsOpen = 255;
constexpr unsigned PageIsClosed = 0;

/// The one bit of the master's inputs that stands apart, then five in a row; the other two mean nothing.
constexpr std::array<LampRun, 2> InputLamps = {{{master::Inputs, 1, 1, 0}, {master::Inputs, 3, 5, 1}}};

constexpr std::array<ParamRun, 11> Subscriptions = {{
    master::SectorPresence,
    master::HotDrinkPresence,
    master::Inputs,
    master::TestPageWord,  // its value is never looked at
    {hot_drink::Inputs.front(), hot_drink::Outputs.back()},
    hot_drink::BoilerTemperature,
    hot_drink::TestState,
    {sector::OutputGroup, sector::OutputBit},
    sector::TankTemperature,
    sector::TestState,
    sector::TankOffset,
}};

/// More than was subscribed to: releasing what nobody watches changes nothing.
constexpr std::array<ParamRun, 10> Releases = {{
    {master::HotDrinkPresence, master::SectorPresence},
    master::Inputs,
    master::TestPageOpen,
    master::TestPageWord,
    {hot_drink::BoilerTemperature, hot_drink::TestState},
    {hot_drink::Command, hot_drink::CommandArgument.back()},
    {sector::TankTemperature, sector::TestState},
    sector::CommandArgument[0],
    sector::CommandArgument[1],
    sector::TankOffset,
}};

constexpr int TitleLine = 32;

}  // namespace

FrmInOut::FrmInOut() : TablePage("FrmInOut", TitleLine, {Subscriptions, Releases}) {
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
    TablePage::Form_Load();
}

void FrmInOut::tellMaster() { ParamWrite(master::TestPageOpen, PageIsOpen); }

/// The boards are left in test mode: they fall out of it when their time runs out.
void FrmInOut::Form_Unload() {
    withdrawOrders();
    ParamWrite(master::TestPageOpen, PageIsClosed);
    ParamWrite(master::TestPageWord, PageIsClosed);
    PageRelease();
    Timer1.Enabled = false;
}

void FrmInOut::SLabel_Change(int n, ParamValue value) {
    if (IsCurrent(Board::Master)) masterChanged(n, value);
    if (IsCurrent(Board::HotDrink)) hotDrinkChanged(n, value);
    if (IsCurrent(Board::Sector)) sectorChanged(n, value);
}

void FrmInOut::masterChanged(int n, ParamValue value) {
    ShowLamps(LedX1, InputLamps, LitBy::ClearBits, n, value);
    if (Arrived(n, master::SectorPresence) && value != CedarPresence) {
        CedarPresence = value;
        if (SaysPresent(value)) {
            EnableCedarFrame();
        } else {
            DisableCedarFrame();
            CedarInTest = true;
        }
        presenceChanged();
    }
    if (Arrived(n, master::HotDrinkPresence) && value != AlderPresence) {
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
    writeHotDrinkTestTime(time);
    writeSectorTestTime(time);
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
    setHotDrinkSwitches(live);
    setSectorSwitches(live);
}

/// All outputs of a board have been told for the first time: until then an order would write some that nobody has read.
void FrmInOut::outputsTold() {
    const bool locked = PendingCompressor || std::ranges::count(PendingEcho, true) > 0;
    if (!locked) EnableSwitches();
}

}  // namespace kestrel
