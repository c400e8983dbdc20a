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
    bench.play("H11=2 H107=60 H491=100 H779=20 H43=0");
    const double whole = secondsOf(2);
    const double water = secondsOf(26);
    EXPECT_NEAR(whole - water, 6, 0.5);
    bench.play("H43=1 H139=50");
    EXPECT_NEAR(secondsOf(26) - water, 5, 0.5);
    bench.play("H11=0");
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
    fresh.play("H1292?0 H1294?0 H1295?0");
}

std::string each(const std::string& parameters, const std::string& does) {
    std::istringstream in(parameters);
    std::string steps;
    for (std::string parameter; in >> parameter;) steps += parameter + does + ' ';
    return steps;
}

TEST_F(OrdersTest, ClearingTakesWhatItShouldAndNoMore) {
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

// A test begins by command 1 with its seconds in the mailbox and lasts until they have run out since the last order;
// outputs go by command 2.
TEST_F(OrdersTest, StepByStep) {
    const std::pair<const char*, const char*> cases[] = {
        {"decimals of money are set in one parameter and shown by another", "M3=91 M359=1 M3?89"},
        {"a restart cuts a dispense short", "M5=1 M6=0 M4=2 M7&2 +4 M! +2 H1292?0 M7~2 +60 M162?0 M4?0"},
        {"every order starts the test's time anew",
         "H2=60 H1=1 S285=60 S284=1 +40 H1=2 S285=60 S284=1 +40 H1=2 S285=60 S284=1 +40 H1=2 S285=60 S284=1 +40 "
         "H1297?1 S290?1 +21 H1297?0 S290?0"},
        {"time zero stops it, and the end of the first test does not end the second",
         "H2=60 H1=1 +30 H2=0 H1=1 H1297?0 +10 H2=60 H1=1 +25 H1297?1 +37 H1297?0"},
        {"outputs do not move outside the test mode", "H3=85 H1=2 S285=1 S286=1 S284=2 H1293?0 S288?0"},
        {"and in it on command only, until its end",
         "H2=60 H1=1 H2=1 H3=128 H4=255 H5=0 H6=16 H1292?0 H1=2 H1292?1 H1293?128 H1294?255 H1295?0 H1296?16 +61 "
         "H1292?0 H1296?0"},
        {"the sector board drives one output and the compressor",
         "S285=60 S284=1 S285=4 S286=32 S284=2 S288?4 S289?32 S285=32 S286=128 S284=2 S288?32 S289?128 "
         "S285=129 S286=1 S284=2 S288?129 S289?1 S285=128 S286=0 S284=2 S288?128 S289?0"},
        {"of two groups or bits at once the lowest, of a group that is none nothing",
         "S285=60 S284=1 S285=12 S286=2 S284=2 S288?4 S289?2 S285=1 S286=144 S284=2 S288?1 S289?16 "
         "S285=64 S286=1 S284=2 S288?0 S289?0 S285=1 S286=1 S284=2 S285=0 S286=0 S284=2 S288?0 S289?0"},
        {"a restart ends the test of that board",
         "H2=60 H1=1 S285=60 S284=1 S284=3 S! +2 S290?0 S285?0 H1297?1 H! +2 H1297?0"},
        {"motors go to zero for a while", "S284=3 S290?2 +5 S290?0"}};
    for (const auto& [what, steps] : cases) {
        SCOPED_TRACE(what);
        Bench(options).play(steps);
    }
    options.hotDrinkBoard = options.sectorBoard = false;
    SCOPED_TRACE("without the board that dispenses");
    Bench(options).play("M370=20 M5=1 M6=0 M4=2 M7~2 M5=0 M6=0 M4=18 M7~2 M5=12 M6=16 M4=2 M7~2");
}

}  // namespace
}  // namespace kestrel::simulator::tests
