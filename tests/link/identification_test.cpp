// Asking the boards who they are at start-up.
// A mistake here and a fitted board stays dead, a wrong machine is written to, or the start hangs.
#include "link/identification.h"

#include <gtest/gtest.h>

#include "link/link_engine.h"
#include "link/param_table.h"
#include "link_bench.h"
#include "support/world.h"

namespace kestrel::testing {
namespace {

/// Frames asked of one bank for its identity.
Strings askedOf(const LinkBench& bench, char bank) {
    Strings asked;
    for (const std::string& frame : bench.sent())
        if (frame[0] == 'i' && frame[1] == bank) asked.push_back(frame);
    return asked;
}

TEST(Identification, ASlaveThatIsSilentAtAnyExchangeIsAbsentAndASpoiledAnswerIsReadAgain) {
    struct Row {
        const char* exchange;
        const char* replies;
        std::size_t asked;
        bool isPresent;
    };
    constexpr std::size_t AllSix = 6;
    for (const Row& row :
         {Row{"i1.1?", "s", 1, false}, Row{"i1.17?", "s", 2, false}, Row{"i1.14?", "s", AllSix, false},
          Row{"i1.12?", "bg", AllSix + 1 + AllSix, true}, Row{"i1.17?", "bsg", 3 + AllSix + AllSix, true},
          Row{"i1.17?", "bs", 3 + 2, false}, Row{"i1.17?", "hg", 2 + AllSix + AllSix, true},
          Row{"i1.12?", "bbbbbg", 8 + AllSix + AllSix, true}, Row{"i1.12?", "b", 5 * 8, false}}) {
        LinkBench bench;
        bench.replies[row.exchange] = row.replies;
        LinkBench::load();
        EXPECT_EQ(BoardPresent(1), row.isPresent) << row.exchange << row.replies;
        EXPECT_TRUE(BoardPresent(2)) << row.exchange;
        EXPECT_EQ(askedOf(bench, '1').size(), row.asked) << row.exchange << row.replies;
        const bool isSilentOnly = row.replies == std::string("s");
        EXPECT_TRUE(!isSilentOnly || bench.platform.now() < 1'800'000) << "one reply time-out and no more";
        EXPECT_TRUE(bench.platform.messages.empty()) << row.exchange;
    }
}

TEST(Identification, AtTheMastersSilenceRetryRepeatsTheExchangeAndCancelEnds) {
    for (const bool isGivenUp : {false, true}) {
        LinkBench bench;
        bench.replies = {{"i0.11?", "ssg"}, {"i0.18?", isGivenUp ? "b" : "g"}};
        bench.platform.answers = {Message::Answer::Retry, Message::Answer::Retry, Message::Answer::Cancel};
        if (isGivenUp)
            EXPECT_THROW(LinkBench::load(), ProcessEnded) << "spoiled answers count as silence";
        else
            LinkBench::load();
        Strings asked = {"i0.1?", "i0.17?", "i0.11?", "i0.11?", "i0.11?", "i0.12?", "i0.13?", "i0.14?", "i0.18?"};
        if (isGivenUp) asked.insert(asked.end(), 4, "i0.18?");
        EXPECT_EQ(askedOf(bench, '0'), asked);
        ASSERT_EQ(bench.platform.messages.size(), isGivenUp ? 3U : 2U);
        for (const Message& message : bench.platform.messages) {
            EXPECT_EQ(message.title, "Serial");
            EXPECT_EQ(message.text, "Board Not Ready\nCheck serial !");
            EXPECT_EQ(message.icon, Message::Icon::Exclamation);
            EXPECT_EQ(message.detail, "/dev/port1: no board answers");
            EXPECT_TRUE(message.isAboutTheLine);
            EXPECT_EQ(message.buttons, Message::Buttons::RetryCancel);
        }
    }
}

TEST(Identification, OnlyTheMachineThatTheProgramIsMadeForIsServed) {
    struct Row {
        int kind, type, software, revision;
        const char* text;  ///< the last failure wins
    };
    const char* const board = "Board\nNot Compatible";
    const char* const type = "Board Type\nNot Compatible";
    const char* const software = "Board Software\nNot Compatible";
    for (const Row& row : {Row{18, 256, 15, 23, ""}, Row{18, 256, 15, 255, ""}, Row{18, 256, 15, 22, software},
                           Row{18, 256, 14, 23, software}, Row{18, 256, 16, 23, software}, Row{17, 256, 15, 23, board},
                           Row{18, 257, 15, 23, type}, Row{18, 1, 15, 23, type}, Row{17, 255, 15, 23, type},
                           Row{17, 256, 14, 23, software}, Row{18, 255, 15, 22, software}}) {
        LinkBench bench;
        bench.identity[{0, 12}] = row.kind;
        bench.identity[{0, 13}] = row.type % 256;
        bench.identity[{0, 14}] = row.type / 256;
        bench.identity[{0, 11}] = row.software;
        bench.identity[{0, 18}] = row.revision;
        EXPECT_EQ(bench.endOfLoad(), row.text);
    }
}

TEST(Identification, NothingGoesOutWhileABoxStands) {
    LinkBench bench;
    bench.replies["i0.18?"] = "b";
    bench.line.answer = [&](const Bytes& frame) {
        auto pieces = bench.answer(frame);
        if (LinkBench::tell(frame) == "i0.18?") pieces[0].after = 900'000;  // the next is under way when the wait ends
        return pieces;
    };
    bench.identity[{0, 18}] = 22;
    std::size_t sent = 0;
    bench.platform.whileMessageIsOpen = [&] {
        sent = bench.line.sent.size();
        bench.run(5000);
    };
    EXPECT_THROW(LinkBench::load(), ProcessEnded);
    EXPECT_EQ(bench.line.sent.size(), sent);
}

TEST(Identification, AMasterThatNeverSaysTheSameTwiceIsNotReady) {
    LinkBench bench;
    bench.platform.answers = {Message::Answer::Cancel};
    int answers = 0;
    bench.replies["i0.1?"] = "bg";
    bench.line.answer = [&](const Bytes& frame) {
        if (LinkBench::tell(frame) == "i0.17?") bench.identity[{0, 17}] = ++answers;
        return bench.answer(frame);
    };
    EXPECT_THROW(LinkBench::load(), ProcessEnded);
    EXPECT_EQ(answers, 5);
    ASSERT_EQ(bench.platform.messages.size(), 1U);
    EXPECT_EQ(bench.platform.messages.front().text, "Board Not Ready\nCheck serial !");
}

TEST(Identification, APortLostDuringIdentificationIsAskedForAndTakenUpAgain) {
    LinkBench bench;
    bool pulled = false;
    bench.line.answer = [&](const Bytes& frame) {
        if (LinkBench::tell(frame) != "i0.12?" || pulled) return bench.answer(frame);
        pulled = true;
        bench.line.there = false;
        return Pieces{{1000, {}}};
    };
    bench.platform.whileMessageIsOpen = [&] { bench.plug(); };
    bench.platform.answers = {Message::Answer::Retry};
    LinkBench::load();
    ASSERT_EQ(bench.platform.messages.size(), 1U) << "one Retry is enough once the cable is back";
    EXPECT_EQ(bench.platform.messages[0].text, "Board Not Ready\nCheck serial !");
    EXPECT_NE(bench.platform.messages[0].detail.find("/dev/port1"), std::string::npos) << "the reason is told";
    EXPECT_TRUE(BoardPresent(0) && BoardPresent(1) && BoardPresent(2));
}

/// What a start has made of a machine.
struct Start {
    std::string ended;  ///< text of the box that ended it
    std::array<bool, Banks> present{};
    std::array<int, Banks> records{};
    int revision = 0;
    std::array<bool, Banks> late{};  ///< answers came after the reply time-out
    bool operator==(const Start& other) const {
        bool same = ended == other.ended && revision == other.revision;
        // A slave whose answer comes after the time-out is absent, as a silent one is.
        for (std::size_t i = 0; i < Banks; ++i)
            same = same && ((i > 0 && late[i] && !present[i]) ||
                            (present[i] == other.present[i] && records[i] == other.records[i]));
        return same;
    }
};

Start startOn(simulator::MachineOptions options, const simulator::FaultPlan& faults) {
    options.faults = faults;
    World world(options);
    Start start;
    world.machine.onExchange = [&start](const simulator::Exchange& exchange) {
        if (exchange.note.find("late") != std::string::npos)
            start.late[static_cast<std::size_t>(exchange.request.board)] = true;
    };
    world.platform.whileMessageIsOpen = [&world] {
        const bool asks = world.platform.messages.back().title == "Serial";
        world.platform.answers = {asks ? Message::Answer::Retry : Message::Answer::Ok};
    };
    try {
        world.start();
    } catch (const ProcessEnded&) {
        start.ended = world.platform.messages.back().text;
    }
    for (std::size_t bank = 0; bank < Banks; ++bank) {
        start.present[bank] = BoardPresent(static_cast<int>(bank));
        start.records[bank] = RecordCount(static_cast<int>(bank));
    }
    start.revision = BoardRevision();
    return start;
}

/// Bytes that come late, twice, or from nowhere make the start longer; they never make it a start on another machine.
TEST(Identification, ANoisyLineNeverMakesAnotherMachineOfTheOneThatIsThere) {
    using simulator::FaultKind;
    constexpr std::array Rates = {0.0, 0.02, 0.05, 0.1, 0.25};
    constexpr std::array Kinds = {FaultKind::Noise, FaultKind::Extra, FaultKind::Slow, FaultKind::Late};
    std::map<std::pair<bool, bool>, Start> quiet;
    int started = 0;
    // Among these seeds are some for every rule of identification that come out wrong without it.
    for (std::uint64_t seed = 4431; seed <= 4680; ++seed) {
        const std::pair fitted(seed % 4 != 0, seed % 5 != 0);
        simulator::MachineOptions options = World::still(fitted.first, fitted.second);
        options.seed = seed;
        if (!quiet.contains(fitted)) quiet[fitted] = startOn(options, {});
        simulator::FaultPlan faults;
        std::uint64_t drawn = seed * 2654435761U;
        for (const FaultKind kind : Kinds)
            faults.setRate(kind, Rates[static_cast<std::size_t>((drawn /= 7) % Rates.size())]);
        const Start noisy = startOn(options, faults);
        // On a line so bad that none of its probes succeeds there is nobody to be identified.
        if (noisy.ended.find("Serial device unavailable") != std::string::npos) continue;
        EXPECT_TRUE(noisy == quiet[fitted]) << "seed " << seed << ": " << noisy.ended;
        ++started;
    }
    EXPECT_GT(started, 200);
}

}  // namespace
}  // namespace kestrel::testing
