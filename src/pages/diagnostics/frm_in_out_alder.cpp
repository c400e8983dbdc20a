// In/Out test, the Alder board: inputs, boiler reading, and forty outputs that go as one image of five bytes.
#include <array>

#include "link/presence.h"
#include "pages/common/lamp_runs.h"
#include "pages/diagnostics/frm_in_out.h"

namespace kestrel {

namespace {

/// Bits that stand in no run mean nothing.
constexpr std::array<LampRun, 6> InputLamps = {{
    {alder::Inputs2, 1, 7, 0},
    {alder::Inputs3, 4, 4, 7},
    {alder::Inputs1, 0, 1, 11},
    {alder::Inputs1, 1, 1, 12},
    {alder::Inputs1, 3, 1, 14},
    {alder::Inputs1, 6, 1, 17},
}};

/// Lamps and captions that are switched with the frame; those after them follow it alone.
constexpr int SwitchedInputs = 11;

}  // namespace

void FrmInOut::EnableAlderFrame() {
    setAlderFrame(true);
    if (TestActive) setAlderSwitches(true);
}

void FrmInOut::DisableAlderFrame() {
    setAlderFrame(false);
    setAlderSwitches(false);
}

void FrmInOut::setAlderSwitches(bool live) {
    for (LedSwitch& output : SwitchLed1) output.Enabled = live && alderTold_.all();
}

void FrmInOut::setAlderFrame(bool live) {
    Frame2.Enabled = live;
    for (Label& caption : Label4) caption.Enabled = live;
    for (int i = 0; i < SwitchedInputs; ++i) {
        iLedRectangleX1[i].Enabled = live;
        Label3[i].Enabled = live;
    }
    Label6.Enabled = live;
}

void FrmInOut::alderChanged(int n, ParamValue value) {
    ShowLamps(iLedRectangleX1, InputLamps, LitBy::ClearBits, n, value);
    if (n == alder::BoilerReading) iAnalogX1.Value = static_cast<double>(value);
    if (n >= alder::Mailbox && n < alder::Mailbox + alder::MailboxBytes) AlderHandshake.mailboxCame();
    if (n >= alder::OutputEcho && n < alder::OutputEcho + alder::MailboxBytes) alderEcho(n - alder::OutputEcho, value);
    if (n == alder::TestState) {
        AlderInTest = HasBit(value, TestModeBit);
        TestStateReported();
    }
}

/// An echo that differs from what was sent changes the display and leaves the switches locked.
void FrmInOut::alderEcho(int byte, ParamValue value) {
    const auto b = static_cast<std::size_t>(byte);
    if (value == OutputByte[b] && PendingEcho[b]) {
        PendingEcho[b] = false;
        echoUnlocks();
    }
    OutputByte[b] = static_cast<std::uint8_t>(value);
    for (int bit = 0; bit < OutputsPerByte; ++bit) SwitchLed1[byte * OutputsPerByte + bit].Active = HasBit(value, bit);
    if (alderTold_.all()) return;
    alderTold_.set(b);
    if (alderTold_.all()) outputsTold();
}

void FrmInOut::SwitchLed1_Click(int Index) {
    if (Updating) return;
    Updating = true;
    const auto byte = static_cast<std::size_t>(Index / OutputsPerByte);
    const int mask = 1 << (Index % OutputsPerByte);
    const bool wanted = SwitchLed1[Index].Active;
    OutputByte[byte] = static_cast<std::uint8_t>(wanted ? OutputByte[byte] | mask : OutputByte[byte] & ~mask);
    SwitchLed1[Index].Active = !wanted;
    PendingEcho[byte] = true;
    Updating = false;
    DisableSwitches();

    std::array<MailboxValue, alder::MailboxBytes> image{};
    for (int i = 0; i < alder::MailboxBytes; ++i)
        image[static_cast<std::size_t>(i)] = {alder::Mailbox + i, OutputByte[static_cast<std::size_t>(i)]};
    beginSwitchOrder();
    AlderHandshake.give(command::Outputs, image);
    rearmCedar();
}

void FrmInOut::writeAlderTestTime(unsigned time) {
    if (SaysPresent(AlderPresence))
        AlderHandshake.give(command::TestTime, std::array{MailboxValue{alder::Mailbox, time}});
}

/// Work on one board starts the other one's test time anew, so that both stay in test together. Outputs that are on
/// their way do so by themselves, and would be lost under it.
void FrmInOut::rearmAlder() {
    if (!AlderHandshake.isUnderWayWith(command::Outputs)) writeAlderTestTime(TestTimeRun);
}

}  // namespace kestrel
