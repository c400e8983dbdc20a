// Doses: the recipe of one selection at a time, chosen on a column of nine keys, and test dispensing of it.
// Only the chosen selection is subscribed; the page is locked while it loads, while the board is not ready, in a test.
#pragma once

#include <array>

#include "link/presence.h"
#include "pages/beverage/recipe.h"
#include "pages/common/mailbox.h"
#include "pages/common/table_page.h"
#include "platform/displays.h"
#include "platform/switches.h"
#include "platform/time_line.h"

namespace kestrel {

class FrmDosi : public TablePage {
  public:
    FrmDosi();

    Frame Keypad;
    ControlArray<Label, SelectionKeys> Label11;  ///< the keys
    Label lblPres;                               ///< preselection toggle
    Label lblVPres;                              ///< says that the toggle is on
    ScrollBar HScroll7;                          ///< all selections
    Label Label7;                                ///< number of the selection on show
    ProgressBar LoadingBar;                      ///< how many values of the selection have come

    ControlArray<TimeLine, RecipeSteps> timeLines;  ///< what each step lets run when, on one scale
    ControlArray<Label, RecipeFields> Label1s;      ///< captions of the fields
    Frame Frame1, Frame2, Frame3;                   ///< steps 1, 2, 3
    ControlArray<ScrollBar, RecipeFields> HScroll1, HScroll2, HScroll3;
    ControlArray<Label, RecipeFields> Label1, Label2, Label3;  ///< the valve's is also the page's memory of it
    ControlArray<CommandButton, PowderSolenoids> Command1, Command2, Command3;
    ControlArray<CommandButton, 2> Command4;  ///< the whole selection: water only, complete
    Led TestLamp;                             ///< a test runs
    Label TestLampName;

    ControlArray<SliderSwitch, Masks> SwitchX5;  ///< of step 2 and step 3 hidden
    ControlArray<Label, 10> Label5;              ///< captions of the switches and of the jug count, and its value
    ScrollBar HScroll5;                          ///< jug count

    Timer Timer1{2000};  ///< milliseconds; ends the wait for a dispense that never starts
    Timer Timer3;        ///< the time of a powder test

    /// How the valves are written in their labels, from which the locks read them back.
    static constexpr const char* OffText = "OFF";
    static constexpr const char* NoValveText = "0";
    static constexpr const char* FirstBrewerText = "FB1";
    static constexpr const char* SecondBrewerText = "FB2";

    Layout Arrange() override;
    void Form_Load() override;
    void Form_Unload() override;
    void SLabel_Change(int n, ParamValue value) override;
    void ReadAgain() override;
    void LineInterrupted() override { order_.withdraw(); }

  private:
    static constexpr Setting FirstArgument = master::CommandArgument[0];
    static constexpr int JugCountValue = 9;  ///< of Label5

    struct Step {
        Frame& frame;
        ControlArray<ScrollBar, RecipeFields>& bars;
        ControlArray<Label, RecipeFields>& values;
        ControlArray<CommandButton, PowderSolenoids>& tests;
        ControlArray<Label, RecipeFields>& captions;
    };

    Step& step(int number) { return steps_[static_cast<std::size_t>(number)]; }

    // Layout and texts (frm_dosi.cpp).
    Layout arrangeStep(int number);
    Layout arrangeProperties();
    void PageSubscribe() override;
    void PageRelease() override;
    void PageCaptions() override;
    void valueShown() override;
    void showSelectionNumber();
    void showPreselection();

    // The time lines (frm_dosi_time_lines.cpp).
    void drawTimeLines();
    std::vector<TimeLine::Lane> lanesOf(int number);

    // Choosing and editing (frm_dosi.cpp).
    void WatchSelection() { EachParameterOfSelection(SelectionIndex, Watch); }
    void ReleaseSelection() { EachParameterOfSelection(SelectionIndex, Release); }
    void Label11_Click(int Index);
    void choose(int Index);
    void awaitSelection();
    void lblPres_Click();
    void HScroll7_Change();
    void HScroll_Change(int number, int Index);
    void HScroll5_Change();
    void SwitchX5_PositionChange(int Index);

    // Values of the recipe (frm_dosi_values.cpp). False: the notification ends at once.
    bool recipeArrived(int n, ParamValue value);
    bool firstValveArrived(ParamValue value);
    void laterValveArrived(int number, ParamValue value);
    void maskArrived(SelectionMasks::Place place, ParamValue value);
    void coldModeArrived(ParamValue value);
    void eventMaxArrived(ParamValue value);
    void valveConfirmed();
    void explainBrewer(ParamValue valve);
    void count();
    void startLoading();
    void endLoading();

    // Locks (frm_dosi_locks.cpp).
    void LockPage();
    void LockFirstStep();
    void LockSecondStep();
    void LockThirdStep();
    void LockFirstPowders();
    void UnlockPage();
    bool unlockFirstStep();  ///< false: the recipe ends there
    bool unlockSecondStep();
    void unlockThirdStep();
    void enableKeys(bool live);
    void enableFullTest(bool live);
    void ApplyColdLayout();

    // Test dispensing (frm_dosi_test_dispensing.cpp).
    void Command_Click(int number, int Index);
    void setPendingCommand(unsigned code);
    void Command4_Click(int Index);
    void Timer1_Timer();
    void Timer3_Timer();
    void endTest();
    void statusArrived(int n, ParamValue value);
    void machineStateArrived(ParamValue value);
    void presenceArrived(ParamValue value);

    std::array<ControlArray<Label, RecipeFields>, RecipeSteps - 1> repeatedCaptions_;
    std::array<Step, RecipeSteps> steps_ = {{
        {Frame1, HScroll1, Label1, Command1, Label1s},
        {Frame2, HScroll2, Label2, Command2, repeatedCaptions_[0]},
        {Frame3, HScroll3, Label3, Command3, repeatedCaptions_[1]},
    }};

    int SelectionIndex = 0;
    bool PreselectionMode = false;
    int ArrivalCount = 0;
    ParamValue ColdMode = 0;
    bool BriccoIncluded = false;
    bool EventEdited = false;  ///< a valve bar was moved and its value has not come back
    ParamValue LastStatus = NoPresence;
    SelectionMasks storedMasks_;

    bool dropsMoves_ = false;  ///< a brewer's code was the last value to come

    unsigned PendingCommand = 0;  ///< waits for the echo of its argument; as long as it is not 0 a test runs
    Handshake order_{master::Command};
    bool MachineBusySeen = false;
    bool PowderTestActive = false;
};

}  // namespace kestrel
