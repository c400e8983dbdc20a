// Rows of a bar and a value label, each for one unsigned 16-bit amount of money of the master.
// The board keeps every amount twice: the first copy is shown, a user's change goes to both.
#pragma once

#include <span>

#include "link/param_table.h"
#include "link/subscriptions.h"
#include "platform/basic_controls.h"

namespace kestrel {

/// Stored decimals of a page that has not yet been told them: the first ones that come are always news.
inline constexpr int DecimalsUnknown = 255;

/// The longest text of an amount.
inline constexpr const char* LongestAmount = "655.35";

/// Consecutive rows for consecutive amounts.
struct AmountRun {
    int firstRow;
    SettingRange amounts;
};

class AmountRows {
  public:
    /// Gives the rows of the runs their range and room. The runs, bars and labels stay the page's own.
    template <std::size_t N>
    AmountRows(std::span<const AmountRun> runs, ControlArray<ScrollBar, N>& bars, ControlArray<Label, N>& labels)
        : AmountRows(runs, std::span(bars.begin(), N), std::span(labels.begin(), N)) {}

    /// Shows an amount, kept inside its bar's limits, when it belongs to a row and the mirror knows the decimals.
    void arrived(int n, ParamValue value, int decimals);
    /// Shows all rows anew from the mirror, in the order of the runs.
    void redraw(int decimals);
    /// Has the bars written and typed with these decimals; shows nothing anew.
    void rescale(int decimals);
    /// Writes where the row's bar stands; a row outside the runs writes nothing.
    void write(int row) const;

  private:
    AmountRows(std::span<const AmountRun> runs, std::span<ScrollBar> bars, std::span<Label> labels);
    ScrollBar& bar(int row) const { return bars_[static_cast<std::size_t>(row)]; }
    Label& label(int row) const { return labels_[static_cast<std::size_t>(row)]; }

    std::span<const AmountRun> runs_;
    std::span<ScrollBar> bars_;
    std::span<Label> labels_;
};

}  // namespace kestrel
