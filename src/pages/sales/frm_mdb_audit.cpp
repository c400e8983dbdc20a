// MDB audit: six running amounts of the MDB payment system.
#include "pages/sales/frm_mdb_audit.h"

#include "pages/common/confirmation.h"

namespace kestrel {

namespace {

constexpr std::array<ParamRun, 1> Subscriptions = {master::MdbAuditAmount};
static_assert(master::MdbAuditAmount.size() == FrmMDBaudit::Amounts);

constexpr int TitleLine = 44;
constexpr int AmountLine = 247;  ///< of the first caption; the others follow
constexpr int Command1Line = 253;

}  // namespace

FrmMDBaudit::FrmMDBaudit() : TablePage("FrmMDBaudit", TitleLine, {Subscriptions}) {
    captions(Label1, AmountLine);
    caption(Command1.Caption, Command1Line);
    for (int i = 0; i < Amounts; ++i) number(master::MdbAuditAmount[i], Label2[i]);
    Command1.OnClick([this] { Command1_Click(); });
    readsAgain(Timer1);
}

Layout FrmMDBaudit::Arrange() { return Column{Rows(Indexes(0, Amounts - 1), Label1, Label2), Row{Gap(), Command1}}; }

void FrmMDBaudit::Command1_Click() {
    ConfirmClearing(Command1, [this] {
        Command1.Enabled = false;
        for (int i = 0; i < Amounts; ++i) ParamWrite(master::MdbAuditAmount[i], 0);
    });
}

/// The first amount alone gives the button back.
void FrmMDBaudit::valueCame(int /*n*/, ParamValue /*value*/) {
    if (ParamIsFresh(master::MdbAuditAmount[0])) Command1.Enabled = true;
}

}  // namespace kestrel
