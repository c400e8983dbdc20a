// The machine's inputs: switches and sensors that change now and then.
// All inputs are active low.
#pragma once

#include "simulator/random.h"
#include "simulator/world.h"

namespace kestrel::simulator {

class Inputs {
  public:
    explicit Inputs(World& world);

  private:
    void waitForChange();

    World& world_;
    Random random_;
};

}  // namespace kestrel::simulator
