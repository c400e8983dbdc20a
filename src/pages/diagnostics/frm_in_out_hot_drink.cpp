// In/Out test, the hot-drink board: inputs, boiler reading, and forty outputs that go as one image of five bytes.
#include <array>

#include "link/presence.h"
#include "pages/common/lamp_runs.h"
#include "pages/diagnostics/frm_in_out.h"

namespace kestrel {

namespace {

/// Bits that stand in no run mean nothing.
constexpr std::array<LampRun, 6> InputLamps = {{
    {hot_drink::Inputs[1], 1, 7, 0},
    {hot_drink::Inputs[2], 4, 4, 7},
    {hot_drink::Inputs[0], 0, 1, 11},
    {hot_drink::Inputs[0], 1, 1, 12},
    {hot_drink::Inputs[0], 3, 1, 14},
    {hot_drink::Inputs[0], 6, 1, 17},
}};

/// Lamps and captions that are switched with the frame; those after them follow it alone.
constexpr int SwitchedInputs = 11;

}  // namespace

void FrmInOut::EnableAlderFrame() {
    setHotDrinkFrame(true);
    if (TestActive) setHotDrinkSwitches(true);
}

void FrmInOut::DisableAlderFrame() {
    setHotDrinkFrame(false);
    setHotDrinkSwitches(false);
}

void FrmInOut::setHotDrinkSwitches(bool live) {
    for (LedSwitch& output : SwitchLed1) output.Enabled = live && hotDrinkTold_.all();
}

void FrmInOut::setHotDrinkFrame(bool live) {
    Frame2.Enabled = live;
    for (Label& caption : Label4) caption.Enabled = live;
    for (int i = 0; i < SwitchedInputs; ++i) {
        iLedRectangleX1[i].Enabled = live;
        Label3[i].Enabled = live;
    }
    Label6.Enabled = live;
}

void FrmInOut::hotDrinkChanged(int n, ParamValue value) {
    ShowLamps(iLedRectangleX1, InputLamps, LitBy::ClearBits, n, value);
    if (Arrived(n, hot_drink::BoilerTemperature)) iAnalogX1.Value = static_cast<double>(value);
    if (ArrivedAt(n, hot_drink::CommandArgument) >= 0) AlderHandshake.mailboxCame();
    if (const int byte = ArrivedAt(n, hot_drink::Outputs); byte >= 0) hotDrinkEcho(byte, value);
    if (Arrived(n, hot_drink::TestState)) {
        AlderInTest = HasBit(value, TestModeBit);
        TestStateReported();
    }
}

/// An echo that differs from what was sent changes the display and leaves the switches locked.
void FrmInOut::hotDrinkEcho(int byte, ParamValue value) {
    const auto b = static_cast<std::size_t>(byte);
    if (value == OutputByte[b] && PendingEcho[b]) {
        PendingEcho[b] = false;
        echoUnlocks();
    }
    OutputByte[b] = static_cast<std::uint8_t>(value);
    for (int bit = 0; bit < OutputsPerByte; ++bit) SwitchLed1[byte * OutputsPerByte + bit].Active = HasBit(value, bit);
    if (hotDrinkTold_.all()) return;
    hotDrinkTold_.set(b);
    if (hotDrinkTold_.all()) outputsTold();
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

    std::vector<MailboxValue> image;
    for (const std::uint8_t each : OutputByte)
        image.push_back({hot_drink::CommandArgument[static_cast<int>(image.size())], each});
    beginSwitchOrder();
    AlderHandshake.give(command::Outputs, image);
    rearmSector();
}

void FrmInOut::writeHotDrinkTestTime(unsigned time) {
    if (SaysPresent(AlderPresence))
        AlderHandshake.give(command::TestTime, std::array{MailboxValue{hot_drink::CommandArgument[0], time}});
}

/// Work on one board starts the other one's test time anew, so that both stay in test together. Outputs that are on
/// their way do so by themselves, and would be lost under it.
void FrmInOut::rearmHotDrink() {
    if (!AlderHandshake.isUnderWayWith(command::Outputs)) writeHotDrinkTestTime(TestTimeRun);
}

}  // namespace kestrel
