// Small routines that pages use.
#include "link/value_helpers.h"

#include <cmath>

#include "platform/platform.h"
#include "platform/window.h"

namespace kestrel {

void PlaceBar(ScrollBar& bar, ParamValue value) {
    const ParamValue highest = bar.Max.get();
    const ParamValue lowest = bar.Min.get();
    ParamValue v = value;
    if (v > highest) v = highest;
    if (v < lowest) v = lowest;
    bar.Value = static_cast<int>(v);
}

void SetBar(Label& label, ScrollBar& bar, ParamValue value) {
    PlaceBar(bar, value);
    label.Caption = std::to_string(value);
}

void SetBarTenths(Label& label, ScrollBar& bar, ParamValue value) {
    PlaceBar(bar, value);
    label.Caption = FormatAmount(value, 1);
}

void SetBarDecimals(Label& label, ScrollBar& bar, ParamValue value, int decimals) {
    PlaceBar(bar, value);
    label.Caption = FormatAmount(value, decimals);
}

void CenterPage(Window& form) {
    const Extent frame = platform().mainWindowExtent();
    const Extent page = platform().measure(form);
    form.Top = static_cast<int>(std::lround(frame.height * 0.85 / 2 - page.height / 2.0 + 100));
    form.Left = static_cast<int>(std::lround(frame.width / 2.0 - page.width / 2.0 - 80));
}

}  // namespace kestrel
