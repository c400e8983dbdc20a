// In force while a page sets a control from the mirror and not from a value that has just come.
// What the mirror holds is a board's value only where it is fresh; else the control stays unread.
#pragma once

#include "link/settings.h"
#include "platform/control.h"

namespace kestrel {

class ShowMirror : private Control::Speaking {
  public:
    explicit ShowMirror(const Setting& setting) : Speaking(nullptr, ParamIsFresh(setting)) {}
    // TEMP
    ShowMirror(int parameter, int bank) : Speaking(nullptr, ParamIsFresh(parameter, bank)) {}
};

}  // namespace kestrel
