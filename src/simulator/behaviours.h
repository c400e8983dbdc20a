// All that the boards do beside keeping their memory: one member a subject.
// This is the one place that knows which subject listens to what.
#pragma once

#include "simulator/clock.h"
#include "simulator/sales.h"
#include "simulator/world.h"

namespace kestrel::simulator {

class Behaviours {
  public:
    // Starts them at the world's present time.
    explicit Behaviours(World& world) : clock_(world), sales_(world) {}

    // The PC has written this parameter; the memory holds the new value already.
    void written(Board board, int parameter);

  private:
    Clock clock_;
    Sales sales_;
};

}  // namespace kestrel::simulator
