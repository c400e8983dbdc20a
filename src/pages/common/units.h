// Units of figures, as the catalogue has them.
// Seconds stand in captions, and an amount of money has no currency: both are named in hints at most.
#pragma once

#include "catalogue/rows.h"
#include "platform/basic_controls.h"

namespace kestrel {

inline void Measure(ScrollBar& bar, Label& value, const Setting& setting) {
    const std::string_view unit = UnitOf(setting);
    if (unit == "money") return;
    bar.scale.unit = unit;
    if (unit != "s") value.Unit = std::string(unit);
}

}  // namespace kestrel
