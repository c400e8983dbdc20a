// Clearing: orders the master to clear its sales data.
#include "pages/sales/frm_cancella.h"

#include "language/language_files.h"
#include "link/identification.h"
#include "link/settings.h"
#include "link/value_helpers.h"
#include "pages/common/confirmation.h"
#include "pages/common/own_words.h"

namespace kestrel {

namespace {

struct Clearing {
    int line;          ///< of the button's caption
    unsigned command;  ///< what the master is told
};

/// By index of the button.
constexpr std::array<Clearing, 2> Clearings = {{{257, 1}, {259, 7}}};

constexpr int FirstRevisionOfSecond = 26;
constexpr int ShortFrame = 2175;  ///< twips
constexpr int TallFrame = 2895;   ///< twips
constexpr int Steps = 20;

constexpr int TitleLine = 21;
constexpr int DoneLine = 258;
constexpr int TotalsLine = 15;

bool hasSecondButton() { return BoardRevision() >= FirstRevisionOfSecond; }

}  // namespace

FrmCancella::FrmCancella() : TablePage("FrmCancella", TitleLine, {}) {
    lbrInfo.PositionMax = Steps;
    lbrInfo.standsForNoValue = true;
    for (CommandButton& command : cmdCancella) command.standsForNoValue = true;
    mnuClose.Caption = "Close";
    cmdCancella.OnClick([this](int Index) { cmdCancella_Click(Index); });
    mnuClose.OnClick([this] { UserClose(); });
    Timer1.OnTimer([this] { Timer1_Timer(); });
}

Layout FrmCancella::Arrange() {
    Layout commands = Column{cmdCancella[0]};
    if (hasSecondButton()) commands.children.emplace_back(cmdCancella[1]);
    return Column{
        Group(Frame1, Column{commands, Row{lbrInfo, lblInfo}, noAnswerHint, checkHint}),
        Row{Gap(), mnuClose},
    };
}

void FrmCancella::Form_Load() {
    Timer1.Enabled = false;
    lbrInfo.Visible = false;
    cmdCancella[1].Visible = hasSecondButton();
    Frame1.Height = hasSecondButton() ? TallFrame : ShortFrame;
    TablePage::Form_Load();
}

void FrmCancella::Form_Unload() { Timer1.Enabled = false; }

void FrmCancella::PageCaptions() {
    TablePage::PageCaptions();
    for (int i = 0; i < cmdCancella.size(); ++i)
        cmdCancella[i].Caption = LanguageTable(Clearings[static_cast<std::size_t>(i)].line);
    lblInfo.Caption = "";
    mnuClose.ToolTip = OwnWord(Own::ClosePage);
    noAnswerHint.Caption = OwnWord(Own::NoAnswer);
    checkHint.Caption = OwnWord(Own::CheckAfterwards) + " " + LanguageTable(TotalsLine);
}

void FrmCancella::cmdCancella_Click(int Index) {
    ConfirmClearing(cmdCancella[Index], [this, Index] { clear(Index); });
}

void FrmCancella::clear(int Index) {
    ParamWrite(master::Command, Clearings[static_cast<std::size_t>(Index)].command);
    Timer1.Enabled = true;
    lbrInfo.Visible = true;
    lbrInfo.Position = 0;
    cmdCancella[Index].Enabled = false;
    lblInfo.Caption = "";
}

/// Only the first button is given back; the second stays grey until the page is opened anew.
void FrmCancella::Timer1_Timer() {
    lbrInfo.Position = lbrInfo.Position + 1;
    if (lbrInfo.Position < Steps) return;
    Timer1.Enabled = false;
    lblInfo.Caption = LanguageTable(DoneLine);
    cmdCancella[0].Enabled = true;
}

}  // namespace kestrel
