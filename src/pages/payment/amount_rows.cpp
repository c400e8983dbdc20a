// Rows of a bar and a value label for amounts of money.
#include "pages/payment/amount_rows.h"

#include "link/money.h"
#include "link/value_helpers.h"
#include "pages/common/offset_bar.h"
#include "pages/common/show_mirror.h"

namespace kestrel {

AmountRows::AmountRows(std::span<const AmountRun> runs, std::span<ScrollBar> bars, std::span<Label> labels)
    : runs_(runs), bars_(bars), labels_(labels) {
    for (const AmountRun& run : runs_)
        for (int i = 0; i < run.count; ++i) {
            DesignOffsetBar(bar(run.row + i));
            label(run.row + i).showsValue(LongestAmount);
        }
}

void AmountRows::arrived(int n, ParamValue value, int decimals) {
    for (const AmountRun& run : runs_) {
        const int i = n - run.parameter;
        if (i < 0 || i >= run.count || !ParamIsFresh(DecimalsParameter, 0)) continue;
        label(run.row + i).Caption = FormatAmount(SetOffsetBar(bar(run.row + i), value), decimals);
    }
}

void AmountRows::redraw(int decimals) {
    rescale(decimals);
    for (const AmountRun& run : runs_)
        for (int i = 0; i < run.count; ++i) {
            const ParamValue raw = ParamRead(run.parameter + i, 0);
            const ShowMirror shown(run.parameter + i, 0);
            SetOffsetBar(bar(run.row + i), raw);
            label(run.row + i).Caption = FormatAmount(raw, decimals);
        }
}

void AmountRows::rescale(int decimals) {
    for (const AmountRun& run : runs_)
        for (int i = 0; i < run.count; ++i) bar(run.row + i).scale.decimals = decimals;
}

void AmountRows::write(int row) const {
    for (const AmountRun& run : runs_) {
        const int i = row - run.row;
        if (i < 0 || i >= run.count) continue;
        WriteTwice(0, run.parameter + i, run.shadow + i, RawOfBar(bar(row).Value));
    }
}

bool AllAreFresh(const AmountRun& run) {
    for (int i = 0; i < run.count; ++i)
        if (!ParamIsFresh(run.parameter + i, 0)) return false;
    return true;
}

}  // namespace kestrel
