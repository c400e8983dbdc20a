// Doses: what is locked and unlocked with what.
// Each step depends on the one before it; how far the recipe goes is read from the captions of the valves.
#include "pages/beverage/frm_dosi.h"

namespace kestrel {

namespace {

constexpr int ColdModeWithoutSteps = 3;

template <class Array>
void enable(Array& controls, bool live) {
    for (auto& control : controls) control.Enabled = live;
}

template <class Array>
void enableFields(Array& controls, int first, bool live) {
    for (int field = first; field < RecipeFields; ++field) controls[field].Enabled = live;
}

}  // namespace

void FrmDosi::enableKeys(bool live) { enable(Label11, live); }

void FrmDosi::enableFullTest(bool live) { enable(Command4, live); }

void FrmDosi::LockPage() {
    enableKeys(false);
    enableFullTest(false);
    HScroll7.Enabled = false;
    for (const Mask mask : {IncludedMask, CupMask, JugMask, ColdMask}) SwitchX5[mask].Enabled = false;
    HScroll1[ValveField].Enabled = false;
    Frame1.Enabled = false;
    LockFirstStep();
}

void FrmDosi::LockFirstStep() {
    HScroll5.Enabled = false;
    SwitchX5[JugMask].Enabled = false;
    HScroll2[ValveField].Enabled = false;
    Frame2.Enabled = false;
    enableFields(HScroll1, ValveTimeField, false);
    enable(Command1, false);
    LockSecondStep();
}

void FrmDosi::LockSecondStep() {
    SwitchX5[Step2Mask].Enabled = false;
    HScroll3[ValveField].Enabled = false;
    Frame3.Enabled = false;
    enableFields(HScroll2, ValveTimeField, false);
    enable(Command2, false);
    LockThirdStep();
}

void FrmDosi::LockThirdStep() {
    SwitchX5[Step3Mask].Enabled = false;
    enableFields(HScroll3, ValveTimeField, false);
    enable(Command3, false);
}

/// Of a brewer only the time is left.
void FrmDosi::LockFirstPowders() {
    enableFields(Label1, ValveTimeField + 1, false);
    enableFields(HScroll1, ValveTimeField + 1, false);
    enable(Command1, false);
}

/// Not in a test, whose end unlocks: an edit of before may be confirmed in it.
void FrmDosi::UnlockPage() {
    if (PendingCommand != 0) return;
    enableKeys(true);
    enableFullTest(true);
    HScroll7.Enabled = true;
    SwitchX5[IncludedMask].Enabled = true;
    SwitchX5[CupMask].Enabled = true;
    if (ColdMode != 0) SwitchX5[ColdMask].Enabled = true;
    HScroll1[ValveField].Enabled = true;
    Frame1.Enabled = true;
    if (unlockFirstStep() && unlockSecondStep()) unlockThirdStep();
}

bool FrmDosi::unlockFirstStep() {
    const std::string& valve = Label1[ValveField].Caption;
    if (valve == OffText) return false;
    if (BriccoIncluded) HScroll5.Enabled = true;
    SwitchX5[JugMask].Enabled = true;
    HScroll2[ValveField].Enabled = true;
    Frame2.Enabled = true;
    HScroll1[ValveTimeField].Enabled = true;
    if (valve == FirstBrewerText || valve == SecondBrewerText) return true;
    enableFields(HScroll1, ValveTimeField + 1, true);
    enableFields(Label1, ValveTimeField + 1, true);
    enable(Command1, true);
    return true;
}

bool FrmDosi::unlockSecondStep() {
    if (Label2[ValveField].Caption.get() == NoValveText) return false;
    SwitchX5[Step2Mask].Enabled = true;
    HScroll3[ValveField].Enabled = true;
    Frame3.Enabled = true;
    enableFields(HScroll2, ValveTimeField, true);
    enable(Command2, true);
    return true;
}

void FrmDosi::unlockThirdStep() {
    if (Label3[ValveField].Caption.get() == NoValveText) return;
    SwitchX5[Step3Mask].Enabled = true;
    enableFields(HScroll3, ValveTimeField, true);
    enable(Command3, true);
}

void FrmDosi::ApplyColdLayout() {
    const bool steps = !(SwitchX5[ColdMask].Position == 1 && ColdMode == ColdModeWithoutSteps);
    for (Step& step : steps_) step.frame.Visible = steps;
    for (Label& caption : Label1s) caption.Visible = steps;
}

}  // namespace kestrel
