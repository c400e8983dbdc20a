// The scan: which record goes out when.
// A mistake here and a page fills slowly or never, or a setting waits for ever behind other records.
#include <gtest/gtest.h>

#include "link/link_engine.h"
#include "link/param_table.h"
#include "link_bench.h"

namespace kestrel::testing {
namespace {

using Times = std::vector<double>;

class ScanTest : public ::testing::Test {
  protected:
    LinkBench bench;
};

TEST_F(ScanTest, GoesInFileOrderBankAfterBankAndEachBankEndCostsATick) {
    bench.start();
    Watch(2, 3);
    Watch(1, 1);
    Watch(0, 2);
    Watch(0, 1);
    bench.run(1000);
    EXPECT_EQ(bench.sent(), (Strings{"0.1?", "0.2?", "1.1?", "2.3?"}));
    EXPECT_EQ(bench.sentAt(), (Times{40, 80, 160, 240}));
    bench.line.sent.clear();
    Watch(2, 1);
    Watch(1, 3);
    bench.run(1000);
    ASSERT_EQ(bench.line.sent.size(), 2U);
    EXPECT_EQ(bench.sentAt()[1] - bench.sentAt()[0], 40) << "but not after a reply for the last reachable record";
}

TEST_F(ScanTest, TheLastRecordOfAFileIsNeverReachedAndNothingIsSentUnasked) {
    bench.start();
    bench.run(5000);
    EXPECT_TRUE(bench.sent().empty());
    Watch(0, 4);
    Write(2, 4, 1);
    bench.run(5000);
    EXPECT_TRUE(bench.sent().empty());
    EXPECT_TRUE(ParamFlags(2, 4) & 128) << "the write stays queued";
}

TEST_F(ScanTest, ThePeriodGateLetsARecordThroughOnEveryPassButL) {
    struct Row {
        int period;
        bool write;
        Times times;
    };
    // A pass takes 120 ms, and 160 when a frame goes out in it.
    for (const Row& row :
         {Row{0x01, false, {40, 320, 600, 880}}, Row{0x12, false, {160, 560, 960}}, Row{0x0F, false, {40}},
          Row{0x31, false, {400, 680, 960}}, Row{0x31, true, {400, 680, 960}}, Row{0x00, true, {40}}}) {
        LinkBench::reset();
        bench.rows[0][0].period = row.period;
        bench.start();
        if (row.write)
            Write(0, 1, 9);
        else
            Watch(0, 1);
        bench.run(1000);
        EXPECT_EQ(bench.sentAt(), row.times) << row.period;
        EXPECT_EQ(bench.sent().front(), row.write ? "0.1=9" : "0.1?");
    }
}

TEST_F(ScanTest, NoFrameLeavesSoonerThanATickAfterTheEndOfTheLastTick) {
    struct Row {
        int sendingMs;  ///< for which the port holds the program up
        Micros replyAfter;
        Times times;
    };
    for (const Row& row : {Row{0, 1, {40, 80, 120}}, Row{15, 20'000, {40, 95, 150}}, Row{0, 39'000, {40, 80, 120}},
                           Row{0, 50'000, {40, 120, 200}}}) {
        LinkBench::reset();
        bench.start();
        bench.line.answer = [&](const Bytes& frame) {
            bench.platform.BusyWait(row.sendingMs);
            auto pieces = bench.answer(frame);
            pieces[0].after = row.replyAfter;
            return pieces;
        };
        for (const int number : {1, 2, 3}) Watch(0, number);
        bench.run(300);
        EXPECT_EQ(bench.sentAt(), row.times) << row.replyAfter;
        bench.line.answer = [&](const Bytes& frame) { return bench.answer(frame); };
    }
}

TEST_F(ScanTest, APageThatMovesTheCursorBeyondTheEndOfABankOnlyMovesTheScanOn) {
    bench.rows[1].resize(2);
    bench.start();
    Watch(0, 3);
    bench.run(42);  // asked, and not yet answered
    ASSERT_EQ(Link().ScanIndex, 3);
    CurrentBank = 1;
    bench.run(8);
    EXPECT_EQ(Link().ScanIndex, 4) << "not the end of bank 1, which is 2: only equality wraps here";
    EXPECT_EQ(CurrentBank, 1);
    EXPECT_TRUE(Link().LinkIdle);
    bench.run(30);
    EXPECT_EQ(Link().ScanIndex, 0) << "and the scan itself comes back";
    EXPECT_EQ(CurrentBank, 2);
}

}  // namespace
}  // namespace kestrel::testing
