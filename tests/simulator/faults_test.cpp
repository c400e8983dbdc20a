// Faults asked for by name and rate, or by hand: the text form, and what each kind does to an exchange.
// A fault that does nothing, or does what another does, would leave the program's recovery untested.
#include "simulator/faults.h"

#include <algorithm>
#include <set>
#include <stdexcept>

#include "simulator/installation.h"

namespace kestrel::simulator::tests {
namespace {

std::vector<FaultKind> allKinds() {
    std::vector<FaultKind> all;
    for (std::size_t i = 0; i < faultKindCount; ++i) all.push_back(static_cast<FaultKind>(i));
    return all;
}

TEST(FaultText, IsReadOrRefusedWithWhatIsWrong) {
    const FaultPlan plan = parseFaults("drop=0.01,flip=1,port=0");
    EXPECT_DOUBLE_EQ(plan.rate(FaultKind::Drop), 0.01);
    EXPECT_DOUBLE_EQ(plan.rate(FaultKind::Flip), 1);
    EXPECT_DOUBLE_EQ(plan.rate(FaultKind::Late), 0);
    EXPECT_DOUBLE_EQ(parseFaults("").rate(FaultKind::Drop), 0);
    for (const FaultKind kind : allKinds())
        EXPECT_TRUE(contains(faultHelp(), "  " + std::string(nameOf(kind)) + "  ")) << nameOf(kind);
    const std::pair<const char*, const char*> wrong[] = {
        {"drap=0.1", "drap"}, {"drop", "NAME=RATE"},     {"drop=", "drop"},       {"drop=1.5", "1.5"},
        {"drop=-1", "-1"},    {"drop=0.1x", "\"0.1x\""}, {"drop=nan", "\"nan\""}, {",drop=0.1", "\"\""}};
    for (const auto& [text, named] : wrong)
        EXPECT_TRUE(contains(refusalOf<std::invalid_argument>([&, t = text] { parseFaults(t); }), named)) << text;
}

class FaultTest : public SimulatorTest {
  protected:
    static constexpr std::uint64_t seeds = 20;
    static constexpr std::uint32_t old = 40;

    MachineOptions with(const std::string& faults, std::uint64_t seed = 1) {
        options.faults = parseFaults(faults);
        options.seed = seed;
        return options;
    }
    // The boards that are fitted, and no others, work and are at rest; nothing is left of what happened before.
    void expectSound(Bench& bench) const {
        EXPECT_TRUE(bench.portOpen() && bench.takeOutput(bench.now).empty());
        bench.play(options.hotDrinkBoard ? "0.1&4 1.41=9 1.41?9 1.1297?0" : "0.1~4");
        bench.play(options.sectorBoard ? "0.2&4 2.41=9 2.41?9 2.290?0" : "0.2~4");
        bench.play("0.41=9 0.41?9 0.7~2");
    }
    void expectRecovery(Bench& bench) const {
        bench.setFaults({});
        bench.wait(15 * second);
        bench.takeOutput(bench.now);
        expectSound(bench);
    }
    Bytes replyWith(const std::string& faults, std::uint64_t seed, Micros wait = second) {
        Bench bench(with(faults, seed));
        bench.setValue(Master, 16, 500);
        return bench.exchange(read, wait);
    }
    const Bytes read = readFrame(Master, 16);
    const Bytes write = writeFrame(Master, 16, 500);
    const Bytes whole{0xF4, 0x01, 0xF5};  // reply to `read` after `write`
};

// Whatever the fault, it is told, the board's value is one that follows from it, and all is well when it has ended.
TEST_F(FaultTest, EachKindShowsItselfAndPasses) {
    const struct {
        std::vector<std::string> kinds;
        bool acknowledged;
        std::set<std::uint32_t> values;  // each of them, with one seed or another
    } cases[] = {
        {{"slow", "late", "drop", "extra", "flip", "ack", "echo", "noise", "collide", "busy", "stream"}, false, {500}},
        {{"reset", "lost", "port"}, false, {old}},
        {{"silent"}, false, {old, 500}},
        {{"noeffect"}, true, {old}},
        {{"clamp"}, true, {250}},
        {{"change", "swap"}, true, {500}},
    };
    for (const auto& c : cases) {
        for (const std::string& kind : c.kinds) {
            std::set<std::uint32_t> values;
            for (std::uint64_t seed = 1; seed <= 8; ++seed) {
                SCOPED_TRACE(kind + ", seed " + std::to_string(seed));
                Bench bench(with(kind + "=1", seed));
                bench.setValue(Master, 16, old);
                std::string note;
                bench.onExchange = [&](const Exchange& e) { note = e.note; };
                const Bytes reply = bench.exchange(write, 45 * millisecond);
                EXPECT_EQ(note, kind);
                EXPECT_EQ(reply == goodAck(write), c.acknowledged) << hexOf(reply);
                values.insert(bench.value(Master, 16));
                expectRecovery(bench);
            }
            EXPECT_EQ(values, c.values) << kind;
        }
    }
}

TEST_F(FaultTest, AChangeStrikesWhatWasAskedForLastButNothingThatBoardsSayOfThemselves) {
    Bench bench(with(""));
    bench.strike(FaultKind::Change);  // nothing has been asked for
    bench.play("2.71=5000");
    bench.strike(FaultKind::Change);
    EXPECT_NE(bench.read(Sector, 71), 5000U);
    for (const char* report : {"0.1?4", "0.2?4", "1.1297?0", "2.290?0"}) {
        bench.play(report);
        bench.strike(FaultKind::Change);
        bench.play(report);
    }
}

// By hand, whatever boards there are: it happens at once, it ends, and no board that is not there is heard of.
TEST_F(FaultTest, StrikesByHandWithoutAnExchange) {
    const std::set<FaultKind> seenAtOnce{FaultKind::Noise,    FaultKind::Reset, FaultKind::BoardLost,
                                         FaultKind::PortLost, FaultKind::Busy,  FaultKind::Stream};
    const std::set<FaultKind> unseen{FaultKind::Change, FaultKind::Swap};
    std::size_t streamed = 0;
    for (const bool slaves : {true, false}) {
        options.hotDrinkBoard = options.sectorBoard = slaves;
        for (const FaultKind kind : allKinds()) {
            for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
                SCOPED_TRACE(std::string(nameOf(kind)) + ", seed " + std::to_string(seed));
                Bench bench(with("", seed));
                bench.wait(minute);
                const std::string said = refusalOf<std::invalid_argument>([&] { bench.strike(kind); });
                EXPECT_EQ(said == "taken", seenAtOnce.contains(kind) || unseen.contains(kind)) << said;
                bool isSeen = false;
                for (const Board board : {Sector, HotDrink, Master})
                    if (bench.fitted(board))
                        isSeen = bench.exchange(readFrame(board, 7), 20 * millisecond).size() != 2 || isSeen;
                EXPECT_EQ(isSeen, seenAtOnce.contains(kind));
                EXPECT_EQ(bench.portOpen(), kind != FaultKind::PortLost);
                const std::size_t late = bench.exchange({}, 6 * second).size();
                EXPECT_TRUE(kind != FaultKind::Busy || late == (slaves ? 6 : 2)) << "all is answered in the end";
                if (kind == FaultKind::Stream) streamed += late;
                expectRecovery(bench);
            }
        }
    }
    EXPECT_GT(streamed, 2 * seeds * 400) << "bytes: the line is not free for a while";
}

}  // namespace
}  // namespace kestrel::simulator::tests
