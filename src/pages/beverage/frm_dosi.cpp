// Doses: how the page stands, how a selection is chosen and a field edited.
// See frm_dosi.h; its other subjects stand in files of their own beside this one.
#include "pages/beverage/frm_dosi.h"

#include "language/language_files.h"
#include "link/leaving.h"
#include "link/value_helpers.h"
#include "pages/common/own_words.h"
#include "pages/common/position_labels.h"

namespace kestrel {

namespace {

/// Beside the selection.
constexpr std::array<ParamRun, 3> OfTheMaster = {
    {master::MachineState, master::HotDrinkPresence, master::CommandArgument[0]}};

constexpr int TitleLine = 5;
constexpr int FirstFieldLine = 105;
constexpr std::array<int, 2> FullTestLines = {117, 119};
constexpr int SelectionLine = 120;
constexpr int PowderTestLine = 121;
constexpr int FirstStepLine = 122;
constexpr int FirstPropertyLine = 125;  ///< three switches and the jug count
constexpr int ColdLine = 129;
constexpr int PreselectionLine = 130;
constexpr int OnLine = 70;
constexpr int OffLine = 71;
constexpr int TestRunningLine = 402;

/// Indexes of Label5 that are not those of a switch's caption.
constexpr int JugCountCaption = 3;
constexpr int FreeCaption = 4;
constexpr int ColdCaption = 5;

constexpr int TimeLargeStep = 10;
constexpr int ValveLargeStep = 3;
constexpr int FirstValveDesignMax = 12;
constexpr int LaterValveDesignMax = 8;

std::string valveText(std::int64_t valve) {
    if (valve == FirstBrewerCode || valve == SecondBrewerCode)
        return valve == FirstBrewerCode ? FrmDosi::FirstBrewerText : FrmDosi::SecondBrewerText;
    return valve == 0 ? FrmDosi::OffText : std::to_string(valve);
}

void designStep(ControlArray<ScrollBar, RecipeFields>& bars, ControlArray<Label, RecipeFields>& values,
                int highestValve) {
    bars[ValveField].design(0, highestValve, ValveLargeStep);
    values[ValveField].showsValue("OFF");
    for (int field = ValveTimeField; field < RecipeFields; ++field) {
        bars[field].design(0, 255, TimeLargeStep);
        bars[field].scale.decimals = 1;
        bars[field].scale.unit = "s";
        values[field].showsValue("25.5");
    }
}

}  // namespace

FrmDosi::FrmDosi() : TablePage("FrmDosi", TitleLine, {}) {
    for (int i = 0; i < SelectionKeys; ++i) {
        Label11[i].Caption = std::to_string(i + 1);
        Label11[i].role = Label::Role::Key;
    }
    lblPres.Caption = "+" + std::to_string(SelectionKeys);
    lblPres.role = Label::Role::Key;
    lblVPres.role = Label::Role::Unit;  // of the number of the selection
    HScroll7.design(0, RecipeSelections - 1, 3);
    HScroll7.isSelector = true;
    HScroll1[ValveField].scale.words = valveText;
    HScroll5.design(1, 99, 10);
    Label5[JugCountValue].showsValue("99");
    Label5[FreeCaption].Caption = "bevanda gratis ?";
    TestLamp.namedBy(&TestLampName);
    TestLamp.standsForNoValue = true;
    SwitchX5[Step2Mask].Visible = false;
    SwitchX5[Step3Mask].Visible = false;
    for (int i = 0; i < RecipeSteps; ++i) {
        Step& each = step(i);
        designStep(each.bars, each.values, i == 0 ? FirstValveDesignMax : LaterValveDesignMax);
        for (int field = 0; field < RecipeFields; ++field) each.bars[field].namedBy(&each.captions[field]);
        for (int powder = 0; powder < PowderSolenoids; ++powder)
            each.tests[powder].namedBy(&each.captions[FirstPowderField + 2 * powder]);
        each.bars.OnChange([this, i](int Index) { HScroll_Change(i, Index); });
        each.tests.OnClick([this, i](int Index) { Command_Click(i, Index); });
    }
    Label11.OnClick([this](int Index) { Label11_Click(Index); });
    lblPres.OnClick([this] { lblPres_Click(); });
    HScroll7.OnChange([this] { HScroll7_Change(); });
    HScroll5.OnChange([this] { HScroll5_Change(); });
    SwitchX5.OnPositionChange([this](int Index) { SwitchX5_PositionChange(Index); });
    Command4.OnClick([this](int Index) { Command4_Click(Index); });
    Timer1.OnTimer([this] { Timer1_Timer(); });
    Timer3.OnTimer([this] { Timer3_Timer(); });
}

/// A field is its caption with the bar and value below; delay and time of one device stand side by side, in the order
/// in which they pass.
Layout FrmDosi::arrangeStep(int number) {
    Step& shown = step(number);
    const auto fieldCell = [&shown](int field) {
        return Grid(1, {shown.captions[field], Row{shown.bars[field], shown.values[field]}});
    };
    std::vector<Layout> cells = {fieldCell(ValveField), Gap(), Gap()};
    for (int field = ValveTimeField; field < RecipeFields; field += 2) {
        cells.push_back(fieldCell(field + 1));
        cells.push_back(fieldCell(field));
        const bool powder = field >= FirstPowderField;
        cells.push_back(powder ? Layout(shown.tests[(field - FirstPowderField) / 2]) : Gap());
    }
    return Group(shown.frame, Column{timeLines[number], Grid(3, std::move(cells))});
}

Layout FrmDosi::arrangeProperties() {
    return Row{
        Grid(2, {Label5[IncludedMask], SwitchX5[IncludedMask], Label5[FreeCaption], SwitchX5[FreeMask]}),
        Grid(2, {Label5[CupMask], SwitchX5[CupMask], Label5[ColdCaption], SwitchX5[ColdMask]}),
        Grid(3, {Label5[JugMask], SwitchX5[JugMask], Gap(), Label5[JugCountCaption], HScroll5, Label5[JugCountValue]}),
        Gap(),
    };
}

Layout FrmDosi::Arrange() {
    std::vector<Layout> keys = {lblPres};
    for (Label& key : Label11) keys.emplace_back(key);
    return Row{
        Group(Keypad, Grid(1, std::move(keys))),
        Column{
            Row{Label7, HScroll7, lblVPres, LoadingBar, Gap(), TestLamp, TestLampName, Command4[0], Command4[1]},
            Row{arrangeStep(0), arrangeStep(1), arrangeStep(2)},
            arrangeProperties(),
        },
    };
}

/// The recipe alone: the echo of an argument, which comes with the rest, would release a command.
void FrmDosi::ReadAgain() {
    const KeepSubscriptions kept;
    ReleaseSelection();
    WatchSelection();
    Form_Activate();
}

void FrmDosi::PageSubscribe() {
    WatchSelection();
    WatchAll(OfTheMaster);
}

void FrmDosi::PageRelease() {
    ReleaseSelection();
    ReleaseAll(OfTheMaster);
}

void FrmDosi::Form_Load() {
    TablePage::Form_Load();
    showPreselection();
    Label11_Click(0);
}

void FrmDosi::Form_Unload() {
    order_.withdraw();
    TablePage::Form_Unload();
}

void FrmDosi::PageCaptions() {
    TablePage::PageCaptions();
    for (int i = 0; i < RecipeSteps; ++i) {
        Step& each = step(i);
        each.frame.Caption = LanguageTable(FirstStepLine + i);
        for (CommandButton& test : each.tests) test.Caption = LanguageTable(PowderTestLine);
        for (int field = 0; field < RecipeFields; ++field)
            each.captions[field].Caption = LanguageTable(FirstFieldLine + field);
    }
    for (int i = 0; i < Command4.size(); ++i)
        Command4[i].Caption = LanguageTable(FullTestLines[static_cast<std::size_t>(i)]);
    for (int i = 0; i <= JugCountCaption; ++i) Label5[i].Caption = LanguageTable(FirstPropertyLine + i);
    Label5[ColdCaption].Caption = LanguageTable(ColdLine);
    for (SliderSwitch& slider : SwitchX5) slider.PositionLabels = TwoPositions(OffLine, OnLine);
    lblPres.ToolTip = OwnWord(Own::PlusNine);
    Label5[FreeCaption].ToolTip = OwnWord(Own::FreeBeverage);
    TestLampName.Caption = LanguageTable(TestRunningLine);
    showPreselection();
    showSelectionNumber();
    drawTimeLines();
}

void FrmDosi::showSelectionNumber() {
    Label7.Caption = LanguageTable(SelectionLine) + " " + std::to_string(SelectionIndex + 1);
    for (int i = 0; i < SelectionKeys; ++i) Label11[i].Chosen = SelectionIndex % SelectionKeys == i;
}

void FrmDosi::showPreselection() {
    lblVPres.Caption = PreselectionMode ? LanguageTable(PreselectionLine) : std::string();
    lblPres.Chosen = PreselectionMode;
}

/// What was changed of the former selection goes out first: what is due would stay behind unsaid.
void FrmDosi::Label11_Click(int Index) {
    WhenSettled(*this, [this, Index] { choose(Index); });
}

/// A bar that stands elsewhere runs this once more from inside, so that the selection is subscribed twice and later
/// released once: its subscriptions then last as long as the page, and its values are dropped on arrival.
void FrmDosi::choose(int Index) {
    LockPage();
    ReleaseSelection();
    SelectionIndex = PreselectionMode ? Index + SelectionKeys : Index;
    HScroll7.Value = SelectionIndex;
    WatchSelection();
    startLoading();
    awaitSelection();
    showSelectionNumber();
}

/// What stands here is the former selection's.
void FrmDosi::awaitSelection() {
    for (Step& each : steps_)
        for (int field = 0; field < RecipeFields; ++field) {
            each.bars[field].awaitValue();
            each.values[field].awaitValue();
        }
    drawTimeLines();
    for (SliderSwitch& slider : SwitchX5) slider.awaitValue();
    HScroll5.awaitValue();
    Label5[JugCountValue].awaitValue();
}

/// The selection on show stays: the toggle counts for the next key.
void FrmDosi::lblPres_Click() {
    PreselectionMode = !PreselectionMode;
    showPreselection();
}

void FrmDosi::HScroll7_Change() {
    PreselectionMode = HScroll7.Value >= SelectionKeys;
    showPreselection();
    Label11_Click(HScroll7.Value % SelectionKeys);
}

void FrmDosi::HScroll_Change(int number, int Index) {
    const Setting field = RecipeSetting(SelectionIndex, number, Index);
    ScrollBar& bar = step(number).bars[Index];
    if (dropsMoves_) return bar.putBack(static_cast<int>(ParamRead(field)));
    if (Updating) return;
    if (Index == ValveField) EventEdited = true;
    ParamWrite(field, static_cast<unsigned>(bar.Value.get()));
    drawTimeLines();
}

void FrmDosi::HScroll5_Change() {
    const Setting portions = hot_drink::JugPortions[SelectionIndex];
    if (dropsMoves_) return HScroll5.putBack(static_cast<int>(ParamRead(portions)));
    if (Updating) return;
    ParamWrite(portions, static_cast<unsigned>(HScroll5.Value.get()));
}

void FrmDosi::SwitchX5_PositionChange(int Index) {
    const Mask mask = static_cast<Mask>(Index);
    if (dropsMoves_) return SwitchX5[Index].putBack(storedMasks_.bit(mask, SelectionIndex) ? 1 : 0);
    if (Updating) return;
    const bool on = SwitchX5[Index].Position != 0;
    storedMasks_.change(mask, SelectionIndex, on);
    if (Index == JugMask) HScroll5.Enabled = on;
    if (Index == ColdMask) ApplyColdLayout();
}

}  // namespace kestrel
