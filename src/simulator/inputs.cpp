// The machine's inputs.
// An input that left its rest position comes back to it before another one moves.
#include "simulator/inputs.h"

#include <array>

namespace kestrel::simulator {
namespace {

// Inputs that somebody or something touches in the course of a day.
struct Input {
    Board board;
    int parameter;
    unsigned bit;
};
constexpr std::array<Input, 16> lively{{{Board::Master, master::inputs, 0x02},
                                        {Board::Master, master::inputs, 0x08},
                                        {Board::Master, master::inputs, 0x10},
                                        {Board::Master, master::inputs, 0x20},
                                        {Board::Master, master::inputs, 0x40},
                                        {Board::HotDrink, hot_drink::inputs, 0x02},
                                        {Board::HotDrink, hot_drink::inputs, 0x04},
                                        {Board::HotDrink, hot_drink::inputs, 0x10},
                                        {Board::HotDrink, hot_drink::inputs + 1, 0x02},
                                        {Board::HotDrink, hot_drink::inputs + 1, 0x08},
                                        {Board::HotDrink, hot_drink::inputs + 1, 0x10},
                                        {Board::HotDrink, hot_drink::inputs + 1, 0x20},
                                        {Board::HotDrink, hot_drink::inputs + 1, 0x40},
                                        {Board::HotDrink, hot_drink::inputs + 1, 0x80},
                                        {Board::HotDrink, hot_drink::inputs + 2, 0x10},
                                        {Board::HotDrink, hot_drink::inputs + 2, 0x20}}};

}  // namespace

Inputs::Inputs(World& world) : world_(world), random_(world.seed, Stream::Inputs) {
    if (world_.moving) waitForChange();
}

void Inputs::waitForChange() {
    const Input& input = lively[static_cast<std::size_t>(random_.between(0, lively.size() - 1))];
    const Micros pause = random_.between(1'500, 5'000) * millisecond;
    const Micros length = random_.between(500, 2'500) * millisecond;
    const auto toggle = [this, input] {
        const bool high = world_.hasBit(input.board, input.parameter, input.bit);
        world_.setBit(input.board, input.parameter, input.bit, !high);
    };
    world_.agenda.after(pause, toggle);
    world_.agenda.after(pause + length, [this, toggle] {
        toggle();
        waitForChange();
    });
}

}  // namespace kestrel::simulator
