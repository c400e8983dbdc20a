// Which bit of the hot-drink board's five output bytes drives what.
// Outside the test mode the board drives them itself, and the PC sees what it does.
#pragma once

#include "simulator/world.h"

namespace kestrel::simulator {

struct Output {
    int byte;
    unsigned bit;
};

// `number` from 1 on.
constexpr Output waterValve(unsigned number) { return {0, 1U << (number - 1)}; }  // four, then the two brewers' valves
constexpr Output mixer(unsigned number) { return {2, 1U << (number - 1)}; }       // three
constexpr Output powder(unsigned number) { return {3, 8U << (number - 1)}; }      // five
inline constexpr Output waterPump{0, 0x80};
inline constexpr Output boilerHeater{1, 0x01};
inline constexpr Output firstBrewerMotor{2, 0x08};
inline constexpr Output secondBrewerMotor{2, 0x20};

inline bool isDriven(const World& world, Output output) {
    return world.hasBit(hot_drink::Outputs[output.byte], output.bit);
}
inline void drive(World& world, Output output, bool on) {
    world.setBit(hot_drink::Outputs[output.byte], output.bit, on);
}

}  // namespace kestrel::simulator
