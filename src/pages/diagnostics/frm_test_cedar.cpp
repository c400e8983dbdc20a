// Model test: runs a pair of numbers and puts the motors to zero.
#include "pages/diagnostics/frm_test_cedar.h"

#include <array>

#include "language/language_files.h"
#include "link/presence.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/bits.h"
#include "pages/diagnostics/test_orders.h"

namespace kestrel {

namespace {

/// The first number of a pair is the second argument.
constexpr Setting SecondMailbox = master::CommandArgument[0];
constexpr Setting FirstMailbox = master::CommandArgument[1];
constexpr int RunningBit = 1;  ///< of the machine's state

constexpr unsigned RunPair = 2;
constexpr unsigned FirstFactor = 16;
constexpr unsigned SecondOffset = 11;

constexpr std::array<ParamRun, 3> Subscriptions = {{master::MachineState, master::SectorPresence, sector::TestState}};

/// More than was subscribed to: releasing what nobody watches changes nothing.
constexpr std::array<ParamRun, 7> Releases = {{
    master::MachineState,
    master::Command,
    SecondMailbox,
    FirstMailbox,
    master::SectorPresence,
    sector::TestState,
    sector::Command,
}};

constexpr int TitleLine = 33;
constexpr int Command1Line = 411;
constexpr int Label2Line = 412;
constexpr const char* NoPair = "_ _";

}  // namespace

FrmTestCedar::FrmTestCedar() : Page("FrmTestCedar"), pair_(master::Command) {
    for (int i = 0; i < Zones; ++i) Label1[i].Caption = std::to_string(i + 1);
    Label1.OnClick([this](int Index) { Label1_Click(Index); });
    Command1.OnClick([this] { Command1_Click(); });
    Timer1.OnTimer([this] { Timer1_Timer(); });
    Label2[1].showsValue("6 6");
    Label2[1].standsForNoValue = true;
}

Layout FrmTestCedar::Arrange() {
    std::vector<std::pair<Control*, std::string>> zones;
    zones.reserve(Zones);
    for (int i = 0; i < Zones; ++i) zones.emplace_back(&Label1[i], "zone" + std::to_string(i));
    return Column{
        Canvas(Image1, zones),
        Row{Label2[0], Label2[1], Gap(), Command1},
    };
}

void FrmTestCedar::Form_Load() {
    PageSubscribe();
    PageCaptions();
    Label2[1].Caption = NoPair;
    CenterPage(*this);
}

void FrmTestCedar::Form_Activate() { PageCaptions(); }

void FrmTestCedar::Form_Unload() {
    giveUp();
    PageRelease();
    Timer1.Enabled = false;
}

void FrmTestCedar::PageSubscribe() { WatchAll(Subscriptions); }

void FrmTestCedar::PageRelease() { ReleaseAll(Releases); }

void FrmTestCedar::PageCaptions() {
    Caption = LanguageTable(TitleLine);
    Command1.Caption = LanguageTable(Command1Line);
    Label2[0].Caption = LanguageTable(Label2Line);
}

void FrmTestCedar::Label1_Click(int Index) {
    if (FirstChoice == 0) {
        FirstChoice = Index + 1;
        Label2[1].Caption = std::to_string(FirstChoice) + " _";
        return;
    }
    SecondChoice = Index + 1;
    Label2[1].Caption = std::to_string(FirstChoice) + " " + std::to_string(SecondChoice);
    DisableZones();
    pair_.give(RunPair, std::array{MailboxValue{FirstMailbox, static_cast<unsigned>(FirstChoice) * FirstFactor},
                                   MailboxValue{SecondMailbox, static_cast<unsigned>(SecondChoice) + SecondOffset}});
    Timer1.Enabled = true;
}

void FrmTestCedar::Command1_Click() {
    DisableZones();
    forgetPair();
    ParamWrite(sector::Command, command::ZeroMotors);
}

/// The master did not start the pair in time.
void FrmTestCedar::Timer1_Timer() {
    backToIdle();
    TestRunning = false;
    Timer1.Enabled = false;
}

void FrmTestCedar::setZones(bool live) {
    Command1.Enabled = live;
    for (Label& zone : Label1) zone.Enabled = live;
}

void FrmTestCedar::forgetPair() {
    FirstChoice = 0;
    SecondChoice = 0;
    Label2[1].Caption = NoPair;
}

/// What drives motors must not go out once the page counts on it no more, however long the line was away.
void FrmTestCedar::giveUp() {
    pair_.withdraw();
    WithdrawWrite({sector::Command, command::ZeroMotors});
}

/// What already runs ends by the boards' word.
void FrmTestCedar::LineInterrupted() {
    giveUp();
    if (!TestRunning && !ZeroRunning && SaysPresent(CedarPresence)) backToIdle();
}

void FrmTestCedar::backToIdle() {
    giveUp();
    forgetPair();
    EnableZones();
}

void FrmTestCedar::SLabel_Change(int n, ParamValue value) {
    masterChanged(n, value);
    if (!Arrived(n, sector::TestState)) return;
    if (HasBit(value, ZeroingBit)) {
        ZeroRunning = true;
    } else if (ZeroRunning) {
        backToIdle();
        ZeroRunning = false;
    }
}

void FrmTestCedar::masterChanged(int n, ParamValue value) {
    // Other pages use the same mailbox for orders of their own; only a pair of this page is followed by its command.
    if (Arrived(n, FirstMailbox) || Arrived(n, SecondMailbox)) pair_.mailboxCame();
    if (Arrived(n, master::MachineState) && HasBit(value, RunningBit)) {
        TestRunning = true;
        Timer1.Enabled = false;
    } else if (Arrived(n, master::MachineState) && TestRunning) {
        backToIdle();
        TestRunning = false;
    }
    if (Arrived(n, master::SectorPresence) && value != CedarPresence) {
        CedarPresence = value;
        giveUp();
        setZones(SaysPresent(value));
    }
}

}  // namespace kestrel
