// Totals: the machine's sales totals.
#include "pages/sales/frm_totali.h"

#include <algorithm>
#include <array>

#include "link/money.h"
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

FrmTotali::FrmTotali() : TablePage("FrmTotali", TitleLine, {Subscriptions}) {
    caption(Frame2.Caption, Frame2Line);
    caption(Frame1.Caption, Frame1Line);
    whenComes(master::MoneyDecimals, [this](ParamValue value) { showDecimals(DecimalsOf(value)); });
    for (const TotalRow& row : TotalRows) {
        Label& label = valueLabel(row.clearable, row.index);
        label.showsValue(LongestTotal);
        caption((row.clearable ? Label2[row.index] : Label1[row.index]).Caption, row.line);
        whenComes(row.total, [this, &label, &row](ParamValue value) {
            if (row.kind == Kind::Count) {
                label.Caption = std::to_string(value);
                if (row.clearable) tally(row.index, value);
            } else if (ParamIsFresh(master::MoneyDecimals)) {
                // Known from another page perhaps, and not told to this one yet.
                label.Caption = FormatAmount(value, DecimalsOf(ParamRead(master::MoneyDecimals)));
            }
        });
    }
    readsAgain(Timer1);
}

Layout FrmTotali::Arrange() {
    return Column{
        Group(Frame2, Rows(Indexes(0, 8), Label2, Label3)),
        Group(Frame1, Rows(Indexes(0, 1), Label1, Label4)),
    };
}

Label& FrmTotali::valueLabel(bool clearable, int index) { return clearable ? Label3[index] : Label4[index]; }

/// Counts are measured by the highest of them; money is no count and has no bar.
void FrmTotali::tally(int index, ParamValue count) {
    counts_[index] = count;
    double highest = 1;
    for (const auto& [row, each] : counts_) highest = std::max(highest, static_cast<double>(each));
    for (const auto& [row, each] : counts_) Label3[row].Share = static_cast<double>(each) / highest;
}

void FrmTotali::showDecimals(int decimals) {
    decimals_ = decimals;
    for (const TotalRow& row : TotalRows) {
        if (row.kind == Kind::Count) continue;
        const ShowMirror shown(row.total);
        valueLabel(row.clearable, row.index).Caption = FormatAmount(ParamRead(row.total), decimals_);
    }
}

}  // namespace kestrel
