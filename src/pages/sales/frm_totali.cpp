// Totals: the machine's sales totals.
#include "pages/sales/frm_totali.h"

#include <array>

#include "language/language_files.h"
#include "link/money.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/show_mirror.h"

namespace kestrel {

namespace {

enum class Kind { Money, Count };

struct TotalRow {
    Setting total;
    bool clearable;  ///< stands in Frame2, else in Frame1
    int index;       ///< of its caption and value label in that frame
    int line;        ///< of its caption
    Kind kind;
};

/// The parameters are not in the order of the rows. The last one that can be cleared is also the counter of
/// preselection 1: the two overlap.
constexpr std::array<TotalRow, 11> TotalRows = {{
    {master::TotalTakings, true, 0, 212, Kind::Money},
    {master::TotalDiscounts, true, 1, 213, Kind::Money},
    {master::TotalOverpay, true, 2, 214, Kind::Money},
    {master::TotalVends, true, 3, 215, Kind::Count},
    {master::TotalFree, true, 4, 216, Kind::Count},
    {master::TotalJugs, true, 5, 217, Kind::Count},
    {master::TotalTests, true, 6, 218, Kind::Count},
    {master::TotalPreselection1, true, 7, 219, Kind::Count},
    {master::PreselectionVends[0], true, 8, 220, Kind::Count},
    {master::LifetimeTakings, false, 0, 212, Kind::Money},
    {master::LifetimeVends, false, 1, 215, Kind::Count},
}};

constexpr std::array<ParamRun, 2> Subscriptions = {
    {master::MoneyDecimals, {master::LifetimeVends, master::PreselectionVends[0]}}};

constexpr int TitleLine = 15;
constexpr int Frame2Line = 211;
constexpr int Frame1Line = 210;
constexpr const char* LongestTotal = "4294967295.000";

}  // namespace

FrmTotali::FrmTotali() : Page("FrmTotali") {
    for (Label& label : Label3) label.showsValue(LongestTotal);
    for (Label& label : Label4) label.showsValue(LongestTotal);
    Timer1.OnTimer([this] { Timer1_Timer(); });
}

Layout FrmTotali::Arrange() {
    return Column{
        Group(Frame2, Rows(Indexes(0, 8), Label2, Label3)),
        Group(Frame1, Rows(Indexes(0, 1), Label1, Label4)),
    };
}

void FrmTotali::Form_Load() {
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
    Timer1.Enabled = true;
}

void FrmTotali::Form_Activate() { PageCaptions(); }

void FrmTotali::Form_Unload() {
    PageRelease();
    Timer1.Enabled = false;
}

void FrmTotali::PageSubscribe() { WatchAll(Subscriptions); }

void FrmTotali::PageRelease() { ReleaseAll(Subscriptions); }

void FrmTotali::PageCaptions() {
    Caption = LanguageTable(TitleLine);
    Frame2.Caption = LanguageTable(Frame2Line);
    Frame1.Caption = LanguageTable(Frame1Line);
    for (const TotalRow& row : TotalRows)
        (row.clearable ? Label2[row.index] : Label1[row.index]).Caption = LanguageTable(row.line);
}

void FrmTotali::Timer1_Timer() {
    PageRelease();
    PageSubscribe();
}

Label& FrmTotali::valueLabel(std::size_t row) {
    const TotalRow& total = TotalRows[row];
    return total.clearable ? Label3[total.index] : Label4[total.index];
}

void FrmTotali::SLabel_Change(int n, ParamValue value) {
    const bool decimalsArrived = Arrived(n, master::MoneyDecimals);
    if (decimalsArrived) decimals_ = DecimalsOf(value);
    for (std::size_t i = 0; i < TotalRows.size(); ++i) {
        const TotalRow& row = TotalRows[i];
        if (row.kind == Kind::Money && decimalsArrived) {
            const ShowMirror shown(row.total);
            valueLabel(i).Caption = FormatAmount(ParamRead(row.total), decimals_);
        }
        if (!Arrived(n, row.total)) continue;
        if (row.kind == Kind::Count)
            valueLabel(i).Caption = std::to_string(value);
        else if (ParamIsFresh(master::MoneyDecimals))
            valueLabel(i).Caption = FormatAmount(value, decimals_);
    }
}

}  // namespace kestrel
