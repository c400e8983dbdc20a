// The scan: which record goes out when.
// A mistake here and a page fills slowly or never, or a setting waits for ever behind other records.
#include <gtest/gtest.h>

#include "link/link_engine.h"
#include "link/param_table.h"
#include "link_bench.h"

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

}  // namespace
}  // namespace kestrel::testing
