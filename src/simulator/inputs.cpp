// The machine's inputs.
// An input that left its rest position comes back to it before another one moves.
#include "simulator/inputs.h"

#include <array>

namespace kestrel::simulator {
namespace {

// Inputs that somebody or something touches in the course of a day.
struct Input {
    Setting parameter;
    unsigned bit;
};
constexpr std::array<Input, 16> lively{{{master::Inputs, 0x02},
                                        {master::Inputs, 0x08},
                                        {master::Inputs, 0x10},
                                        {master::Inputs, 0x20},
                                        {master::Inputs, 0x40},
                                        {hot_drink::Inputs[0], 0x02},
                                        {hot_drink::Inputs[0], 0x04},
                                        {hot_drink::Inputs[0], 0x10},
                                        {hot_drink::Inputs[1], 0x02},
                                        {hot_drink::Inputs[1], 0x08},
                                        {hot_drink::Inputs[1], 0x10},
                                        {hot_drink::Inputs[1], 0x20},
                                        {hot_drink::Inputs[1], 0x40},
                                        {hot_drink::Inputs[1], 0x80},
                                        {hot_drink::Inputs[2], 0x10},
                                        {hot_drink::Inputs[2], 0x20}}};

}  // namespace

Inputs::Inputs(World& world) : world_(world), random_(world.seed, Stream::Inputs) {
    if (world_.moving) waitForChange();
}

void Inputs::waitForChange() {
    const Input& input = lively[static_cast<std::size_t>(random_.between(0, lively.size() - 1))];
    const Micros pause = random_.between(1'500, 5'000) * millisecond;
    const Micros length = random_.between(500, 2'500) * millisecond;
    const auto toggle = [this, input] {
        const bool high = world_.hasBit(input.parameter, input.bit);
        world_.setBit(input.parameter, input.bit, !high);
    };
    world_.agenda.after(pause, toggle);
    world_.agenda.after(pause + length, [this, toggle] {
        toggle();
        waitForChange();
    });
}

}  // namespace kestrel::simulator
