// Doses: having the machine run what the page shows, one powder solenoid or the whole selection.
// Orders go through the master's mailbox: two arguments, for a powder its time, and the command once all have come
// back.
#include "pages/beverage/frm_dosi.h"

namespace kestrel {

namespace {

constexpr Setting SecondArgument = master::CommandArgument[1];

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
    const ScrollBar& powder = step(number).bars[2 * Index + FirstPowderField];
    if (powder.unread()) return;
    const int time = powder.Value;
    setPendingCommand(PowderTest);
    order_.give(PowderTest,
                std::array{MailboxValue{FirstArgument, static_cast<unsigned>(SelectionIndex)},
                           MailboxValue{SecondArgument, static_cast<unsigned>(number * PowderSolenoids + Index)},
                           MailboxValue{master::PowderTestTime, static_cast<unsigned>(time)}});
    Timer3.Interval = time == 0 ? NoPowderMs : time * TenthMs + AfterPowderMs;
    LockPage();
    enableFullTest(false);
    Timer3.Enabled = true;
    PowderTestActive = true;
}

/// The selection as the machine's keypad names it: a key from 1, and whether it is pressed with preselection.
/// A vend of the machine's own, before the test, says nothing of its end.
void FrmDosi::Command4_Click(int Index) {
    const bool preselected = SelectionIndex >= SelectionKeys;
    MachineBusySeen = false;
    setPendingCommand(FullTests[static_cast<std::size_t>(Index)]);
    order_.give(PendingCommand,
                std::array{MailboxValue{FirstArgument, static_cast<unsigned>(SelectionIndex % SelectionKeys + 1)},
                           MailboxValue{SecondArgument, preselected ? 1U : 0U}});
    LockPage();
    Timer1.Enabled = true;
}

void FrmDosi::statusArrived(int n, ParamValue value) {
    if (Arrived(n, FirstArgument) || Arrived(n, SecondArgument) || Arrived(n, master::PowderTestTime))
        order_.mailboxCame();
    if (Arrived(n, FirstArgument) && PendingCommand == 0) {
        // The echo releases a command also when no test waits for one: command 0 then goes out.
        ParamWrite(master::Command, 0);
    } else if (Arrived(n, master::MachineState)) {
        machineStateArrived(value);
    } else if (Arrived(n, master::HotDrinkPresence)) {
        presenceArrived(value);
    }
}

void FrmDosi::machineStateArrived(ParamValue value) {
    if ((value & Dispensing) != 0) {
        MachineBusySeen = true;
    } else if (PendingCommand != 0 && MachineBusySeen && !PowderTestActive) {
        MachineBusySeen = false;
        endTest();
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
    if (!MachineBusySeen) endTest();
    Timer1.Enabled = false;
}

void FrmDosi::Timer3_Timer() {
    Timer3.Enabled = false;
    PowderTestActive = false;
    MachineBusySeen = false;
    endTest();
}

void FrmDosi::endTest() {
    order_.withdraw();
    setPendingCommand(0);
    UnlockPage();
}

}  // namespace kestrel
