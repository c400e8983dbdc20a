// Orders to the master: test dispenses, sector pairs, clearing of data, and the decimals of money.
// The pages lock themselves by the busy bit, so it must come, last a plausible time, and go.
#include <gtest/gtest.h>

#include "simulator/installation.h"

namespace kestrel::simulator::tests {
namespace {

constexpr auto master = Board::Master;
constexpr auto hotDrink = Board::HotDrink;
constexpr auto sector = Board::Sector;

class DispensingTest : public testing::Test {
  protected:
    DispensingTest() {
        options.directory = installation.directory();
        options.moving = false;
    }
    static void order(Pc& pc, std::uint32_t command, std::uint32_t first, std::uint32_t secondArgument) {
        pc.write(master, 5, first);
        pc.write(master, 6, secondArgument);
        pc.write(master, 4, command);
    }
    static bool busy(Pc& pc) { return (pc.read(master, 7) & 2) != 0; }
    static Micros busyTime(Pc& pc) {
        const Micros start = pc.now;
        while (busy(pc) && pc.now < start + 60 * second) pc.wait(50 * millisecond);
        return pc.now - start;
    }

    Installation installation;
    MachineOptions options;
};

TEST_F(DispensingTest, OrdersRunAndCountOrAreIgnored) {
    const struct {
        const char* what;
        std::uint32_t command, first, second;
        Board board;
        int counter;  // 0: ignored
    } cases[] = {
        {"selection 3 with powders", 2, 3, 0, hotDrink, 1272},
        {"selection 3, water alone", 26, 3, 0, hotDrink, 1272},
        {"key 9 with preselection", 2, 9, 1, hotDrink, 1287},
        {"powder of selection 1", 18, 0, 4, hotDrink, 1270},
        {"sector pair 1 1", 2, 12, 16, sector, 167},
        {"sector pair 3 2", 2, 13, 48, sector, 184},
        {"sector pair 6 6", 2, 17, 96, sector, 212},
        {"no command", 0, 3, 0, hotDrink, 0},
        {"key 0", 2, 0, 0, hotDrink, 0},
        {"key 10", 2, 10, 0, hotDrink, 0},
        {"preselection 2", 2, 1, 2, hotDrink, 0},
        {"powder of selection 19", 18, 18, 0, hotDrink, 0},
        {"powder of a fourth step", 18, 0, 9, hotDrink, 0},
        {"pair in row 0", 2, 12, 0, hotDrink, 0},
        {"pair in column 7", 2, 18, 16, hotDrink, 0},
        {"other command", 99, 1, 0, hotDrink, 0},
    };
    for (const auto& c : cases) {
        Machine machine(options);
        Pc pc(machine);
        pc.write(master, 370, 20);
        const auto before = c.counter == 0 ? 0 : pc.read(c.board, c.counter);
        order(pc, c.command, c.first, c.second);
        const Micros time = busyTime(pc);
        if (c.counter == 0) {
            EXPECT_LT(time, second / 2) << c.what;
            EXPECT_EQ(pc.read(master, 162), 0U) << c.what;
        } else {
            EXPECT_GT(time, second) << c.what;
            EXPECT_LT(time, 40 * second) << c.what;
            EXPECT_EQ(pc.read(master, 162), 1U) << c.what;
            EXPECT_EQ(pc.read(c.board, c.counter), before + 1) << c.what;
        }
    }
}

TEST_F(DispensingTest, LastsAsLongAsTheRecipeSays) {
    Machine machine(options);
    Pc pc(machine);
    const auto timeOf = [&](std::uint32_t command) {
        order(pc, command, 5, 0);
        return busyTime(pc);
    };
    // Selection 5, step 1: valve 6.0 s; the first powder runs until 12.0 s; no second step.
    pc.write(hotDrink, 7 + 4, 2);
    pc.write(hotDrink, 103 + 4, 60);
    pc.write(hotDrink, 487 + 4, 100);
    pc.write(hotDrink, 775 + 4, 20);
    pc.write(hotDrink, 39 + 4, 0);
    const Micros whole = timeOf(2);
    const Micros water = timeOf(26);
    EXPECT_NEAR(static_cast<double>(whole - water), static_cast<double>(6 * second), 0.5e6);
    pc.write(hotDrink, 39 + 4, 1);
    pc.write(hotDrink, 135 + 4, 50);
    EXPECT_NEAR(static_cast<double>(timeOf(26) - water), static_cast<double>(5 * second), 0.5e6);
    pc.write(hotDrink, 7 + 4, 0);
    EXPECT_LT(timeOf(2), second / 2) << "a selection that is off";
}

TEST_F(DispensingTest, DiagramShowsTheWaterRunning) {
    Machine machine(options);
    Pc pc(machine);
    order(pc, 2, 5, 0);
    std::uint32_t water = 0;
    std::uint32_t powders = 0;
    while (busy(pc)) {
        water |= pc.read(hotDrink, 1292);
        powders |= pc.read(hotDrink, 1295);
        pc.wait(100 * millisecond);
    }
    EXPECT_EQ(water, 0x82U) << "valve 2 and the pump";
    EXPECT_NE(powders, 0U);
    EXPECT_EQ(pc.read(hotDrink, 1292) | pc.read(hotDrink, 1294) | pc.read(hotDrink, 1295), 0U);
}

TEST_F(DispensingTest, RestartCutsItShort) {
    Machine machine(options);
    Pc pc(machine);
    order(pc, 2, 1, 0);
    pc.wait(4 * second);
    machine.boardReset(master);
    pc.wait(2 * second);
    EXPECT_FALSE(busy(pc));
    EXPECT_EQ(pc.read(hotDrink, 1292), 0U);
    pc.wait(60 * second);
    EXPECT_EQ(pc.read(master, 162), 0U);
    EXPECT_EQ(pc.read(master, 4), 0U);
}

TEST_F(DispensingTest, NeedsTheBoardThatDispenses) {
    options.hotDrinkBoard = false;
    options.sectorBoard = false;
    Machine machine(options);
    Pc pc(machine);
    pc.write(master, 370, 20);
    for (const auto& [command, first, secondArgument] :
         {std::array<std::uint32_t, 3>{2, 1, 0}, {18, 0, 0}, {2, 12, 16}}) {
        order(pc, command, first, secondArgument);
        EXPECT_FALSE(busy(pc)) << command;
    }
}

TEST_F(DispensingTest, ClearingTakesWhatItShouldAndNoMore) {
    const struct {
        Board board;
        int parameter;
    } clearable[] = {{master, 160}, {master, 161}, {master, 162}, {master, 164}, {master, 169},    {master, 176},
                     {master, 177}, {master, 192}, {sector, 71},  {sector, 214}, {hotDrink, 1216}, {hotDrink, 1287}},
      lifetime[] = {{master, 159}, {master, 163}},
      kept[] = {{master, 193},    {master, 198},    {master, 199}, {master, 158},
                {hotDrink, 1215}, {hotDrink, 1288}, {sector, 58},  {sector, 216}};
    for (const std::uint32_t command : {1U, 7U}) {
        Machine machine(options);
        Pc pc(machine);
        const auto fill = [&](const auto& list) {
            for (const auto& item : list) machine.setValue(item.board, item.parameter, 77);
        };
        const auto expectAll = [&](const auto& list, std::uint32_t value) {
            for (const auto& item : list) EXPECT_EQ(machine.value(item.board, item.parameter), value) << item.parameter;
        };
        fill(clearable);
        fill(lifetime);
        fill(kept);
        pc.write(master, 4, command);
        expectAll(clearable, command == 1 ? 0 : 77);
        expectAll(lifetime, command == 7 ? 0 : 77);
        expectAll(kept, 77);
    }
}

}  // namespace
}  // namespace kestrel::simulator::tests
