// The test modes of the two boards behind the master: outputs driven by hand for as long as the test time lasts.
// A board leaves the mode by itself when the time has run out, and then switches its outputs off.
#pragma once

#include <array>

#include "simulator/world.h"

namespace kestrel::simulator {

class TestModes {
  public:
    explicit TestModes(World& world) : world_(world) {}

    // Obeys the board's command parameter; the mailbox has been filled before.
    void written(const Setting& parameter);
    void reset(Board board);

  private:
    using OutputBytes = std::array<std::uint32_t, hot_drink::Outputs.size()>;

    void commandHotDrink(std::uint32_t command);
    void commandSector(std::uint32_t command);
    void start(Board board, std::uint32_t seconds);
    void prolong(Board board);
    void stop(Board board);
    bool inTest(Board board) const;
    void setOutputs(Board board, const OutputBytes& bytes);
    void zeroMotors();

    World& world_;
    std::array<Micros, boardCount> length_{};  // of the test time that was last given
    std::array<Micros, boardCount> end_{};
    std::uint64_t zeroing_ = 0;
};

}  // namespace kestrel::simulator
