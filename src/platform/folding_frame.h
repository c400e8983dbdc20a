// A frame that can be folded to its title: what is not in use takes no room, and can be looked at all the same.
#pragma once

#include "platform/basic_controls.h"

namespace kestrel {

class FoldingFrame : public Frame {
  public:
    /// Those in use stand before the others.
    Property<bool> InUse{*this, true};
    Property<bool> Folded{*this, false};

    /// The page says which frames are in use; the others are folded when that changes.
    void setInUse(bool inUse);
    /// The user folds or unfolds it, also while it is locked.
    void UserFold() { Folded = !Folded; }
};

}  // namespace kestrel
