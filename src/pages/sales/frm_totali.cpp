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
    int parameter;
    bool clearable;  ///< stands in Frame2, else in Frame1
    int index;       ///< of its caption and value label in that frame
    int line;        ///< of its caption
    Kind kind;
};

/// The parameters are not in the order of the rows. 169 is also a counter of preselection 1: the two overlap.
constexpr std::array<TotalRow, 11> TotalRows = {{
    {164, true, 0, 212, Kind::Money},
    {165, true, 1, 213, Kind::Money},
    {166, true, 2, 214, Kind::Money},
    {160, true, 3, 215, Kind::Count},
    {161, true, 4, 216, Kind::Count},
    {167, true, 5, 217, Kind::Count},
    {162, true, 6, 218, Kind::Count},
    {168, true, 7, 219, Kind::Count},
    {169, true, 8, 220, Kind::Count},
    {163, false, 0, 212, Kind::Money},
    {159, false, 1, 215, Kind::Count},
}};

constexpr std::array<ParamRun, 2> Subscriptions = {{{0, DecimalsParameter}, {0, 159, 169}}};

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
    if (CurrentBank != 0) return;
    if (n == DecimalsParameter) decimals_ = DecimalsOf(value);
    for (std::size_t i = 0; i < TotalRows.size(); ++i) {
        const TotalRow& row = TotalRows[i];
        if (row.kind == Kind::Money && n == DecimalsParameter) {
            const ShowMirror shown(row.parameter, 0);
            valueLabel(i).Caption = FormatAmount(ParamRead(row.parameter, 0), decimals_);
        }
        if (row.parameter != n) continue;
        if (row.kind == Kind::Count)
            valueLabel(i).Caption = std::to_string(value);
        else if (ParamIsFresh(DecimalsParameter, 0))
            valueLabel(i).Caption = FormatAmount(value, decimals_);
    }
}

}  // namespace kestrel
