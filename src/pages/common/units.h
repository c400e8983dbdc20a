// Units of figures, as the catalogue has them.
// Captions name them beside the figures; here they are told of what may be entered. An amount of money has none.
#pragma once

#include "catalogue/rows.h"
#include "platform/basic_controls.h"

namespace kestrel {

inline void Measure(ScrollBar& bar, const Setting& setting) {
    const std::string_view unit = UnitOf(setting);
    if (unit != "money") bar.scale.unit = unit;
}

}  // namespace kestrel
