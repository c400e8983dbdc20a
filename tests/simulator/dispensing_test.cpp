// Orders to the master: test dispenses, sector pairs, clearing of data, and the decimals of money.
// The pages lock themselves by the busy bit, so it must come, last a plausible time, and go.
#include <sstream>

#include "simulator/installation.h"

namespace kestrel::simulator::tests {
namespace {

class DispensingTest : public SimulatorTest {
  protected:
    static void order(Bench& bench, std::uint32_t command, std::uint32_t first, std::uint32_t secondArgument) {
        bench.write(Master, 5, first);
        bench.write(Master, 6, secondArgument);
        bench.write(Master, 4, command);
    }
    static bool busy(Bench& bench) { return (bench.read(Master, 7) & 2) != 0; }
    static Micros busyTime(Bench& bench) {
        const Micros start = bench.now;
        while (busy(bench) && bench.now < start + 60 * second) bench.wait(50 * millisecond);
        return bench.now - start;
    }
};

TEST_F(DispensingTest, OrdersRunAndCountOrAreIgnored) {
    const struct {
        const char* what;
        std::uint32_t command, first, second;
        Board board;
        int counter;  // 0: ignored
    } cases[] = {
        {"selection 3 with powders", 2, 3, 0, HotDrink, 1272},
        {"selection 3, water alone", 26, 3, 0, HotDrink, 1272},
        {"key 9 with preselection", 2, 9, 1, HotDrink, 1287},
        {"powder of selection 1", 18, 0, 4, HotDrink, 1270},
        {"sector pair 1 1", 2, 12, 16, Sector, 167},
        {"sector pair 3 2", 2, 13, 48, Sector, 184},
        {"sector pair 6 6", 2, 17, 96, Sector, 212},
        {"no command", 0, 3, 0, HotDrink, 0},
        {"key 0", 2, 0, 0, HotDrink, 0},
        {"key 10", 2, 10, 0, HotDrink, 0},
        {"preselection 2", 2, 1, 2, HotDrink, 0},
        {"powder of selection 19", 18, 18, 0, HotDrink, 0},
        {"powder of a fourth step", 18, 0, 9, HotDrink, 0},
        {"pair in row 0", 2, 12, 0, HotDrink, 0},
        {"pair in column 7", 2, 18, 16, HotDrink, 0},
        {"other command", 99, 1, 0, HotDrink, 0},
    };
    for (const auto& c : cases) {
        Bench bench(options);
        bench.write(Master, 370, 20);
        const bool runs = c.counter != 0;
        const auto before = runs ? bench.read(c.board, c.counter) : 0;
        order(bench, c.command, c.first, c.second);
        const Micros time = busyTime(bench);
        EXPECT_EQ(time > second, runs) << c.what;
        EXPECT_LT(time, runs ? 40 * second : second / 2) << c.what;
        EXPECT_EQ(bench.read(Master, 162), runs ? 1U : 0U) << c.what;
        EXPECT_EQ(runs ? bench.read(c.board, c.counter) : 1, before + 1) << c.what;
    }
}

TEST_F(DispensingTest, LastsAsLongAsTheRecipeSays) {
    Bench bench(options);
    const auto secondsOf = [&](std::uint32_t command) {
        order(bench, command, 5, 0);
        return static_cast<double>(busyTime(bench)) / second;
    };
    // Selection 5, step 1: valve 6.0 s; the first powder runs until 12.0 s; no second step.
    bench.play("H11=2 H107=60 H491=100 H779=20 H43=0");
    const double whole = secondsOf(2);
    const double water = secondsOf(26);
    EXPECT_NEAR(whole - water, 6, 0.5);
    bench.play("H43=1 H139=50");
    EXPECT_NEAR(secondsOf(26) - water, 5, 0.5);
    bench.play("H11=0");
    EXPECT_LT(secondsOf(2), 0.5) << "a selection that is off";
}

TEST_F(DispensingTest, DiagramShowsTheWaterRunning) {
    Bench bench(options);
    order(bench, 2, 5, 0);
    std::uint32_t water = 0;
    std::uint32_t powders = 0;
    while (busy(bench)) {
        water |= bench.read(HotDrink, 1292);
        powders |= bench.read(HotDrink, 1295);
        bench.wait(100 * millisecond);
    }
    EXPECT_EQ(water, 0x82U) << "valve 2 and the pump";
    EXPECT_NE(powders, 0U);
    EXPECT_EQ(bench.read(HotDrink, 1292) | bench.read(HotDrink, 1294) | bench.read(HotDrink, 1295), 0U);
}

TEST_F(DispensingTest, RestartCutsItShort) {
    Bench(options).play("M5=1 M6=0 M4=2 M7&2 +4 M! +2 H1292?0 M7~2 +60 M162?0 M4?0");
}

TEST_F(DispensingTest, NeedsTheBoardThatDispenses) {
    options.hotDrinkBoard = false;
    options.sectorBoard = false;
    Bench(options).play("M370=20 M5=1 M6=0 M4=2 M7~2 M5=0 M6=0 M4=18 M7~2 M5=12 M6=16 M4=2 M7~2");
}

std::string each(const std::string& parameters, const std::string& does) {
    std::istringstream in(parameters);
    std::string steps;
    for (std::string parameter; in >> parameter;) steps += parameter + does + ' ';
    return steps;
}

TEST_F(DispensingTest, ClearingTakesWhatItShouldAndNoMore) {
    const std::pair<std::string, std::string> cases[] = {
        {"M160 M161 M162 M164 M169 M176 M177 M192 S71 S214 H1216 H1287", "1"},
        {"M159 M163", "7"},
        {"M158 M193 M198 M199 H1215 H1288 S58 S216", "never"}};
    for (const std::string command : {"1", "7"}) {
        Bench bench(options);
        for (const auto& [parameters, clearedBy] : cases) bench.play(each(parameters, "=77"));
        bench.play("M4=" + command);
        for (const auto& [parameters, clearedBy] : cases)
            bench.play(each(parameters, clearedBy == command ? "?0" : "?77"));
    }
}

// The page sets them in one parameter and shows money by another.
TEST_F(DispensingTest, DecimalsOfMoneyFollowTheirSetting) { Bench(options).play("M3=91 M359=1 M3?89"); }

}  // namespace
}  // namespace kestrel::simulator::tests
