// All that the boards do beside keeping their memory: one member a subject.
// This is the one place that knows which subject listens to what.
#pragma once

#include "simulator/alarms.h"
#include "simulator/climate.h"
#include "simulator/clock.h"
#include "simulator/dispensing.h"
#include "simulator/inputs.h"
#include "simulator/sales.h"
#include "simulator/test_modes.h"
#include "simulator/world.h"

namespace kestrel::simulator {

class Behaviours {
  public:
    // Starts them at the world's present time.
    explicit Behaviours(World& world);

    // The PC has written this parameter; the memory holds the new value already.
    void written(const Setting& parameter);
    // The board restarts and forgets what it was doing; its settings and counters stay.
    void reset(Board board);

  private:
    World& world_;
    Clock clock_;
    Sales sales_;
    Inputs inputs_;
    Alarms alarms_;
    Climate climate_;
    Dispensing dispensing_;
    TestModes testModes_;
};

}  // namespace kestrel::simulator
