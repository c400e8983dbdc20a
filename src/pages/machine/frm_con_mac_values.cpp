// Machine configuration: what the boards' values show, and when the controls are live.
#include <algorithm>

#include "link/presence.h"
#include "link/settings.h"
#include "link/value_helpers.h"
#include "pages/machine/frm_con_mac.h"
#include "pages/machine/frm_con_mac_tables.h"

namespace kestrel {

using namespace conmac;

namespace {

constexpr int FullSet = 31;  ///< arrivals that make a full first set

}  // namespace

std::string FrmConMac::numberLabels(int first, int last) {
    std::string labels = std::to_string(first);
    for (int k = first + 1; k <= last; ++k) labels += "," + std::to_string(k);
    return labels;
}

int& FrmConMac::countOf(int slider) {
    switch (slider) {
        case ValveSlider:
            return ValveCount;
        case MixerSlider:
            return MixerCount;
        default:
            return PowderCount;
    }
}

void FrmConMac::SLabel_Change(int n, ParamValue value) {
    if (Arrived(n, master::HotDrinkPresence)) takePresence(value);
    if (IsCurrent(Board::HotDrink) && takeHotDrinkValue(n, value)) ++ArrivalCount;
    if (FirstLoad && ArrivalCount >= FullSet) {
        EnableControls();
        FirstLoad = false;
    }
}

void FrmConMac::takePresence(ParamValue value) {
    if (value == Presence) return;
    Presence = value;
    if (SaysPresent(value))
        ++ArrivalCount;
    else
        DisableAllControls();
}

/// Whether the value counts towards the full first set.
bool FrmConMac::takeHotDrinkValue(int n, ParamValue value) {
    if (Arrived(n, hot_drink::CoolingKind)) return takeColdMode(static_cast<int>(value));
    for (int i = 0; i < Counts; ++i)
        if (Arrived(n, countRow(i).setting)) return takeCount(i, static_cast<int>(value));
    if (Arrived(n, hot_drink::MachineSugarBox)) {
        SugarBox = value > HighestSugarBox ? 0 : static_cast<int>(value);
        iSwSliderX2.Position = SugarBox;
        return true;
    }
    if (const int valve = ArrivedAt(n, hot_drink::ValveMixer.first(Valves)); valve >= 0) {
        MixerOfValve[static_cast<std::size_t>(valve)] = static_cast<int>(value);
        iSwRotaryX3[valve].Position = static_cast<int>(value);
        return true;
    }
    if (const int pairing = ArrivedAt(n, hot_drink::ColdValvePairing); pairing >= 0) {
        isrAbb[pairing].Position = static_cast<int>(std::min<ParamValue>(value, HighestColdPairing));
        return false;
    }
    return takeBar(n, value);
}

bool FrmConMac::takeBar(int n, ParamValue value) {
    if (const int powder = ArrivedAt(n, hot_drink::PowderDouble); powder >= 0) {
        SetBar(Label8s[powder], HScroll8[powder], value);
        return true;
    }
    for (std::size_t g = 0; g < valveGroups_.size(); ++g) {
        const ValveGroupRow& row = ValveGroupRows[g];
        const int valve = ArrivedAt(n, row.settings.first(Valves));
        if (valve < 0) continue;
        (row.tenths ? SetBarTenths : SetBar)(valveGroups_[g].values[valve], valveGroups_[g].bars[valve], value);
        return true;
    }
    return false;
}

bool FrmConMac::takeColdMode(int value) {
    ColdMode = value;
    offerCounts();
    if (FirstLoad) return true;
    if (value == WithColdPairing)
        EnableColdPairing();
    else
        DisableColdPairing();
    return false;
}

bool FrmConMac::takeCount(int slider, int value) {
    const CountRow& row = countRow(slider);
    const int shown = std::min(value, row.highestShown);
    // The number of valves is the only setting that the page corrects by itself.
    if (slider == ValveSlider && shown != value) {
        ParamWrite(row.setting, static_cast<unsigned>(shown));
    }
    countOf(slider) = shown;
    iSwSliderX1[slider].Position = shown - 1;
    if (AwaitingEnable) EnableControls();
    if (slider == PowderSlider) {
        AwaitingEnable = false;
        limitPowderBars();
        for (ScrollBar& bar : HScroll8) bar.Max = PowderCount;
    }
    return true;
}

void FrmConMac::limitPowderBars() {
    // A bar that is moved by its own limit was not moved by the user.
    const ByThePage moves(*this);
    for (std::size_t g = 0; g < PowderGroups; ++g)
        for (ScrollBar& bar : valveGroups_[g].bars) bar.Max = PowderCount;
}

void FrmConMac::EnableControls() {
    if (!SaysPresent(Presence)) return;
    const Speaking nobody(nullptr);  // some of what is shown here may not have come yet
    const ByThePage moves(*this);
    for (SliderSwitch& count : iSwSliderX1) count.Enabled = true;
    for (int i = 0; i < std::min<int>(ValveCount, Valves); ++i) {
        setValveLive(i, true);
        iSwRotaryX3[i].PositionLabels = numberLabels(0, MixerCount);
        iSwRotaryX3[i].Position = std::min(MixerOfValve[static_cast<std::size_t>(i)], MixerCount);
    }
    iSwSliderX2.Enabled = true;
    iSwSliderX2.PositionLabels = numberLabels(0, PowderCount);
    for (int i = 0; i < std::min<int>(PowderCount, Powders); ++i) setPowderLive(i, true);
    iSwSliderX2.Position = std::min(SugarBox, PowderCount);
    EnableColdPairing();
}

void FrmConMac::DisableAllControls() {
    for (SliderSwitch& count : iSwSliderX1) count.Enabled = false;
    for (int i = 0; i < Valves; ++i) setValveLive(i, false);
    iSwSliderX2.Enabled = false;
    for (int i = 0; i < Powders; ++i) setPowderLive(i, false);
    DisableColdPairing();
}

void FrmConMac::EnableColdPairing() {
    // Nothing is live without its board, whatever values still arrive.
    if (ColdMode == WithColdPairing && SaysPresent(Presence)) setColdPairingLive(true);
}

void FrmConMac::DisableColdPairing() { setColdPairingLive(false); }

void FrmConMac::setValveLive(int valve, bool live) {
    Labelx3[valve].Enabled = live;
    iSwRotaryX3[valve].Enabled = live;
    for (const ValveGroup& group : valveGroups_) {
        group.captions[valve].Enabled = live;
        group.bars[valve].Enabled = live;
        group.values[valve].Enabled = live;
    }
}

void FrmConMac::setPowderLive(int powder, bool live) {
    Label8[powder].Enabled = live;
    HScroll8[powder].Enabled = live;
    Label8s[powder].Enabled = live;
}

void FrmConMac::setColdPairingLive(bool live) {
    frAbb.Enabled = live;
    for (int i = 0; i < ColdRows; ++i) {
        isrAbb[i].Enabled = live;
        lblAbb[i].Enabled = live;
    }
}

}  // namespace kestrel
