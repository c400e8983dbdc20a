// Temperatures: the boiler of the hot-drink board and the tank of the sector board, each kept by a thermostat.
// In test mode the outputs that the PC drives take the thermostats' place.
#pragma once

#include "simulator/world.h"

namespace kestrel::simulator {

class Climate {
  public:
    // A machine that does not move stands at its set-points for good.
    explicit Climate(World& world);

  private:
    void step();
    void stepBoiler();
    void stepTank();
    void show();

    World& world_;
    double boiler_;  // degrees
    double tank_;
    bool compressor_ = false;
};

}  // namespace kestrel::simulator
