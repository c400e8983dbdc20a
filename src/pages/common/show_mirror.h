// In force while a page sets a control from the mirror and not from a value that has just come.
// What the mirror holds has come only where it is fresh and is not being read once more, as for a page that was opened
// again; else the control stays unread.
#pragma once

#include "link/settings.h"
#include "platform/control.h"

namespace kestrel {

class ShowMirror : private Control::Speaking {
  public:
    explicit ShowMirror(const Setting& setting) : Speaking(nullptr, boardOf(setting)) {}

  private:
    static int boardOf(const Setting& setting) {
        const int board = BankOf(setting.board);
        const bool isAwaited = (ParamFlags(board, setting.number) & flag::Pending) != 0;
        return ParamIsFresh(setting) && !isAwaited ? board : Control::NoBoard;
    }
};

}  // namespace kestrel
