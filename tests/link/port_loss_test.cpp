// The lamps and the text of the status bar, and a port that goes away under the program.
// A mistake here and a pulled cable loses settings, floods the screen, or needs a restart of the program.
#include <gtest/gtest.h>

#include "link/link_engine.h"
#include "link/param_table.h"
#include "link/port_search.h"
#include "link_bench.h"
#include "shell/main_window.h"

namespace kestrel::testing {
namespace {

class PortLossTest : public ::testing::Test {
  protected:
    LinkBench bench;
};

constexpr const char* CheckInterface = "Check serial interface ";

TEST_F(PortLossTest, ALostPortIsToldOnceAndWhatWasEditedGoesOutWhenItIsBack) {
    struct Row {
        const char* state;
        double pulledAt;   ///< milliseconds after the start; the frame goes out at 40
        std::size_t half;  ///< bytes of the first reply that come in time
        int period;
    };
    for (const Row& row :
         {Row{"idle", 20, 3, 0}, Row{"waiting", 42, 3, 0}, Row{"waiting, repeated", 42, 3, 2},
          Row{"half a reply", 46, 2, 0}, Row{"half a reply, repeated", 46, 2, 3}, Row{"idle again", 60, 3, 0}}) {
        LinkBench::reset();
        bench.line.sent.clear();
        bench.rows[0][0].period = row.period;
        bench.board = {{{0, 1}, 1000}};
        bench.start();
        bench.line.answer = [&](const Bytes& frame) {
            auto pieces = bench.answer(frame);
            if (bench.line.sent.size() == 1 && row.half < 3) pieces[0].bytes.resize(row.half);
            return pieces;
        };
        int notices = 0;
        std::string shown;
        bench.platform.afterEvent = [&] {
            if (LinkBench::notice() != shown && !LinkBench::notice().empty()) ++notices;
            shown = LinkBench::notice();
        };
        Watch(0, 1);
        bench.run(row.pulledAt);
        bench.unplug();
        EXPECT_FALSE(bench.platform.portOpen()) << row.state;
        EXPECT_EQ(LinkBench::notice(), CheckInterface) << row.state;
        const std::size_t sent = bench.line.sent.size();
        bench.run(1500);
        Watch(1, 1);
        Write(0, 2, 321);
        bench.run(8700);
        EXPECT_EQ(bench.line.sent.size(), sent) << row.state << ": nothing goes into a port that is not there";
        EXPECT_EQ(notices, 1) << row.state;

        bench.plug();
        bench.run(1600);
        EXPECT_EQ((bench.board[{0, 2}]), 321U) << row.state;
        EXPECT_TRUE(ParamIsFresh(1, 0) && ParamIsFresh(2, 0) && ParamIsFresh(1, 1)) << row.state;
        EXPECT_EQ(ParamRead(1, 0), 1000) << row.state;
        EXPECT_EQ(LinkBench::notice(), "") << row.state;
        EXPECT_EQ(notices, 1) << row.state;
        EXPECT_TRUE(bench.platform.messages.empty()) << row.state;
        bench.platform.afterEvent = nullptr;
        bench.line.answer = [&](const Bytes& frame) { return bench.answer(frame); };
    }
}

TEST_F(PortLossTest, AnIdleLinkTakesTheNoticeAwayWhenThePortIsBack) {
    bench.start();
    bench.unplug();
    bench.run(3000);
    bench.plug();
    bench.run(1100);
    EXPECT_EQ(LinkBench::notice(), "");
    EXPECT_TRUE(bench.platform.portOpen());
    EXPECT_TRUE(bench.line.sent.empty());
}

TEST_F(PortLossTest, APortChosenAnewEndsTheWaitForTheLostOne) {
    for (const bool exchangeIsOpen : {false, true}) {
        LinkBench::reset();
        bench.start();
        bench.unplug();
        bench.run(100);
        bench.plug();
        OpenPort(1);
        const int opened = bench.platform.opened;
        bench.silent = {"0.1?"};
        if (exchangeIsOpen) Watch(0, 1);
        bench.run(900);  // the lost port would have been tried again by now
        EXPECT_EQ(bench.platform.opened, opened);
        EXPECT_EQ(LinkBench::notice(), exchangeIsOpen ? CheckInterface : "");
        bench.silent.clear();
        bench.run(1100);
        EXPECT_EQ(LinkBench::notice(), "");
        EXPECT_EQ(ParamIsFresh(1, 0), exchangeIsOpen);
    }
}

TEST_F(PortLossTest, AFrameThatThePortDoesNotTakeIsATimeOut) {
    bench.start();
    bench.line.there = false;  // and nothing has told of it
    Watch(0, 1);
    bench.run(3000);
    EXPECT_EQ(LinkBench::notice(), CheckInterface);
    EXPECT_TRUE(bench.line.sent.empty());
    bench.plug();
    bench.run(1200);
    EXPECT_TRUE(ParamIsFresh(1, 0));
    EXPECT_EQ(LinkBench::notice(), "");
}

TEST_F(PortLossTest, APortLostDuringIdentificationIsAskedForAndTakenUpAgain) {
    bench.putFiles();
    bool pulled = false;
    bench.line.answer = [&](const Bytes& frame) {
        if (LinkBench::tell(frame) != "i0.12?" || pulled) return bench.answer(frame);
        pulled = true;
        bench.line.there = false;
        return std::vector<ScriptedLine::Piece>{{1000, {}}};
    };
    bench.platform.whileMessageIsOpen = [this] { bench.plug(); };
    bench.platform.answers = {Message::Answer::Retry};
    LinkBench::load();
    ASSERT_EQ(bench.platform.messages.size(), 1U) << "one Retry is enough once the cable is back";
    EXPECT_EQ(bench.platform.messages[0].text, "Board Not Ready\nCheck serial !");
    EXPECT_NE(bench.platform.messages[0].detail.find("/dev/port1"), std::string::npos) << "the reason is told";
    EXPECT_TRUE(BoardPresent(0) && BoardPresent(1) && BoardPresent(2));
}

TEST_F(PortLossTest, LampsTellOfFramesRepliesAndTrouble) {
    struct Row {
        double ms;
        int send, receive, error;
    };
    const auto expectLamps = [this](const std::vector<Row>& rows, const char* what) {
        LinkBench::reset();
        bench.start();
        bench.run(640);  // the lamps of the identification are out by then; ticks stand at multiples of 40
        Watch(0, 1);
        double now = 0;
        for (const Row& row : rows) {
            bench.run(row.ms - now);
            now = row.ms;
            EXPECT_EQ((std::array{LinkBench::lamp(2), LinkBench::lamp(3), LinkBench::lamp(4)}),
                      (std::array{row.send, row.receive, row.error}))
                << what << " at " << row.ms;
        }
    };
    // The frame leaves at 40, replies take 5 ms, and lamps stay on for 500 ms.
    expectLamps({{39, 1, 2, 3}, {41, 4, 2, 3}, {46, 4, 5, 3}, {539, 4, 5, 3}, {541, 1, 5, 3}, {546, 1, 2, 3}}, "good");
    int asked = 0;
    bench.line.answer = [&](const Bytes& frame) {
        const bool bad = LinkBench::tell(frame) == "0.1?" && ++asked == 1;
        return bad ? LinkBench::garbage(frame) : bench.answer(frame);
    };
    expectLamps({{46, 4, 5, 6}, {51, 4, 5, 3}, {544, 4, 5, 3}, {546, 1, 5, 3}, {551, 1, 2, 3}}, "bad, then good");
    asked = 0;
    bench.line.answer = [&](const Bytes& frame) {
        if (LinkBench::tell(frame) != "0.1?") return bench.answer(frame);
        return ++asked == 1 ? LinkBench::garbage(frame) : std::vector<ScriptedLine::Piece>{};
    };
    expectLamps({{46, 4, 5, 6}, {544, 4, 5, 6}, {546, 1, 2, 3}, {1046, 1, 2, 6}, {1081, 4, 2, 6}}, "bad, then silence");
    bench.line.answer = [&](const Bytes& frame) { return bench.answer(frame); };
    bench.silent = {"0.1?"};
    expectLamps({{541, 1, 2, 3}, {1039, 1, 2, 3}, {1041, 4, 2, 6}, {1541, 1, 2, 6}}, "silence");
}

TEST_F(PortLossTest, ALampIsTouchedOnlyWhenItChangesAndUnknownLampsAreIgnored) {
    struct Counter : ControlView {
        int touched = 0;
        void controlChanged() override { ++touched; }
    };
    bench.start();
    bench.run(600);
    Counter counter;
    for (const int panel : {1, 2, 3, 4}) MDIForm1().StatusBar1.Panels(panel).bind(&counter);
    for (const int lamp : {-1, 0, 7, 1, 2, 3}) SetLinkIndicator(lamp);
    EXPECT_EQ(counter.touched, 0);
    for (const int lamp : {4, 4, 1, 6, 6, 5}) SetLinkIndicator(lamp);
    EXPECT_EQ(counter.touched, 4);
    for (const int panel : {1, 2, 3, 4}) MDIForm1().StatusBar1.Panels(panel).unbind(&counter);
}

}  // namespace
}  // namespace kestrel::testing
