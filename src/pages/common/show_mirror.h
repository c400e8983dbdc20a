// In force while a page sets a control from the mirror and not from a value that has just come.
// What the mirror holds has come only where it is fresh and is not being read once more, as for a page that was opened
// again; else the control stays unread.
#pragma once

#include "link/settings.h"
#include "platform/control.h"

namespace kestrel {

class ShowMirror : private Control::Speaking {
  public:
    explicit ShowMirror(const Setting& setting) : Speaking(nullptr, hasCome(setting)) {}

  private:
    static bool hasCome(const Setting& setting) {
        const bool isAwaited = (ParamFlags(BankOf(setting.board), setting.number) & flag::Pending) != 0;
        return ParamIsFresh(setting) && !isAwaited;
    }
};

}  // namespace kestrel
