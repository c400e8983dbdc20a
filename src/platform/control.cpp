// The base of everything that stands on a page.
// See control.h.
#include "platform/control.h"

#include "platform/controls.h"

namespace kestrel {

bool Control::usable() const {
    for (const Control* control = this; control; control = control->frame_)
        if (!control->Enabled || !control->Visible) return false;
    return true;
}

std::string Control::accessibleName() const {
    if (!caption_) return frame_ ? frame_->Caption.get() : std::string();
    return unit_ ? caption_->Caption.get() + " " + unit_->Caption.get() : caption_->Caption.get();
}

void Control::assigned(const void* /*property*/, bool /*changed*/) { show(); }

}  // namespace kestrel
