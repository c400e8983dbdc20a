// Small routines that pages use to show a value beside a control and to place themselves.
// The label always shows what the board reported, even where the bar cannot go that far.
#pragma once

#include <string>

#include "link/param_table.h"
#include "platform/basic_controls.h"
#include "platform/numbers.h"

namespace kestrel {

class Window;

/// Bar to the value, kept inside its limits.
void PlaceBar(ScrollBar& bar, ParamValue value);
/// The same, and the label to the value as received.
void SetBar(Label& label, ScrollBar& bar, ParamValue value);
/// The same, with the label in tenths and one decimal.
void SetBarTenths(Label& label, ScrollBar& bar, ParamValue value);
/// The same, with the label divided by 10 to the power of the decimals.
void SetBarDecimals(Label& label, ScrollBar& bar, ParamValue value, int decimals);

/// A raw amount divided by 10 to the power of the decimals, with so many decimals.
inline std::string FormatAmount(ParamValue raw, int decimals) { return formatScaled(raw, decimals); }

/// Places a page in the middle of the main window, a little above.
void CenterPage(Window& form);

}  // namespace kestrel
