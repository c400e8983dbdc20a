// In/Out test, the Cedar board: tank reading, compressor, and forty-eight outputs of which one at a time is on.
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
    setCedarFrame(true);
    if (TestActive) setCedarSwitches(true);
}

void FrmInOut::DisableCedarFrame() {
    setCedarFrame(false);
    setCedarSwitches(false);
}

void FrmInOut::setCedarSwitches(bool live) {
    for (LedSwitch& output : SwitchLed3) output.Enabled = live && cedarTold_;
    SwitchLed4.Enabled = live && cedarTold_;
}

void FrmInOut::setCedarFrame(bool live) {
    Frame3.Enabled = live;
    for (Label& caption : Label5) caption.Enabled = live;
    Label8.Enabled = live;
    Label2.Enabled = live;
}

void FrmInOut::cedarChanged(int n, ParamValue value) {
    switch (n) {
        case cedar::ReadingOffset:
            CedarOffset = value - OffsetOfZero;
            break;
        case cedar::GroupMailbox:
        case cedar::BitMailbox:
            CedarHandshake.mailboxCame();
            break;
        case cedar::TankReading:
            cedarReading(value);
            break;
        case cedar::GroupEcho:
            CedarGroupNew = value;
            groupTold_ = true;
            break;
        case cedar::BitEcho:
            cedarEcho(value);
            break;
        case cedar::TestState:
            CedarInTest = HasBit(value, TestModeBit);
            TestStateReported();
            break;
        default:
            break;
    }
}

/// The reading has a fraction in its low byte and, with the correction, a sign in its high byte.
void FrmInOut::cedarReading(ParamValue value) {
    constexpr double Fraction = 256.0;
    constexpr int SignFrom = 128;
    constexpr int Turn = 256;
    if (ParamIsFresh(cedar::ReadingOffset, cedar::Bank)) {
        CedarReading = std::nearbyint(static_cast<double>(value) / Fraction + static_cast<double>(CedarOffset));
        if (CedarReading >= SignFrom) CedarReading -= Turn;
    }
    const ShowMirror corrected(cedar::ReadingOffset, cedar::Bank);
    iAnalogX2.Value = CedarReading;
}

/// Both echoes belong together; the pair is whole when the second one comes. The switches unlock on the first pair
/// that repeats, not on the first that changes.
void FrmInOut::cedarEcho(ParamValue bitByte) {
    const bool repeated = bitByte == CedarBit && CedarGroupNew == CedarGroup;
    CedarGroup = CedarGroupNew;
    CedarBit = bitByte;
    const int group = lowestBit(CedarGroup, GroupMask, NoGroup);
    const int bit = lowestBit(CedarBit, BitMask, NoBit);
    const int on = group < NoGroup && bit < NoBit ? group * OutputsPerByte + bit : NoOutput;
    for (int i = 0; i < CedarOutputs; ++i) SwitchLed3[i].Active = i == on;
    SwitchLed4.Active = HasBit(CedarGroup, CompressorBit);
    if (!cedarTold_ && groupTold_) {
        cedarTold_ = true;
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
        writeCedarOutput(compressor, 0);
        LastCedarOutput = NoOutput;
    } else {
        writeCedarOutput(1U << (Index / OutputsPerByte) | compressor, 1U << (Index % OutputsPerByte));
        LastCedarOutput = Index;
    }
    SwitchLed3[Index].Active = !SwitchLed3[Index].Active;
    Updating = false;
    rearmAlder();
}

/// The output that is on stays on: its byte goes again with the new group byte.
void FrmInOut::SwitchLed4_Click() {
    if (Updating) return;
    Updating = true;
    PendingCompressor = true;
    DisableSwitches();
    beginSwitchOrder();
    const auto group = static_cast<unsigned>(CedarGroup);
    writeCedarOutput(SwitchLed4.Active ? group | CompressorMask : group & ~CompressorMask,
                     static_cast<unsigned>(CedarBit));
    SwitchLed4.Active = !SwitchLed4.Active;
    Updating = false;
    rearmAlder();
}

void FrmInOut::writeCedarOutput(unsigned group, unsigned bit) {
    CedarHandshake.give(command::Outputs,
                        std::array{MailboxValue{cedar::GroupMailbox, group}, MailboxValue{cedar::BitMailbox, bit}});
}

void FrmInOut::writeCedarTestTime(unsigned time) {
    if (SaysPresent(CedarPresence))
        CedarHandshake.give(command::TestTime, std::array{MailboxValue{cedar::GroupMailbox, time}});
}

void FrmInOut::rearmCedar() {
    if (!CedarHandshake.isUnderWayWith(command::Outputs)) writeCedarTestTime(TestTimeRun);
}

}  // namespace kestrel
