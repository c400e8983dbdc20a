// Dispenses that the PC orders through the master's mailbox: test drinks, single powders, and pairs of sector motors.
// While one runs the master reports that it is busy; further orders are then ignored.
#pragma once

#include "simulator/recipe.h"
#include "simulator/world.h"

namespace kestrel::simulator {

class Dispensing {
  public:
    explicit Dispensing(World& world) : world_(world) {}

    // Obeys the command parameter; the arguments have been written before.
    void written(const Setting& parameter);
    void reset(Board board);

  private:
    void dispenseDrink(int selection, bool withPowders);
    void runStep(int selection, const Recipe& recipe, int step, bool withPowders);
    void dispensePowder(int selection, std::uint32_t solenoid);
    void runSectorPair(std::uint32_t row, std::uint32_t column);
    void finishLater(Micros time, std::function<void()> count);
    void finish();
    void driveStep(const RecipeStep& step, bool withPowders);

    World& world_;
    std::uint64_t order_ = 0;  // of an order that was cut short nothing more happens
};

}  // namespace kestrel::simulator
