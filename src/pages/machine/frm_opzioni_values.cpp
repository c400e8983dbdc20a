// Options: what the boards' values show, and when the groups are live.
#include "link/identification.h"
#include "link/money.h"
#include "link/presence.h"
#include "link/settings.h"
#include "link/value_helpers.h"
#include "pages/common/show_mirror.h"
#include "pages/machine/frm_opzioni.h"
#include "pages/machine/frm_opzioni_tables.h"

namespace kestrel {

using namespace opzioni;

namespace {

constexpr int MoreThan = 20;  ///< arrivals, for the first full set

}  // namespace

void FrmOpzioni::SLabel_Change(int n, ParamValue value) {
    const bool taken = takeOptionByte(n, value) || takeScalar(n, value) || takeSingle(n, value);
    if (FirstLoad && taken) ++ArrivalCount;
}

void FrmOpzioni::valueShown() {
    if (FirstLoad && ArrivalCount > MoreThan) endFirstLoad();
}

void FrmOpzioni::endFirstLoad() {
    FirstLoad = false;
    setMasterLive(true);
    if (SaysPresent(CedarPresence)) setSectorLive(true);
    if (SaysPresent(AlderPresence)) setHotDrinkLive(true);
    setDecimalsLive(!paymentFixesDecimals());
}

bool FrmOpzioni::takeOptionByte(int n, ParamValue value) {
    for (std::size_t byte = 0; byte < ByteSettings.size(); ++byte) {
        if (!Arrived(n, ByteSettings[byte])) continue;
        latest_[byte] = static_cast<unsigned>(value);
        for (const ToggleRow& row : ToggleRows)
            if (row.byte == byte) {
                // Where the master has the credit time-out, its own byte is the one that is written.
                const bool ofOtherByte = row.index == CreditTimeout && BoardRevision() == RevisionWithCreditTimeout;
                const Speaking board(nullptr, ofOtherByte ? NoBoard : int{CurrentBank});
                SwitchX1[row.index].Active = (latest_[byte] >> row.bit & 1) != 0;
            }
        if (byte == PaymentByte) showPaymentSystem();
        // The master has taken the credit time-out with its byte; what the bit says is not read back.
        if (byte == CreditTimeoutOnMaster.byte && BoardRevision() == RevisionWithCreditTimeout)
            SwitchX1[CreditTimeout].Active = SwitchX1[CreditTimeout].Active;
        return true;
    }
    return false;
}

bool FrmOpzioni::takeScalar(int n, ParamValue value) {
    for (int i = 0; i < Bars; ++i) {
        if (!Arrived(n, BarRows[static_cast<std::size_t>(i)].setting)) continue;
        SetBar(Label10[i], HScroll1[i], value);
        return true;
    }
    for (int i = 0; i < Fields; ++i) {
        if (!Arrived(n, FieldRows[static_cast<std::size_t>(i)].field.setting)) continue;
        Text1[i].Text = std::to_string(value);
        return true;
    }
    for (std::size_t board = 0; board < RevisionRows.size(); ++board) {
        if (!Arrived(n, RevisionRows[board].revision)) continue;
        Label7[static_cast<int>(board)].Caption = FormatAmount(value, 1);
        if (board == PowerBoard) SetPowerBoardRevision(static_cast<int>(value));
        return true;
    }
    return false;
}

bool FrmOpzioni::takeSingle(int n, ParamValue value) {
    if (Arrived(n, hot_drink::CoolingKind)) {
        SlswitchX4.Position = value > 1 ? 0 : static_cast<int>(value);
        return true;
    }
    if (!IsCurrent(Board::Master)) return false;
    switch (n) {
        case master::HotDrinkPresence.number:
            return takePresence(AlderPresence, value, &FrmOpzioni::setHotDrinkLive);
        case master::SectorPresence.number:
            return takePresence(CedarPresence, value, &FrmOpzioni::setSectorLive);
        case master::MoneyDecimals.number:
            SlswitchX2.Position = DecimalsOf(value);
            return true;
        case master::MachineState.number:
            return takeFeatures(value);
        case master::DisplayLanguage.number:
            LanguageIndex = static_cast<int>(value);
            SlswitchX1.Position = LanguageIndex > SlswitchX1.top() ? 0 : LanguageIndex;
            return true;
        default:
            return false;
    }
}

bool FrmOpzioni::takePresence(ParamValue& last, ParamValue value, void (FrmOpzioni::*setLive)(bool)) {
    if (value == last) return false;
    last = value;
    // A toggle of a byte that has not come yet would write the byte's other bits away.
    if (!FirstLoad) (this->*setLive)(SaysPresent(value));
    return true;
}

bool FrmOpzioni::takeFeatures(ParamValue value) {
    if (value == Features) return false;
    Features = value;
    SlswitchX1.PositionLabels = (value & HasEightLanguages) != 0 ? "0,1,2,3,4,5,6,7" : "0,1,2,3";
    if (LanguageIndex > SlswitchX1.top()) LanguageIndex = 0;
    const ShowMirror shown(master::DisplayLanguage);
    SlswitchX1.Position = LanguageIndex;
    return true;
}

bool FrmOpzioni::paymentFixesDecimals() const { return (latest_[PaymentByte] & (ExecutiveBit | MdbBit)) != 0; }

void FrmOpzioni::showPaymentSystem() {
    const unsigned system = latest_[PaymentByte];
    if ((system & MdbBit) != 0)
        SlswitchX5.Position = 3;
    else if ((system & ExecutiveBit) != 0)
        SlswitchX5.Position = 2;
    else
        SlswitchX5.Position = static_cast<int>(system & 1);
    if (paymentFixesDecimals())
        setDecimalsLive(false);
    else if (!FirstLoad)
        setDecimalsLive(true);
}

void FrmOpzioni::setToggleLive(int index, bool live) {
    Label1[index].Enabled = live;
    SwitchX1[index].Enabled = live;
}

void FrmOpzioni::setDecimalsLive(bool live) {
    Label5[0].Enabled = live;
    SlswitchX2.Enabled = live;
}

void FrmOpzioni::setMasterLive(bool live) {
    for (const int index : {9, 10, 11, 12}) setToggleLive(index, live);
    setDecimalsLive(live);
    for (Control* control :
         std::initializer_list<Control*>{&Label4, &SlswitchX1, &Label9, &SlswitchX5, &Label5[4], &SlswitchX4})
        control->Enabled = live;
}

void FrmOpzioni::setHotDrinkLive(bool live) {
    for (const int index : {0, 1, 2, 3, 4, 5, 13}) setToggleLive(index, live);
    for (int i = 0; i < Bars; ++i) {
        HScroll1[i].Enabled = live;
        Label10[i].Enabled = live;
        Label6[i].Enabled = live;
    }
}

void FrmOpzioni::setSectorLive(bool live) {
    for (const int index : {8, 14, 21, 22}) setToggleLive(index, live);
}

}  // namespace kestrel
