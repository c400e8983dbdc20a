// Clearing of sales data.
// The lifetime totals have a command of their own.
#include "simulator/clearing.h"

namespace kestrel::simulator {
namespace {

constexpr std::uint32_t clearCommand = 1;
constexpr std::uint32_t clearLifetimeCommand = 7;

void clear(World& world, Board board, int first, int last) {
    for (int parameter = first; parameter <= last; ++parameter) world.set(board, parameter, 0);
}

}  // namespace

void obeyClearing(World& world, int parameter) {
    if (parameter != master::command) return;
    const std::uint32_t command = world.get(Board::Master, parameter);
    if (command == clearCommand) {
        clear(world, Board::Master, master::vends, master::testVends);
        clear(world, Board::Master, master::income, master::lastCoinCounter);
        clear(world, Board::HotDrink, hot_drink::vends, hot_drink::testVends + selectionCount - 1);
        clear(world, Board::Sector, sector::vends, sector::testVends + sectorCount - 1);
    } else if (command == clearLifetimeCommand) {
        clear(world, Board::Master, master::lifetimeVends, master::lifetimeVends);
        clear(world, Board::Master, master::lifetimeIncome, master::lifetimeIncome);
    }
}

}  // namespace kestrel::simulator
