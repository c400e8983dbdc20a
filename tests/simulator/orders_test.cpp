// Orders over the line: test dispenses, sector pairs, clearing of data, test modes and the decimals of money.
// The pages lock themselves by the busy bit, so it must come, last a plausible time, and go.
#include <sstream>

#include "simulator/installation.h"

namespace kestrel::simulator::tests {
namespace {

class OrdersTest : public SimulatorTest {
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

TEST_F(OrdersTest, DispensesRunAndCountOrAreIgnored) {
    struct Row {
        std::uint32_t command, first, second;
        int counter;  // of the hot-drink board from 1000 on, else of the sector board; 0: ignored
    };
    for (const Row& row :
         {Row{2, 3, 0, 1272}, Row{26, 3, 0, 1272}, Row{2, 9, 1, 1287}, Row{18, 0, 4, 1270}, Row{2, 12, 16, 167},
          Row{2, 13, 48, 184}, Row{2, 17, 96, 212}, Row{0, 3, 0, 0}, Row{2, 0, 0, 0}, Row{2, 10, 0, 0}, Row{2, 1, 2, 0},
          Row{18, 18, 0, 0}, Row{18, 0, 9, 0}, Row{2, 12, 0, 0}, Row{2, 18, 16, 0}, Row{99, 1, 0, 0}}) {
        SCOPED_TRACE(testing::Message() << row.command << ' ' << row.first << ' ' << row.second);
        Bench bench(options);
        bench.write(Master, 370, 20);
        const bool runs = row.counter != 0;
        const Board board = row.counter < 1000 ? Sector : HotDrink;
        const auto before = runs ? bench.read(board, row.counter) : 0;
        order(bench, row.command, row.first, row.second);
        const Micros time = busyTime(bench);
        EXPECT_EQ(time > second, runs);
        EXPECT_LT(time, runs ? 40 * second : second / 2);
        EXPECT_EQ(bench.read(Master, 162), runs ? 1U : 0U);
        EXPECT_EQ(runs ? bench.read(board, row.counter) : 1, before + 1);
    }
}

TEST_F(OrdersTest, ADispenseLastsAsLongAsTheRecipeSaysAndShowsTheWaterRunning) {
    Bench bench(options);
    const auto secondsOf = [&](std::uint32_t command) {
        order(bench, command, 5, 0);
        return static_cast<double>(busyTime(bench)) / second;
    };
    // Selection 5, step 1: valve 6.0 s; the first powder runs until 12.0 s; no second step.
    bench.play("1.11=2 1.107=60 1.491=100 1.779=20 1.43=0");
    const double whole = secondsOf(2);
    const double water = secondsOf(26);
    EXPECT_NEAR(whole - water, 6, 0.5);
    bench.play("1.43=1 1.139=50");
    EXPECT_NEAR(secondsOf(26) - water, 5, 0.5);
    bench.play("1.11=0");
    EXPECT_LT(secondsOf(2), 0.5) << "a selection that is off";

    Bench fresh(options);
    order(fresh, 2, 5, 0);
    std::uint32_t waters = 0;
    std::uint32_t powders = 0;
    for (; busy(fresh); fresh.wait(100 * millisecond)) {
        waters |= fresh.read(HotDrink, 1292);
        powders |= fresh.read(HotDrink, 1295);
    }
    EXPECT_EQ(waters, 0x82U) << "valve 2 and the pump";
    EXPECT_NE(powders, 0U);
    fresh.play("1.1292?0 1.1294?0 1.1295?0");
}

std::string each(const std::string& parameters, const std::string& does) {
    std::istringstream in(parameters);
    std::string steps;
    for (std::string parameter; in >> parameter;) steps += parameter + does + ' ';
    return steps;
}

TEST_F(OrdersTest, ClearingTakesWhatItShouldAndNoMore) {
    const std::pair<std::string, std::string> cases[] = {
        {"0.160 0.161 0.162 0.164 0.169 0.176 0.177 0.192 2.71 2.214 1.1216 1.1287", "1"},
        {"0.159 0.163", "7"},
        {"0.158 0.193 0.198 0.199 1.1215 1.1288 2.58 2.216", "never"}};
    for (const std::string command : {"1", "7"}) {
        Bench bench(options);
        for (const auto& [parameters, clearedBy] : cases) bench.play(each(parameters, "=77"));
        bench.play("0.4=" + command);
        for (const auto& [parameters, clearedBy] : cases)
            bench.play(each(parameters, clearedBy == command ? "?0" : "?77"));
    }
}

// A test begins by command 1 with its seconds in the mailbox and lasts until they have run out since the last order;
// outputs go by command 2.
TEST_F(OrdersTest, StepByStep) {
    const std::pair<const char*, const char*> cases[] = {
        {"decimals of money are set in one parameter and shown by another", "0.3=91 0.359=1 0.3?89"},
        {"a restart cuts a dispense short", "0.5=1 0.6=0 0.4=2 0.7&2 +4 0! +2 1.1292?0 0.7~2 +60 0.162?0 0.4?0"},
        {"every order starts the test's time anew",
         "1.2=60 1.1=1 2.285=60 2.284=1 +40 1.1=2 2.285=60 2.284=1 +40 1.1=2 2.285=60 2.284=1 +40 1.1=2 2.285=60 "
         "2.284=1 +40 "
         "1.1297?1 2.290?1 +21 1.1297?0 2.290?0"},
        {"time zero stops it, and the end of the first test does not end the second",
         "1.2=60 1.1=1 +30 1.2=0 1.1=1 1.1297?0 +10 1.2=60 1.1=1 +25 1.1297?1 +37 1.1297?0"},
        {"outputs do not move outside the test mode", "1.3=85 1.1=2 2.285=1 2.286=1 2.284=2 1.1293?0 2.288?0"},
        {"and in it on command only, until its end",
         "1.2=60 1.1=1 1.2=1 1.3=128 1.4=255 1.5=0 1.6=16 1.1292?0 1.1=2 1.1292?1 1.1293?128 1.1294?255 1.1295?0 "
         "1.1296?16 +61 "
         "1.1292?0 1.1296?0"},
        {"the sector board drives one output and the compressor",
         "2.285=60 2.284=1 2.285=4 2.286=32 2.284=2 2.288?4 2.289?32 2.285=32 2.286=128 2.284=2 2.288?32 2.289?128 "
         "2.285=129 2.286=1 2.284=2 2.288?129 2.289?1 2.285=128 2.286=0 2.284=2 2.288?128 2.289?0"},
        {"of two groups or bits at once the lowest, of a group that is none nothing",
         "2.285=60 2.284=1 2.285=12 2.286=2 2.284=2 2.288?4 2.289?2 2.285=1 2.286=144 2.284=2 2.288?1 2.289?16 "
         "2.285=64 2.286=1 2.284=2 2.288?0 2.289?0 2.285=1 2.286=1 2.284=2 2.285=0 2.286=0 2.284=2 2.288?0 2.289?0"},
        {"a restart ends the test of that board",
         "1.2=60 1.1=1 2.285=60 2.284=1 2.284=3 2! +2 2.290?0 2.285?0 1.1297?1 1! +2 1.1297?0"},
        {"motors go to zero for a while", "2.284=3 2.290?2 +5 2.290?0"}};
    for (const auto& [what, steps] : cases) {
        SCOPED_TRACE(what);
        Bench(options).play(steps);
    }
    options.hotDrinkBoard = options.sectorBoard = false;
    SCOPED_TRACE("without the board that dispenses");
    Bench(options).play("0.370=20 0.5=1 0.6=0 0.4=2 0.7~2 0.5=0 0.6=0 0.4=18 0.7~2 0.5=12 0.6=16 0.4=2 0.7~2");
}

}  // namespace
}  // namespace kestrel::simulator::tests
