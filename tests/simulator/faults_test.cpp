// Faults asked for by name and rate: the text form, and what each kind does to an exchange.
// A fault that does nothing, or does what another does, would leave the program's recovery untested.
#include "simulator/faults.h"

#include <algorithm>
#include <bit>
#include <set>
#include <stdexcept>

#include "simulator/installation.h"

namespace kestrel::simulator::tests {
namespace {

TEST(FaultText, ReadsNamesAndRates) {
    const FaultPlan plan = parseFaults("drop=0.01,flip=1,port=0");
    EXPECT_DOUBLE_EQ(plan.rate(FaultKind::Drop), 0.01);
    EXPECT_DOUBLE_EQ(plan.rate(FaultKind::Flip), 1);
    EXPECT_DOUBLE_EQ(plan.rate(FaultKind::PortLost), 0);
    EXPECT_DOUBLE_EQ(plan.rate(FaultKind::Late), 0);
    EXPECT_DOUBLE_EQ(parseFaults("").rate(FaultKind::Drop), 0);
}

TEST(FaultText, SaysWhatIsWrong) {
    const struct {
        const char* text;
        const char* named;
    } cases[] = {{"drap=0.1", "drap"}, {"drop", "NAME=RATE"},     {"drop=", "drop"},       {"drop=1.5", "1.5"},
                 {"drop=-1", "-1"},    {"drop=0.1x", "\"0.1x\""}, {"drop=nan", "\"nan\""}, {",drop=0.1", "\"\""}};
    for (const auto& c : cases) {
        try {
            parseFaults(c.text);
            ADD_FAILURE() << c.text;
        } catch (const std::invalid_argument& error) {
            EXPECT_NE(std::string(error.what()).find(c.named), std::string::npos) << error.what();
        }
    }
}

class FaultTest : public testing::Test {
  protected:
    MachineOptions with(const std::string& faults, std::uint64_t seed = 1) const {
        MachineOptions options = installation.options();
        options.moving = false;
        options.seed = seed;
        options.faults = parseFaults(faults);
        return options;
    }
    const Bytes read = readFrame(Board::Master, Installation::address(Board::Master, 16), 2);
    const Bytes write = writeFrame(Board::Master, Installation::address(Board::Master, 16), 2, 500);
    const Bytes goodAck{static_cast<std::uint8_t>(write.back() * 2)};
    Installation installation;
};

// Whatever the fault, the board's value afterwards is the old or the new one, and the machine recovers when it ends.
TEST_F(FaultTest, EachKindShowsItselfAndPasses) {
    for (const std::string kind :
         {"silent", "slow", "late", "drop", "extra", "flip", "ack", "echo", "noise", "reset", "lost", "port"}) {
        for (std::uint64_t seed = 1; seed <= 8; ++seed) {
            Machine machine(with(kind + "=1", seed));
            std::string note;
            machine.onExchange = [&](const Exchange& e) { note = e.note; };
            Pc pc(machine);
            const auto before = machine.value(Board::Master, 16);
            const Bytes reply = pc.exchange(write, 45 * millisecond);
            EXPECT_EQ(note, kind);
            EXPECT_NE(hexOf(reply), hexOf(goodAck)) << kind << " left the exchange as it was";
            const auto value = machine.value(Board::Master, 16);
            EXPECT_TRUE(value == before || value == 500) << kind;

            machine.setFaults({});
            pc.wait(15 * second);
            EXPECT_TRUE(machine.portOpen());
            machine.takeOutput(pc.now);
            EXPECT_EQ(pc.exchange(write), goodAck) << kind;
            EXPECT_EQ(machine.value(Board::Master, 1) & 4, 4U);
        }
    }
}

TEST_F(FaultTest, RepliesAreSpoiledAsTheirKindSays) {
    const Bytes whole{0xF4, 0x01, 0xF5};
    const auto replyWith = [&](const std::string& faults, std::uint64_t seed, Micros wait) {
        Machine machine(with(faults, seed));
        machine.setValue(Board::Master, 16, 500);
        Pc pc(machine);
        return pc.exchange(read, wait);
    };
    std::set<std::string> extras;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        EXPECT_EQ(replyWith("drop=1", seed, second).size(), 2U);
        EXPECT_EQ(replyWith("late=1", seed, 999 * millisecond).size(), 0U);
        EXPECT_EQ(replyWith("late=1", seed, 6 * second), whole);
        EXPECT_EQ(replyWith("slow=1", seed, 99 * millisecond).size(), 0U);
        EXPECT_EQ(replyWith("slow=1", seed, 950 * millisecond), whole);
        extras.insert(hexOf(replyWith("extra=1", seed, second)));

        const Bytes flipped = replyWith("flip=1", seed, second);
        ASSERT_EQ(flipped.size(), whole.size());
        int bits = 0;
        for (std::size_t i = 0; i < whole.size(); ++i) {
            bits += std::popcount(static_cast<unsigned>(whole[i] ^ flipped[i]));
        }
        EXPECT_EQ(bits, 1);

        Bytes echoed = read;
        echoed.insert(echoed.end(), whole.begin(), whole.end());
        EXPECT_EQ(replyWith("echo=1", seed, second), echoed);

        const Bytes noisy = replyWith("noise=1", seed, second);
        ASSERT_GT(noisy.size(), whole.size());
        EXPECT_EQ(hexOf(noisy).rfind(hexOf(whole), 0), 0U);
    }
    for (const std::string& extra : extras) EXPECT_EQ(extra.size(), std::string("00 00 00 00").size());
    EXPECT_GT(extras.size(), 3U) << "the byte too many must not always be the same";
}

TEST_F(FaultTest, SilenceIsARequestOrAReplyThatWasLost) {
    std::set<std::uint32_t> values;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        Machine machine(with("silent=1", seed));
        machine.setValue(Board::Master, 16, 0);
        EXPECT_TRUE(Pc(machine).exchange(write).empty());
        values.insert(machine.value(Board::Master, 16));
    }
    EXPECT_EQ(values, (std::set<std::uint32_t>{0, 500}));
}

TEST_F(FaultTest, LostBoardIsMissingInItsPresenceWord) {
    Machine machine(with("lost=1"));
    Pc pc(machine);
    EXPECT_TRUE(pc.exchange(readFrame(Board::Sector, Installation::address(Board::Sector, 1), 1)).empty());
    machine.setFaults({});
    EXPECT_EQ(pc.read(Board::Master, 2) & 4, 0U);
    EXPECT_EQ(pc.read(Board::Master, 1) & 4, 4U);
    pc.wait(11 * second);
    EXPECT_EQ(pc.read(Board::Master, 2) & 4, 4U);
}

// Two hours of a bad line with everything at once, garbage from the PC included; then the machine is as good as new.
TEST_F(FaultTest, SurvivesEverythingAtOnce) {
    MachineOptions options = with(
        "silent=0.05,slow=0.05,late=0.05,drop=0.1,extra=0.1,flip=0.1,ack=0.1,echo=0.1,noise=0.2,reset=0.01,lost=0.01,"
        "port=0.01");
    options.moving = true;
    Machine machine(options);
    Random chance(7, Stream::Faults, 99);
    Pc pc(machine);
    for (int i = 0; i < 20'000; ++i) {
        const Board board = allBoards[static_cast<std::size_t>(chance.between(0, 2))];
        const int parameter = static_cast<int>(chance.between(1, 300));
        const int width = Installation::width(board, parameter);
        const auto value = static_cast<std::uint32_t>(chance.between(0, 255));
        Bytes frame = chance.chance(0.5) ? readFrame(board, Installation::address(board, parameter), width)
                                         : writeFrame(board, Installation::address(board, parameter), width, value);
        if (chance.chance(0.2))
            frame[static_cast<std::size_t>(chance.between(0, 4))] = static_cast<std::uint8_t>(value);
        EXPECT_LT(pc.exchange(frame, chance.between(0, 700) * millisecond).size(), 100U);
    }
    machine.setFaults({});
    pc.wait(20 * second);
    machine.takeOutput(pc.now);
    for (const Board board : allBoards) {
        EXPECT_TRUE(pc.write(board, 41, 9));
        EXPECT_EQ(pc.read(board, 41), 9U);
    }
}

TEST_F(FaultTest, OneKindMoreLeavesTheOthersAsTheyWere) {
    const auto struck = [&](const std::string& faults) {
        Machine machine(with(faults));
        std::vector<bool> dropped;
        machine.onExchange = [&](const Exchange& e) { dropped.push_back(e.note.find("drop") != std::string::npos); };
        Pc pc(machine);
        for (int i = 0; i < 200; ++i) pc.exchange(read, 100 * millisecond);
        return dropped;
    };
    const auto alone = struck("drop=0.3");
    EXPECT_EQ(alone, struck("drop=0.3,flip=0.5,extra=0.5"));
    const auto count = std::count(alone.begin(), alone.end(), true);
    EXPECT_GT(count, 30);
    EXPECT_LT(count, 90);
}

}  // namespace
}  // namespace kestrel::simulator::tests
