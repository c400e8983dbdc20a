// A time of day over two bars, one for the hours and one for the minutes: entered as hh:mm, and handed on to the two,
// which keep their parameters, their ranges and their events.
#pragma once

#include "platform/basic_controls.h"

namespace kestrel {

class TimeBar {
  public:
    ScrollBar Bar;  ///< minutes since midnight; without a trough
    Label Figure;   ///< "06:30"

    /// The bars stay the page's own.
    void stand(ScrollBar& hours, ScrollBar& minutes);
    /// Shows what the two bars' figures stand for: to be called as the page sets one of them.
    void follow();

  private:
    void handOn();

    ScrollBar* hours_ = nullptr;
    ScrollBar* minutes_ = nullptr;
    bool follows_ = false;
};

}  // namespace kestrel
