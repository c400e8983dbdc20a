// Doses: what the values of a selection do to the page.
// A value of another selection matches nothing and is dropped.
#include <algorithm>

#include "link/value_helpers.h"
#include "pages/beverage/frm_dosi.h"
#include "pages/common/own_words.h"

namespace kestrel {

namespace {

/// One less than the values of a selection that count: cooling, valves, the recipe, the jug count, six masks.
constexpr int ArrivalLimit = 59;

constexpr ParamValue HighestValve = 255;

int clamped(const ScrollBar& bar, ParamValue value) {
    return static_cast<int>(std::clamp<ParamValue>(value, bar.Min.get(), bar.Max.get()));
}

}  // namespace

void FrmDosi::SLabel_Change(int n, ParamValue value) {
    dropsMoves_ = false;
    if (IsCurrent(Board::Master)) statusArrived(n, value);
    // A brewer's code ends the notification at once: nothing that the user moves is written before the next value.
    dropsMoves_ = IsCurrent(Board::HotDrink) && !recipeArrived(n, value);
    if (dropsMoves_) keepUpdating();
    if (IsCurrent(Board::HotDrink)) drawTimeLines();
}

void FrmDosi::valueShown() {
    if (ArrivalCount < ArrivalLimit) return;
    endLoading();
    UnlockPage();
    ApplyColdLayout();
}

void FrmDosi::startLoading() {
    ArrivalCount = 0;
    LoadingBar.Max = ArrivalLimit;
    LoadingBar.Value = 0;
    LoadingBar.Visible = true;
}

void FrmDosi::count() {
    ++ArrivalCount;
    LoadingBar.Value = ArrivalCount;
}

void FrmDosi::endLoading() {
    ArrivalCount = 0;
    LoadingBar.Visible = false;
}

bool FrmDosi::recipeArrived(int n, ParamValue value) {
    if (const auto place = RecipePlaceOf(n, SelectionIndex)) {
        Step& shown = step(place->step);
        count();
        if (place->field != ValveField)
            SetBarTenths(shown.values[place->field], shown.bars[place->field], value);
        else if (place->step == 0)
            return firstValveArrived(value);
        else
            laterValveArrived(place->step, value);
    } else if (const auto mask = SelectionMasks::placeOf(n)) {
        maskArrived(*mask, value);
    } else if (Arrived(n, hot_drink::JugPortions[SelectionIndex])) {
        SetBar(Label5[JugCountValue], HScroll5, value);
        count();
    } else if (Arrived(n, hot_drink::CoolingKind)) {
        coldModeArrived(value);
    } else if (Arrived(n, hot_drink::MachineValves)) {
        eventMaxArrived(value);
    }
    return true;
}

bool FrmDosi::firstValveArrived(ParamValue value) {
    const int shown = clamped(HScroll1[ValveField], value);
    HScroll1[ValveField].Value = shown;
    explainBrewer(value);
    if (value == FirstBrewerCode || value == SecondBrewerCode) {
        Label1[ValveField].Caption = HScroll1[ValveField].textOf(static_cast<int>(value));
        // Moved here from none in one go, it opens what the valves between would have opened.
        if (EventEdited && !LoadingBar.Visible) UnlockPage();
        LockFirstPowders();
        return false;
    }
    Label1[ValveField].Caption = shown == 0 ? OffText : std::to_string(shown);
    if (shown == 0)
        LockFirstStep();
    else
        valveConfirmed();
    return true;
}

void FrmDosi::explainBrewer(ParamValue valve) {
    std::string words;
    if (valve == FirstBrewerCode) words = OwnWord(Own::FirstBrewer);
    if (valve == SecondBrewerCode) words = OwnWord(Own::SecondBrewer);
    Label1[ValveField].ToolTip = words;
    HScroll1[ValveField].ToolTip = words;
}

void FrmDosi::laterValveArrived(int number, ParamValue value) {
    ScrollBar& bar = step(number).bars[ValveField];
    const int shown = clamped(bar, value);
    bar.Value = shown;
    step(number).values[ValveField].Caption = std::to_string(shown);
    if (shown != 0)
        valveConfirmed();
    else if (number == 1)
        LockSecondStep();
    else
        LockThirdStep();
}

void FrmDosi::valveConfirmed() {
    if (!EventEdited) return;
    UnlockPage();
    EventEdited = false;
}

void FrmDosi::maskArrived(SelectionMasks::Place place, ParamValue value) {
    storedMasks_.store(place, value);
    if (place.mask != FreeMask) count();
    if (!place.holds(SelectionIndex)) return;
    const bool on = storedMasks_.bit(place.mask, SelectionIndex);
    SwitchX5[place.mask].Position = on ? 1 : 0;
    if (place.mask == JugMask) BriccoIncluded = on;
    if (place.mask == ColdMask) ApplyColdLayout();
}

void FrmDosi::coldModeArrived(ParamValue value) {
    ColdMode = value;
    ApplyColdLayout();
    SwitchX5[ColdMask].Enabled = ColdMode != 0;
    count();
}

void FrmDosi::eventMaxArrived(ParamValue value) {
    const int highest = static_cast<int>(std::min<ParamValue>(value, HighestValve));
    HScroll1[ValveField].Max = highest + 2;
    HScroll2[ValveField].Max = highest;
    HScroll3[ValveField].Max = highest;
    count();
}

}  // namespace kestrel
