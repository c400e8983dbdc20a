// Bars for unsigned 16-bit amounts.
#include "pages/common/offset_bar.h"

#include <algorithm>

namespace kestrel {

void DesignOffsetBar(ScrollBar& bar, int largeStep) {
    bar.design(-BarOffset, BarOffset - 1, largeStep);
    bar.scale.offset = BarOffset;
}

ParamValue SetOffsetBar(ScrollBar& bar, ParamValue raw) {
    const ParamValue v = std::clamp<ParamValue>(raw - BarOffset, bar.Min.get(), bar.Max.get());
    bar.Value = static_cast<int>(v);
    return v + BarOffset;
}

}  // namespace kestrel
