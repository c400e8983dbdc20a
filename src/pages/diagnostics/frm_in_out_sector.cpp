// In/Out test, the sector board: tank reading, compressor, and forty-eight outputs of which one at a time is on.
#include <bit>
#include <cmath>

#include "link/presence.h"
#include "pages/common/lamp_runs.h"
#include "pages/common/show_mirror.h"
#include "pages/diagnostics/frm_in_out.h"

namespace kestrel {

namespace {

constexpr int CompressorBit = 7;
constexpr unsigned CompressorMask = 1U << CompressorBit;
constexpr unsigned GroupMask = 0x3F;
constexpr int NoGroup = 6;
constexpr unsigned BitMask = 0xFF;
constexpr int NoBit = 8;

/// A correction of 0 is stored as 5.
constexpr int OffsetOfZero = 5;

int lowestBit(ParamValue value, unsigned mask, int none) {
    const unsigned bits = static_cast<unsigned>(value) & mask;
    return bits == 0 ? none : std::countr_zero(bits);
}

}  // namespace

void FrmInOut::EnableCedarFrame() {
    setSectorFrame(true);
    if (TestActive) setSectorSwitches(true);
}

void FrmInOut::DisableCedarFrame() {
    setSectorFrame(false);
    setSectorSwitches(false);
}

void FrmInOut::setSectorSwitches(bool live) {
    for (LedSwitch& output : SwitchLed3) output.Enabled = live && sectorTold_;
    SwitchLed4.Enabled = live && sectorTold_;
}

void FrmInOut::setSectorFrame(bool live) {
    Frame3.Enabled = live;
    for (Label& caption : Label5) caption.Enabled = live;
    Label8.Enabled = live;
    Label2.Enabled = live;
}

void FrmInOut::sectorChanged(int n, ParamValue value) {
    switch (n) {
        case sector::TankOffset.number:
            CedarOffset = value - OffsetOfZero;
            break;
        case sector::CommandArgument[0].number:
        case sector::CommandArgument[1].number:
            CedarHandshake.mailboxCame();
            break;
        case sector::TankTemperature.number:
            sectorReading(value);
            break;
        case sector::OutputGroup.number:
            CedarGroupNew = value;
            groupTold_ = true;
            break;
        case sector::OutputBit.number:
            sectorEcho(value);
            break;
        case sector::TestState.number:
            CedarInTest = HasBit(value, TestModeBit);
            TestStateReported();
            break;
        default:
            break;
    }
}

/// The reading has a fraction in its low byte and, with the correction, a sign in its high byte.
void FrmInOut::sectorReading(ParamValue value) {
    constexpr double Fraction = 256.0;
    constexpr int SignFrom = 128;
    constexpr int Turn = 256;
    if (ParamIsFresh(sector::TankOffset)) {
        CedarReading = std::nearbyint(static_cast<double>(value) / Fraction + static_cast<double>(CedarOffset));
        if (CedarReading >= SignFrom) CedarReading -= Turn;
    }
    const ShowMirror corrected(sector::TankOffset);
    iAnalogX2.Value = CedarReading;
}

/// Both echoes belong together; the pair is whole when the second one comes. The switches unlock on the first pair
/// that repeats, not on the first that changes.
void FrmInOut::sectorEcho(ParamValue bitByte) {
    const bool repeated = bitByte == CedarBit && CedarGroupNew == CedarGroup;
    CedarGroup = CedarGroupNew;
    CedarBit = bitByte;
    const int group = lowestBit(CedarGroup, GroupMask, NoGroup);
    const int bit = lowestBit(CedarBit, BitMask, NoBit);
    const int on = group < NoGroup && bit < NoBit ? group * OutputsPerByte + bit : NoOutput;
    for (int i = 0; i < SectorOutputs; ++i) SwitchLed3[i].Active = i == on;
    SwitchLed4.Active = HasBit(CedarGroup, CompressorBit);
    if (!sectorTold_ && groupTold_) {
        sectorTold_ = true;
        outputsTold();
    }
    if (!repeated || !(PendingEcho.back() || PendingCompressor)) return;
    PendingEcho.back() = false;
    PendingCompressor = false;
    echoUnlocks();
}

void FrmInOut::SwitchLed3_Click(int Index) {
    if (Updating) return;
    Updating = true;
    PendingEcho.back() = true;
    DisableSwitches();
    beginSwitchOrder();
    const unsigned compressor = static_cast<unsigned>(CedarGroup) & CompressorMask;
    if (LastCedarOutput == Index) {
        writeSectorOutput(compressor, 0);
        LastCedarOutput = NoOutput;
    } else {
        writeSectorOutput(1U << (Index / OutputsPerByte) | compressor, 1U << (Index % OutputsPerByte));
        LastCedarOutput = Index;
    }
    SwitchLed3[Index].Active = !SwitchLed3[Index].Active;
    Updating = false;
    rearmHotDrink();
}

/// The output that is on stays on: its byte goes again with the new group byte.
void FrmInOut::SwitchLed4_Click() {
    if (Updating) return;
    Updating = true;
    PendingCompressor = true;
    DisableSwitches();
    beginSwitchOrder();
    const auto group = static_cast<unsigned>(CedarGroup);
    writeSectorOutput(SwitchLed4.Active ? group | CompressorMask : group & ~CompressorMask,
                      static_cast<unsigned>(CedarBit));
    SwitchLed4.Active = !SwitchLed4.Active;
    Updating = false;
    rearmHotDrink();
}

void FrmInOut::writeSectorOutput(unsigned group, unsigned bit) {
    CedarHandshake.give(command::Outputs, std::array{MailboxValue{sector::CommandArgument[0], group},
                                                     MailboxValue{sector::CommandArgument[1], bit}});
}

void FrmInOut::writeSectorTestTime(unsigned time) {
    if (SaysPresent(CedarPresence))
        CedarHandshake.give(command::TestTime, std::array{MailboxValue{sector::CommandArgument[0], time}});
}

void FrmInOut::rearmSector() {
    if (!CedarHandshake.isUnderWayWith(command::Outputs)) writeSectorTestTime(TestTimeRun);
}

}  // namespace kestrel
