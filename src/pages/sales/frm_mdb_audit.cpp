// MDB audit: six running amounts of the MDB payment system.
#include "pages/sales/frm_mdb_audit.h"

#include "language/language_files.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/confirmation.h"

namespace kestrel {

namespace {

constexpr std::array<ParamRun, 1> Subscriptions = {master::MdbAuditAmount};
static_assert(master::MdbAuditAmount.size() == FrmMDBaudit::Amounts);

constexpr int TitleLine = 44;
constexpr int AmountLine = 247;  ///< of the first caption; the others follow
constexpr int Command1Line = 253;

}  // namespace

FrmMDBaudit::FrmMDBaudit() : Page("FrmMDBaudit") {
    for (Label& label : Label2) label.showsValue("4294967295");
    Command1.OnClick([this] { Command1_Click(); });
    Timer1.OnTimer([this] { Timer1_Timer(); });
}

Layout FrmMDBaudit::Arrange() { return Column{Rows(Indexes(0, Amounts - 1), Label1, Label2), Row{Gap(), Command1}}; }

void FrmMDBaudit::Form_Load() {
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
    Timer1.Enabled = true;
}

void FrmMDBaudit::Form_Activate() { PageCaptions(); }

void FrmMDBaudit::Form_Unload() {
    PageRelease();
    Timer1.Enabled = false;
}

void FrmMDBaudit::PageSubscribe() { WatchAll(Subscriptions); }

void FrmMDBaudit::PageRelease() { ReleaseAll(Subscriptions); }

void FrmMDBaudit::PageCaptions() {
    Caption = LanguageTable(TitleLine);
    for (int i = 0; i < Amounts; ++i) Label1[i].Caption = LanguageTable(AmountLine + i);
    Command1.Caption = LanguageTable(Command1Line);
}

void FrmMDBaudit::Timer1_Timer() {
    PageRelease();
    PageSubscribe();
}

void FrmMDBaudit::Command1_Click() {
    ConfirmClearing(Command1, [this] {
        Command1.Enabled = false;
        for (int i = 0; i < Amounts; ++i) ParamWrite(master::MdbAuditAmount[i], 0);
    });
}

void FrmMDBaudit::SLabel_Change(int n, ParamValue value) {
    const int i = ArrivedAt(n, master::MdbAuditAmount);
    if (i >= 0) Label2[i].Caption = std::to_string(value);
    // The first amount alone gives the button back.
    if (ParamIsFresh(master::MdbAuditAmount[0])) Command1.Enabled = true;
}

}  // namespace kestrel
