// The scan and its exchanges: which record goes out when, what is stored, what is repeated, what is given up.
// A mistake here and a page fills slowly or never, a wrong value is shown as the board's, or a setting waits for ever.
#include <gtest/gtest.h>

#include "link/link_engine.h"
#include "link/param_table.h"
#include "link_bench.h"
#include "platform/errors.h"

namespace kestrel::testing {
namespace {

TEST(Scan, GoesInFileOrderBankAfterBankAndEachBankEndCostsATick) {
    LinkBench bench;
    bench.start();
    for (const auto& [bank, number] : {LinkBench::Place{2, 3}, {1, 1}, {0, 2}, {0, 1}}) Watch(bank, number);
    bench.run(1000);
    EXPECT_EQ(bench.traffic(), "40 0.1?, 80 0.2?, 160 1.1?, 240 2.3?");
    bench.line.sent.clear();
    Watch(2, 1);
    Watch(1, 3);
    bench.run(1000);
    ASSERT_EQ(bench.line.sent.size(), 2U);
    EXPECT_EQ(bench.line.sent[1].when - bench.line.sent[0].when, 40'000)
        << "but not after a reply for the last reachable record";
}

TEST(Scan, NeverReachesTheLastRecordOfAFileAndSendsNothingUnasked) {
    LinkBench bench;
    bench.start();
    bench.run(1000);
    Watch(0, 4);
    Write(2, 4, 1);
    bench.run(1000);
    EXPECT_TRUE(bench.sent().empty());
    EXPECT_TRUE(ParamFlags(2, 4) & 128) << "the write stays queued";
}

TEST(Scan, ARecordGoesOutAndSilenceIsMetAsItsPeriodSays) {
    struct Row {
        int period;
        bool write;
        bool silent;  ///< its board, while record 2 is asked for too
        const char* traffic;
    };
    // A pass takes 120 ms, and 160 when a frame goes out in it.
    for (const Row& row : {Row{0x01, false, false, "40 0.1?, 320 0.1?, 600 0.1?, 880 0.1?"},
                           Row{0x12, false, false, "160 0.1?, 560 0.1?, 960 0.1?"}, Row{0x0F, false, false, "40 0.1?"},
                           Row{0x31, false, false, "400 0.1?, 680 0.1?, 960 0.1?"},
                           Row{0x31, true, false, "400 0.1=9, 680 0.1?, 960 0.1?"}, Row{0x00, true, false, "40 0.1=9"},
                           Row{0x00, false, true, "40 0.1?, 1040 0.1?, 2040 0.1?"},
                           Row{0x00, true, true, "40 0.1=9, 1040 0.1?, 2040 0.1?"},
                           Row{0x02, false, true, "40 0.1?, 1040 0.1?, 2040 0.1?"},
                           Row{0x02, true, true, "40 0.1=9, 1040 0.1=9, 2040 0.1=9"},
                           Row{0x33, true, true, "40 0.2?, 440 0.1=9, 1440 0.1=9"},
                           Row{0x01, false, true, "40 0.1?, 1040 0.2?, 1200 0.1?, 2320 0.1?"},
                           Row{0x01, true, true, "40 0.1=9, 1040 0.2?, 1200 0.1?, 2320 0.1?"}}) {
        SCOPED_TRACE(row.traffic);
        LinkBench bench;
        if (row.silent) bench.replies = {{"0.1?", "s"}, {"0.1=9", "s"}};
        bench.board[{0, 1}] = 4;
        bench.rows[0][0].period = row.period;
        bench.start();
        const int opened = bench.platform.opened;
        Use(row.write);
        if (row.silent) Watch(0, 2);
        bench.run(row.silent ? 2400 : 1000);
        EXPECT_EQ(bench.traffic(), row.traffic);
        EXPECT_EQ(bench.platform.opened > opened, row.silent) << "each time-out opens the port anew";
        EXPECT_EQ(LinkBench::notice(), "") << "a silent board is told by the lamps alone";
        bench.replies.clear();
        bench.run(1500);
        EXPECT_TRUE(ParamIsFresh(1, 0)) << "work goes on by itself";
        const bool lost = row.silent && !(row.period & 2);
        EXPECT_EQ(ParamRead(1, 0), row.write && !lost ? 9 : 4) << "a lost write shows the board's value";
    }
}

TEST(Scan, NoFrameLeavesSoonerThanATickAfterTheEndOfTheLastTick) {
    struct Row {
        int sendingMs;  ///< for which the port holds the program up
        Micros replyAfter;
        const char* traffic;
    };
    for (const Row& row :
         {Row{0, 1, "40 0.1?, 80 0.2?, 120 0.3?"}, Row{15, 20'000, "40 0.1?, 95 0.2?, 150 0.3?"},
          Row{0, 39'000, "40 0.1?, 80 0.2?, 120 0.3?"}, Row{0, 50'000, "40 0.1?, 120 0.2?, 200 0.3?"}}) {
        LinkBench bench;
        bench.start();
        bench.line.answer = [&](const Bytes& frame) {
            bench.platform.BusyWait(row.sendingMs);
            auto pieces = bench.answer(frame);
            pieces[0].after = row.replyAfter;
            return pieces;
        };
        for (const int number : {1, 2, 3}) Watch(0, number);
        bench.run(300);
        EXPECT_EQ(bench.traffic(), row.traffic) << row.replyAfter;
    }
}

TEST(Scan, APageThatMovesTheCursorBeyondTheEndOfABankOnlyMovesTheScanOn) {
    LinkBench bench;
    bench.rows[1].resize(2);
    bench.start();
    Watch(0, 3);
    bench.run(42);  // asked, and not yet answered
    CurrentBank = 1;
    bench.run(8);
    EXPECT_EQ(Link().ScanIndex, 4) << "not the end of bank 1, which is 2: only equality wraps here";
    EXPECT_EQ(CurrentBank, 1);
    bench.run(30);
    EXPECT_EQ(Link().ScanIndex, 0) << "and the scan itself comes back";
    EXPECT_EQ(CurrentBank, 2);
}

TEST(Exchange, AnAcceptedReplySettlesTheRecordByItsPeriodAndFlags) {
    struct Row {
        int period;
        std::uint8_t extraFlags;
        int after;
    };
    for (const Row& row : {Row{0, 0, 5}, Row{1, 0, 7}, Row{1, 32, 37}, Row{1, 64, 69}, Row{1, 24, 31}}) {
        LinkBench bench;
        bench.rows[0][0] = {row.period, 1, 0xAABBCCDD};
        bench.board[{0, 1}] = 1000;
        bench.start();
        Watch(0, 1);
        ParamFlags(0, 1) |= row.extraFlags;
        bench.run(100);
        EXPECT_EQ(ParamFlags(0, 1), row.after) << row.period;
        ParamTable(0, 1).Command = 3;
        EXPECT_EQ(ParamRead(1, 0), 1000) << "a reply fills all four bytes";
    }
}

TEST(Exchange, ABadReplyRepeatsTheFrameAtOnceFourTimesAndTheFifthReplyIsNotJudged) {
    struct Row {
        int period;
        bool write;
        const char* replies;
        const char* traffic;  ///< the next pass asks again; what was not confirmed is read
    };
    const char* const reads = "40 0.1?, 45 0.1?, 50 0.1?, 55 0.1?, 60 0.1?, 200 0.1?";
    const char* const writes = "40 0.1=9, 45 0.1=9, 50 0.1=9, 55 0.1=9, 60 0.1=9, 200 0.1?";
    // A time-out keeps the count of bad replies.
    for (const Row& row : {Row{0, false, "bbbbbg", reads}, Row{0, false, "bbbbg", reads},
                           Row{0, true, "bbbbbg", writes}, Row{0, true, "bbbbg", writes},
                           Row{2, false, "bbsbbg", "40 0.1?, 45 0.1?, 50 0.1?, 1050 0.1?, 1055 0.1?, 1060 0.1?"}}) {
        LinkBench bench;
        bench.rows[0][0].period = row.period;
        bench.start();
        bench.replies[row.write ? "0.1=9" : "0.1?"] = row.replies;
        Use(row.write);
        bench.run(70);
        EXPECT_FALSE(ParamIsFresh(1, 0)) << "nothing is stored";
        bench.run(1030);
        EXPECT_EQ(bench.traffic(), row.traffic);
        EXPECT_EQ(ParamIsFresh(1, 0), row.period == 0);
        EXPECT_FALSE(Link().Timer2.Enabled);
    }
}

TEST(Exchange, RepliesInPiecesAreOneReplyAndHalfAReplyIsDropped) {
    struct Row {
        Pieces first;
        std::size_t frames;
    };
    for (const Row& row :
         {Row{{{1000, {0xE8}}, {300'000, {0x03}}, {990'000, {0xEB}}}, 1}, Row{{{1000, {0xE8, 0x03, 0x77, 0xEB}}}, 1},
          Row{{{1000, {0xE8, 0x03}}}, 2}, Row{{{1000, {0xE8, 0x03}}, {999'999, {0x55, 0x55}}}, 2}}) {
        LinkBench bench;
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
    }
}

TEST(Exchange, BytesThatNobodyAskedForAreDroppedAndOpenNothing) {
    LinkBench bench;
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

TEST(Exchange, AnEventThatChangesWhileItIsLookedAtCostsNoMoreThanATimeOut) {
    struct Row {
        std::deque<int> events;
        int opened;  ///< by the time-out alone, or by the event too
        const char* notice;
    };
    for (const Row& row : {Row{{CommEventCarrier}, 1, ""}, Row{{CommEventReceive, CommEventCarrier}, 1, ""},
                           Row{{CommEventReceive, 4}, 1, ""},
                           Row{{CommEventReceive, CommEventClearToSend}, 2, "Check serial interface "}}) {
        LinkBench bench;
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

TEST(Exchange, AFrameGoesToNoOtherBoardWhenAPageHasMovedTheBankUnderIt) {
    for (const bool pendingThere : {true, false}) {
        LinkBench bench;
        bench.replies["0.2?"] = "bg";
        bench.board = {{{0, 2}, 1000}, {{1, 2}, 2000}};
        bench.start();
        Watch(0, 2);
        bench.run(42);
        CurrentBank = 1;
        if (pendingThere) ParamWatch(2);
        bench.run(9);
        EXPECT_EQ(bench.sent(), (Strings{"0.2?"}));
        EXPECT_FALSE(ParamIsFresh(2, 1));
        EXPECT_EQ(ParamFlags(0, 2), 6) << "the record that was asked for is asked for again";
        EXPECT_TRUE(Link().LinkIdle);
    }
}

TEST(Exchange, ARecordThatIsPendingButNotInUseStopsTheProgram) {
    LinkBench bench;
    bench.start();
    ParamFlags(0, 1) = 2;
    EXPECT_THROW(bench.run(100), ProgrammingError);
}

}  // namespace
}  // namespace kestrel::testing
