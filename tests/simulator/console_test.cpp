// The board program's two languages: its command line, and the orders to the running machine.
// A script that misspells something must be told so, and must not change the machine.
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "simulator/board_options.h"
#include "simulator/commands.h"
#include "simulator/installation.h"

namespace kestrel::simulator::tests {
namespace {

BoardOptions parsed(const std::string& line) {
    std::istringstream words(line);
    return parseBoardOptions({std::istream_iterator<std::string>(words), {}});
}

TEST(BoardOptionsTest, AreTakenOrRefusedInOneLineThatNamesWhatIsWrong) {
    const BoardOptions options = parsed(
        "--directory /some/where --seed 18446744073709551615 --fault late=0.5 --link /tmp/x --latency 1000 "
        "--no-hot-drink --no-sector --still --quiet");
    EXPECT_EQ(options.machine.directory, "/some/where");
    EXPECT_EQ(options.machine.seed, 18446744073709551615ULL);
    EXPECT_DOUBLE_EQ(options.machine.faults.rate(FaultKind::Late), 0.5);
    EXPECT_EQ(options.machine.latency, second);
    EXPECT_EQ(options.link, "/tmp/x");
    EXPECT_FALSE(options.machine.hotDrinkBoard || options.machine.sectorBoard || options.machine.moving);
    EXPECT_TRUE(options.quiet);
    for (const std::string line : {"--sead", "--seed -1", "--seed 1.5", "--fault x=1", "--latency 1001"}) {
        const std::string said = refusalOf<BadOption>([&] { parsed(line); });
        EXPECT_TRUE(contains(said, line.substr(0, line.find(' '))) && !contains(said, "\n")) << said;
    }
}

// After each order a PC looks for the machine: the bytes that it hears show the state of port and line.
TEST_F(SimulatorTest, OrdersAreDoneAndAnsweredOrRefusedWithWhatIsWrong) {
    struct Row {
        const char *order, *answer;
        std::size_t heard = 2;
    };
    Bench bench(options);
    for (const Row& row : {Row{"set 2 51 12", ""},
                           Row{"get sector 51", "2 51 12"},
                           Row{"", ""},
                           Row{"  set   hot-drink 1204 65535 ", ""},
                           Row{"get 1 1204", "1 1204 65535"},
                           Row{"set master 356 4294967295", ""},
                           Row{"get 0 356", "0 356 4294967295"},
                           Row{"unplug", "", 0},
                           Row{"plug", ""},
                           Row{"silent master on", "", 0},
                           Row{"silent 0 off", ""},
                           Row{"fault drop=1", "", 1},
                           Row{"fault", ""},
                           Row{"sett 0 1 1", "!sett"},
                           Row{"set 0 1", "!usage: set"},
                           Row{"set 3 1 1", "!\"3\""},
                           Row{"set 0 x 1", "!\"x\""},
                           Row{"set 0 1 4294967296", "!4294967296"},
                           Row{"set 0 1 -1", "!-1"},
                           Row{"get 0 9999", "!9999"},
                           Row{"get 0 0", "!0"},
                           Row{"silent 0 maybe", "!maybe"},
                           Row{"fault drop", "!NAME=RATE"},
                           Row{"strike drop", "!\"drop\""},
                           Row{"strike it", "!\"it\""},
                           Row{"unplug now", "!usage: unplug"},
                           Row{"strike port", "", 0}}) {
        std::string said = "?";
        const std::string refusal = refusalOf<std::invalid_argument>([&] { said = runCommand(bench, row.order); });
        if (*row.answer == '!')
            EXPECT_TRUE(contains(refusal, row.answer + 1)) << row.order << ": " << refusal;
        else
            EXPECT_EQ(said, row.answer) << row.order << refusal;
        EXPECT_EQ(bench.exchange({0, 0, 0, 0, 0}).size(), row.heard) << row.order;
    }
}

}  // namespace
}  // namespace kestrel::simulator::tests
