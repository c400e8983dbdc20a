// One exchange: what is stored, what is repeated, what is given up.
// A mistake here and a wrong value is shown as the board's, or one bad byte stops the link.
#include <gtest/gtest.h>

#include "link/link_engine.h"
#include "link/param_table.h"
#include "link_bench.h"
#include "platform/trouble.h"

namespace kestrel::testing {
namespace {

using Times = std::vector<double>;
using Pieces = std::vector<ScriptedLine::Piece>;

class ExchangeTest : public ::testing::Test {
  protected:
    /// Answers the coming frames by these letters: g as the board would, b bad, s silence; then as the board would.
    void script(const std::string& letters) {
        bench.line.answer = [this, letters, i = std::size_t{0}](const Bytes& frame) mutable {
            const char letter = i < letters.size() ? letters[i++] : 'g';
            if (letter == 's') return Pieces{};
            return letter == 'b' ? LinkBench::garbage(frame) : bench.answer(frame);
        };
    }
    LinkBench bench;
};

TEST_F(ExchangeTest, AnAcceptedReplySettlesTheRecordByItsPeriodAndFlags) {
    struct Row {
        int period, extraFlags, after;
    };
    for (const Row& row : {Row{0, 0, 5}, Row{1, 0, 7}, Row{1, 32, 37}, Row{1, 64, 69}, Row{1, 24, 31}}) {
        LinkBench::reset();
        bench.rows[0][0] = {row.period, 1, 0xAABBCCDD};
        bench.board[{0, 1}] = 1000;
        bench.start();
        Watch(0, 1);
        ParamFlags(0, 1) = static_cast<std::uint8_t>(ParamFlags(0, 1) | row.extraFlags);
        bench.run(100);
        EXPECT_EQ(ParamFlags(0, 1), row.after) << row.period;
        ParamTable(0, 1).Command = 3;
        EXPECT_EQ(ParamRead(1, 0), 1000) << "a reply fills all four bytes";
    }
}

TEST_F(ExchangeTest, AnAcknowledgedWriteShowsWhatWasSent) {
    bench.start();
    Write(0, 1, 70000);
    EXPECT_EQ(ParamTable(0, 1).Value[2], 1);
    bench.run(42);
    EXPECT_EQ(ParamFlags(0, 1), 6) << "the write is no longer due once it is on the line";
    bench.run(100);
    EXPECT_EQ(bench.sent(), (Strings{"0.1=4464"}));
    EXPECT_TRUE(ParamIsFresh(1, 0));
    EXPECT_EQ(ParamTable(0, 1).Value[2], 0) << "the two bytes that went out are the value now";
}

TEST_F(ExchangeTest, ABadReplyRepeatsTheFrameAtOnceFourTimesAndTheFifthReplyIsNotJudged) {
    for (const bool write : {false, true}) {
        for (const std::string replies : {"bbbbb", "bbbbg"}) {
            LinkBench::reset();
            bench.board[{0, 1}] = 55;
            bench.start();
            script(replies);
            if (write)
                Write(0, 1, 9);
            else
                Watch(0, 1);
            bench.run(75);
            EXPECT_EQ(bench.sent(), Strings(5, write ? "0.1=9" : "0.1?"));
            EXPECT_EQ(bench.sentAt(), (Times{40, 45, 50, 55, 60})) << "without a pause";
            EXPECT_EQ(ParamFlags(0, 1), 6) << "nothing stored, still pending";
            EXPECT_TRUE(Link().LinkIdle);
            EXPECT_EQ(Link().RetryCount, 0);
            EXPECT_FALSE(Link().Timer2.Enabled);
            bench.run(300);
            ASSERT_EQ(bench.sent().size(), 6U) << "the next pass asks again, once";
            EXPECT_EQ(bench.sent()[5], "0.1?") << "what was not confirmed is read";
            EXPECT_TRUE(ParamIsFresh(1, 0));
        }
    }
}

TEST_F(ExchangeTest, ATimeOutKeepsTheCountOfBadReplies) {
    bench.rows[0][0].period = 2;
    bench.start();
    script("bbsbbg");
    Watch(0, 1);
    bench.run(1070);
    EXPECT_EQ(bench.sent(), Strings(6, "0.1?"));
    EXPECT_FALSE(ParamIsFresh(1, 0)) << "the reply after four bad ones is not judged";
}

TEST_F(ExchangeTest, SilenceIsMetAsTheRefreshByteSays) {
    struct Row {
        int period;
        bool write;
        Strings sent;
        Times times;
    };
    for (const Row& row : {Row{0x00, false, {"0.1?", "0.1?", "0.1?"}, {40, 1040, 2040}},
                           Row{0x00, true, {"0.1=9", "0.1?", "0.1?"}, {40, 1040, 2040}},
                           Row{0x02, false, {"0.1?", "0.1?", "0.1?"}, {40, 1040, 2040}},
                           Row{0x02, true, {"0.1=9", "0.1=9", "0.1=9"}, {40, 1040, 2040}},
                           Row{0x33, true, {"0.2?", "0.1=9", "0.1=9"}, {40, 440, 1440}},
                           Row{0x01, false, {"0.1?", "0.2?", "0.1?", "0.1?"}, {40, 1040, 1200, 2320}},
                           Row{0x01, true, {"0.1=9", "0.2?", "0.1?", "0.1?"}, {40, 1040, 1200, 2320}}}) {
        LinkBench::reset();
        bench.silent = {"0.1?", "0.1=9"};
        bench.board[{0, 1}] = 4;
        bench.rows[0][0].period = row.period;
        bench.start();
        const int opened = bench.platform.opened;
        if (row.write)
            Write(0, 1, 9);
        else
            Watch(0, 1);
        if ((row.period & 1) != 0) Watch(0, 2);
        bench.run(2400);
        EXPECT_EQ(bench.sent(), row.sent) << row.period << row.write;
        EXPECT_EQ(bench.sentAt(), row.times) << row.period << row.write;
        EXPECT_GT(bench.platform.opened, opened) << "each time-out opens the port anew";
        EXPECT_EQ(LinkBench::notice(), "") << "a silent board is told by the lamps alone";
        bench.silent.clear();
        bench.run(1500);
        EXPECT_TRUE(ParamIsFresh(1, 0)) << "work goes on by itself";
        EXPECT_EQ(ParamRead(1, 0), row.write && (row.period & 2) ? 9 : 4) << "a lost write shows the board's value";
    }
}

TEST_F(ExchangeTest, RepliesInPiecesAreOneReplyAndHalfAReplyIsDropped) {
    struct Row {
        Pieces first;
        std::size_t frames;
    };
    for (const Row& row :
         {Row{{{1000, {0xE8}}, {300'000, {0x03}}, {990'000, {0xEB}}}, 1}, Row{{{1000, {0xE8, 0x03, 0x77, 0xEB}}}, 1},
          Row{{{1000, {0xE8, 0x03}}}, 2}, Row{{{1000, {0xE8, 0x03}}, {999'999, {0x55, 0x55}}}, 2}}) {
        LinkBench::reset();
        bench.line.sent.clear();
        bench.board[{0, 1}] = 1000;
        bench.start();
        bench.line.answer = [&](const Bytes& frame) {
            return bench.line.sent.size() == 1 ? row.first : bench.answer(frame);
        };
        Watch(0, 1);
        bench.run(2000);
        EXPECT_EQ(bench.line.sent.size(), row.frames);
        EXPECT_EQ(ParamRead(1, 0), 1000);
        EXPECT_TRUE(ParamIsFresh(1, 0));
        bench.line.answer = [&](const Bytes& frame) { return bench.answer(frame); };
    }
}

TEST_F(ExchangeTest, BytesThatNobodyAskedForAreDroppedAndOpenNothing) {
    bench.board[{0, 1}] = 1000;
    bench.start();
    bench.run(600);
    for (int ms = 5; ms < 200; ms += 10) bench.line.inject(bench.platform.now() + ms * 1000, {0xE8, 0x03, 0xEB, 0x99});
    bench.run(205);
    EXPECT_TRUE(Link().LinkIdle);
    EXPECT_EQ(LinkBench::lamp(3), 2) << "the receive lamp tells of replies";
    EXPECT_EQ(Link().ScanIndex, 0);
    Watch(0, 1);
    bench.run(200);
    EXPECT_EQ(bench.sent(), (Strings{"0.1?"})) << "the next reply is whole, and good at once";
    EXPECT_EQ(ParamRead(1, 0), 1000);
}

TEST_F(ExchangeTest, AnEventThatChangesWhileItIsLookedAtCostsNoMoreThanATimeOut) {
    struct Row {
        std::deque<int> events;
        int opened;  ///< by the time-out alone, or by the event too
        const char* notice;
    };
    for (const Row& row : {Row{{CommEventCarrier}, 1, ""}, Row{{CommEventReceive, CommEventCarrier}, 1, ""},
                           Row{{CommEventReceive, 4}, 1, ""},
                           Row{{CommEventReceive, CommEventClearToSend}, 2, "Check serial interface "}}) {
        LinkBench::reset();
        bench.board[{0, 1}] = 321;
        bench.start();
        const int before = bench.platform.opened;
        bench.platform.commEvents = row.events;
        Watch(0, 1);
        bench.run(900);
        EXPECT_FALSE(ParamIsFresh(1, 0));
        EXPECT_EQ(LinkBench::notice(), row.notice);
        bench.run(400);
        EXPECT_EQ(bench.platform.opened - before, row.opened);
        EXPECT_EQ(ParamRead(1, 0), 321);
        EXPECT_EQ(LinkBench::notice(), "");
    }
}

TEST_F(ExchangeTest, AReplyIsFiledUnderTheBankThatAPageMovedTo) {
    for (const bool pendingThere : {true, false}) {
        LinkBench::reset();
        bench.board[{0, 2}] = 1000;
        bench.start();
        Watch(0, 2);
        bench.run(42);
        CurrentBank = 1;
        if (pendingThere) ParamWatch(2);
        bench.run(4);
        EXPECT_EQ(ParamIsFresh(2, 1), pendingThere);
        EXPECT_EQ(ParamRead(2, 1), pendingThere ? 1000 : 0);
        EXPECT_FALSE(ParamIsFresh(2, 0));
        EXPECT_EQ(ParamFlags(0, 2), 6) << "the record that was asked for is asked for again";
        EXPECT_TRUE(Link().LinkIdle);
    }
}

TEST_F(ExchangeTest, ARepeatGoesToTheBoardThatAPageMovedTo) {
    bench.start();
    script("b");
    Watch(0, 2);
    bench.run(42);
    CurrentBank = 2;
    bench.run(10);
    ASSERT_EQ(bench.line.sent.size(), 2U);
    EXPECT_EQ(bench.line.sent[1].frame[0], 0xF1);
    EXPECT_EQ(bench.line.sent[1].frame[5], 0x56);
}

TEST_F(ExchangeTest, ARecordThatIsPendingButNotInUseStopsTheProgram) {
    bench.start();
    ParamFlags(0, 1) = 2;
    EXPECT_THROW(bench.run(100), ProgrammingError);
}

}  // namespace
}  // namespace kestrel::testing
