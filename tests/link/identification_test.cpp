// Asking the boards who they are at start-up.
// A mistake here and a fitted board stays dead, a wrong machine is written to, or the start hangs.
#include "link/identification.h"

#include <gtest/gtest.h>

#include "link/link_engine.h"
#include "link/param_table.h"
#include "link_bench.h"

namespace kestrel::testing {
namespace {

class IdentificationTest : public ::testing::Test {
  protected:
    IdentificationTest() { bench.putFiles(); }
    /// Frames asked of one bank during the start.
    Strings askedOf(char bank) const {
        Strings asked;
        for (const std::string& frame : bench.sent())
            if (frame[0] == 'i' && frame[1] == bank) asked.push_back(frame);
        return asked;
    }
    LinkBench bench;
};

const Strings MasterExchanges = {"i0.1?", "i0.17?", "i0.11?", "i0.12?", "i0.13?", "i0.14?", "i0.18?"};

TEST_F(IdentificationTest, AsksEachBoardInOrderForOneByteEachAndTheMasterForItsRevision) {
    bench.identity[{0, 18}] = 200;
    bench.putIdentityFile(0, 20, 3);
    LinkBench::load();
    Strings all = {"probe"};
    all.insert(all.end(), MasterExchanges.begin(), MasterExchanges.end());
    for (const std::string bank : {"i1.", "i2."})
        for (const std::string record : {"1?", "17?", "11?", "12?", "13?", "14?"}) all.push_back(bank + record);
    EXPECT_EQ(bench.sent(), all);
    EXPECT_EQ(bench.line.sent[1].frame[0], 3) << "the command goes out as the file has it, whatever its width";
    EXPECT_EQ(BoardRevision(), 200);
    EXPECT_EQ(Link().ScanIndex + ParamFlags(0, 0), 0) << "no reply is taken for a parameter";
    EXPECT_TRUE(Link().LinkIdle);
    EXPECT_TRUE(bench.platform.messages.empty());
}

TEST_F(IdentificationTest, ASlaveThatFallsSilentAtAnyExchangeIsAbsent) {
    struct Row {
        const char* silent;
        std::size_t asked;
    };
    for (const Row& row : {Row{"i1.1?", 1}, Row{"i1.17?", 2}, Row{"i1.14?", 6}}) {
        bench.line.sent.clear();
        bench.silent = {row.silent};
        const Micros before = bench.platform.now();
        LinkBench::load();
        EXPECT_FALSE(BoardPresent(1)) << row.silent;
        EXPECT_TRUE(BoardPresent(2)) << row.silent;
        EXPECT_EQ(askedOf('1').size(), row.asked) << "no further exchange, no second try";
        EXPECT_LT(bench.platform.now() - before, 1'700'000) << "one reply time-out and no more";
        EXPECT_TRUE(bench.platform.messages.empty());
        LinkBench::reset();
    }
}

TEST_F(IdentificationTest, RetryRepeatsTheExchangeAndCancelEnds) {
    int silences = 2;
    bench.line.answer = [&](const Bytes& frame) {
        if (LinkBench::tell(frame) == "i0.11?" && silences-- > 0) return std::vector<ScriptedLine::Piece>{};
        return bench.answer(frame);
    };
    bench.platform.answers = {Message::Answer::Retry, Message::Answer::Retry};
    LinkBench::load();
    EXPECT_EQ(askedOf('0'),
              (Strings{"i0.1?", "i0.17?", "i0.11?", "i0.11?", "i0.11?", "i0.12?", "i0.13?", "i0.14?", "i0.18?"}));
    ASSERT_EQ(bench.platform.messages.size(), 2U);
    const Message& message = bench.platform.messages.front();
    EXPECT_EQ(message.title, "Serial");
    EXPECT_EQ(message.text, "Board Not Ready\nCheck serial !");
    EXPECT_EQ(message.icon, Message::Icon::Exclamation);
    EXPECT_EQ(message.buttons, Message::Buttons::RetryCancel);

    LinkBench::reset();
    silences = 1;
    bench.platform.answers = {Message::Answer::Cancel};
    EXPECT_THROW(LinkBench::load(), ProcessEnded);
}

TEST_F(IdentificationTest, OnlyTheMachineThatTheProgramIsMadeForIsServed) {
    struct Row {
        int kind, type, software, revision;
        const char* text;  ///< the last failure wins
    };
    const char* const board = "Board\nNot Compatible";
    const char* const type = "Board Type\nNot Compatible";
    const char* const software = "Board Software\nNot Compatible";
    for (const Row& row :
         {Row{18, 256, 15, 23, nullptr}, Row{18, 256, 15, 255, nullptr}, Row{18, 256, 15, 22, software},
          Row{18, 256, 14, 23, software}, Row{18, 256, 16, 23, software}, Row{17, 256, 15, 23, board},
          Row{18, 257, 15, 23, type}, Row{18, 1, 15, 23, type}, Row{17, 255, 15, 23, type},
          Row{17, 256, 14, 23, software}, Row{18, 255, 15, 22, software}}) {
        LinkBench::reset();
        bench.platform.messages.clear();
        bench.identity[{0, 12}] = row.kind;
        bench.identity[{0, 13}] = row.type % 256;
        bench.identity[{0, 14}] = row.type / 256;
        bench.identity[{0, 11}] = row.software;
        bench.identity[{0, 18}] = row.revision;
        if (!row.text) {
            LinkBench::load();
            EXPECT_TRUE(bench.platform.messages.empty());
            continue;
        }
        EXPECT_THROW(LinkBench::load(), ProcessEnded);
        ASSERT_EQ(bench.platform.messages.size(), 1U);
        EXPECT_EQ(bench.platform.messages[0].title, "ERROR");
        EXPECT_EQ(bench.platform.messages[0].text, row.text);
    }
}

TEST_F(IdentificationTest, SpoiledAnswersCountAsSilenceAfterFourRepeats) {
    std::string spoiled = "i1.12?";
    bench.line.answer = [&](const Bytes& frame) {
        return LinkBench::tell(frame) == spoiled ? LinkBench::garbage(frame) : bench.answer(frame);
    };
    LinkBench::load();
    EXPECT_EQ(askedOf('1'), (Strings{"i1.1?", "i1.17?", "i1.11?", "i1.12?", "i1.12?", "i1.12?", "i1.12?", "i1.12?"}));
    EXPECT_FALSE(BoardPresent(1));

    LinkBench::reset();
    spoiled = "i0.18?";
    bench.platform.answers = {Message::Answer::Cancel};
    EXPECT_THROW(LinkBench::load(), ProcessEnded);
    ASSERT_EQ(bench.platform.messages.size(), 1U);
    EXPECT_EQ(bench.platform.messages[0].title, "Serial");
}

}  // namespace
}  // namespace kestrel::testing
