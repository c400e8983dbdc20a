// Doses: having the machine run what the page shows, one powder solenoid or the whole selection.
// Orders go through the master's mailbox: two arguments, and the command once the first argument has come back.
#include "pages/beverage/frm_dosi.h"

namespace kestrel {

namespace {

constexpr int CommandParameter = 4;
constexpr int SecondArgument = 6;
constexpr int PowderTestTime = 370;  ///< tenths of a second

constexpr unsigned PowderTest = 18;
constexpr std::array<unsigned, 2> FullTests = {26, 2};  ///< water only, complete

constexpr unsigned Dispensing = 2;  ///< bit of the machine's state

constexpr int TenthMs = 100;
constexpr int AfterPowderMs = 1000;  ///< that the page stays locked beyond the powder's time
constexpr int NoPowderMs = 100;

}  // namespace

void FrmDosi::setPendingCommand(unsigned code) {
    PendingCommand = code;
    TestLamp.Active = code != 0;
}

/// The solenoids of all steps count through. The selection counts from 0 here, unlike in a full test.
void FrmDosi::Command_Click(int number, int Index) {
    const int time = step(number).bars[2 * Index + FirstPowderField].Value;
    CurrentBank = 0;
    setPendingCommand(PowderTest);
    ParamWrite(FirstArgument, static_cast<unsigned>(SelectionIndex));
    ParamWrite(SecondArgument, static_cast<unsigned>(number * PowderSolenoids + Index));
    ParamWrite(PowderTestTime, static_cast<unsigned>(time));
    Timer3.Interval = time == 0 ? NoPowderMs : time * TenthMs + AfterPowderMs;
    LockPage();
    enableFullTest(false);
    Timer3.Enabled = true;
    PowderTestActive = true;
}

/// The selection as the machine's keypad names it: a key from 1, and whether it is pressed with preselection.
void FrmDosi::Command4_Click(int Index) {
    const bool preselected = SelectionIndex >= SelectionKeys;
    setPendingCommand(FullTests[static_cast<std::size_t>(Index)]);
    CurrentBank = 0;
    ParamWrite(FirstArgument, static_cast<unsigned>(SelectionIndex % SelectionKeys + 1));
    ParamWrite(SecondArgument, preselected ? 1 : 0);
    LockPage();
    Timer1.Enabled = true;
}

void FrmDosi::statusArrived(int n, ParamValue value) {
    if (n == FirstArgument) {
        // Every echo releases a command, also when no test waits for one: command 0 then goes out.
        CurrentBank = 0;
        ParamWrite(CommandParameter, PendingCommand);
    } else if (n == MachineState) {
        machineStateArrived(value);
    } else if (n == HotDrinkPresence) {
        presenceArrived(value);
    }
}

void FrmDosi::machineStateArrived(ParamValue value) {
    if ((value & Dispensing) != 0) {
        MachineBusySeen = true;
    } else if (PendingCommand != 0 && MachineBusySeen && !PowderTestActive) {
        MachineBusySeen = false;
        setPendingCommand(0);
        UnlockPage();
    }
}

/// A status that repeats does nothing: it does not unlock what a loading selection has locked.
void FrmDosi::presenceArrived(ParamValue value) {
    if (value == LastStatus) return;
    LastStatus = value;
    if (!SaysPresent(value))
        LockPage();
    else if (PendingCommand == 0)
        UnlockPage();
}

/// A dispense that has begun ends with the machine's own word; one that never began ends here.
void FrmDosi::Timer1_Timer() {
    if (!MachineBusySeen) {
        setPendingCommand(0);
        UnlockPage();
    }
    Timer1.Enabled = false;
}

void FrmDosi::Timer3_Timer() {
    Timer3.Enabled = false;
    PowderTestActive = false;
    MachineBusySeen = false;
    setPendingCommand(0);
    UnlockPage();
}

}  // namespace kestrel
