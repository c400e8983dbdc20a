// The master's clock and calendar.
// The minute begins anew when hours or minutes are set.
#pragma once

#include "simulator/world.h"

namespace kestrel::simulator {

class Clock {
  public:
    explicit Clock(World& world);

    // Takes over what was written to one of the setting parameters; a value that no clock shows is ignored.
    void written(const Setting& parameter);

  private:
    void startMinute();
    void advanceMinute();
    void advanceDay();

    World& world_;
    std::uint64_t minute_ = 0;  // of two planned ends of a minute only the latest counts
};

}  // namespace kestrel::simulator
