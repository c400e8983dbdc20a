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
        for (int i = 0; i < run.amounts.size(); ++i) {
            DesignOffsetBar(bar(run.firstRow + i));
            label(run.firstRow + i).showsValue(LongestAmount);
        }
}

void AmountRows::arrived(int n, ParamValue value, int decimals) {
    for (const AmountRun& run : runs_) {
        const int i = ArrivedAt(n, run.amounts);
        if (i < 0 || !ParamIsFresh(master::MoneyDecimals)) continue;
        label(run.firstRow + i).Caption = FormatAmount(SetOffsetBar(bar(run.firstRow + i), value), decimals);
    }
}

void AmountRows::redraw(int decimals) {
    rescale(decimals);
    for (const AmountRun& run : runs_)
        for (int i = 0; i < run.amounts.size(); ++i) {
            const ParamValue raw = ParamRead(run.amounts[i]);
            const ShowMirror shown(run.amounts[i]);
            SetOffsetBar(bar(run.firstRow + i), raw);
            label(run.firstRow + i).Caption = FormatAmount(raw, decimals);
        }
}

void AmountRows::rescale(int decimals) {
    for (const AmountRun& run : runs_)
        for (int i = 0; i < run.amounts.size(); ++i) bar(run.firstRow + i).scale.decimals = decimals;
}

void AmountRows::write(int row) const {
    for (const AmountRun& run : runs_) {
        const int i = row - run.firstRow;
        if (i < 0 || i >= run.amounts.size()) continue;
        WriteTwice(run.amounts[i], RawOfBar(bar(row).Value));
    }
}

}  // namespace kestrel
