// A frame that can be folded to its title.
#include "platform/folding_frame.h"

namespace kestrel {

void FoldingFrame::setInUse(bool inUse) {
    if (InUse == inUse) return;
    InUse = inUse;
    Folded = !inUse;
}

}  // namespace kestrel
