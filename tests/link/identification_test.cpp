// Asking the boards who they are at start-up.
// A mistake here and a fitted board stays dead, a wrong machine is written to, or the start hangs.
#include "link/identification.h"

#include <gtest/gtest.h>

#include "link/link_engine.h"
#include "link/param_table.h"
#include "link_bench.h"

namespace kestrel::testing {
namespace {

/// Frames asked of one bank for its identity.
Strings askedOf(const LinkBench& bench, char bank) {
    Strings asked;
    for (const std::string& frame : bench.sent())
        if (frame[0] == 'i' && frame[1] == bank) asked.push_back(frame);
    return asked;
}

TEST(Identification, AsksEachBoardInOrderForOneByteEachAndTheMasterForItsRevision) {
    LinkBench bench;
    bench.identity[{0, 18}] = 200;
    bench.putIdentityFile(0, 3);
    LinkBench::load();
    EXPECT_EQ(bench.sent(), (Strings{"probe",  "i0.1?",  "i0.17?", "i0.11?", "i0.12?", "i0.13?", "i0.14?",
                                     "i0.18?", "i1.1?",  "i1.17?", "i1.11?", "i1.12?", "i1.13?", "i1.14?",
                                     "i2.1?",  "i2.17?", "i2.11?", "i2.12?", "i2.13?", "i2.14?"}));
    EXPECT_EQ(bench.line.sent[1].frame[0], 3) << "the command goes out as the file has it, whatever its width";
    EXPECT_EQ(BoardRevision(), 200);
    EXPECT_EQ(Link().ScanIndex + ParamFlags(0, 0), 0) << "no reply is taken for a parameter";
    EXPECT_TRUE(Link().LinkIdle);
    EXPECT_TRUE(bench.platform.messages.empty());
}

TEST(Identification, ASlaveThatIsSilentAtAnyExchangeOrSpoilsItsAnswersIsAbsent) {
    struct Row {
        const char* exchange;
        const char* replies;
        std::size_t asked;
    };
    for (const Row& row : {Row{"i1.1?", "s", 1}, Row{"i1.17?", "s", 2}, Row{"i1.14?", "s", 6}, Row{"i1.12?", "b", 8}}) {
        LinkBench bench;
        bench.replies[row.exchange] = row.replies;
        LinkBench::load();
        EXPECT_FALSE(BoardPresent(1)) << row.exchange;
        EXPECT_TRUE(BoardPresent(2)) << row.exchange;
        EXPECT_EQ(askedOf(bench, '1').size(), row.asked) << "a bad answer is asked for four times more, silence never";
        EXPECT_LT(bench.platform.now(), 1'700'000) << "one reply time-out and no more";
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

}  // namespace
}  // namespace kestrel::testing
