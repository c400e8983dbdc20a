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

constexpr const char* CheckInterface = "Check serial interface ";

TEST(PortLoss, ALostPortIsToldOnceAndWhatIsWatchedIsReadWhenItIsBack) {
    struct Row {
        const char* state;
        double pulledAt;   ///< milliseconds after the start; the frame goes out at 40
        std::size_t half;  ///< bytes of the first reply that come in time
        int period;
    };
    for (const Row& row :
         {Row{"idle", 20, 3, 0}, Row{"waiting", 42, 3, 0}, Row{"waiting, repeated", 42, 3, 2},
          Row{"half a reply", 46, 2, 0}, Row{"half a reply, repeated", 46, 2, 3}, Row{"idle again", 60, 3, 0}}) {
        SCOPED_TRACE(row.state);
        LinkBench bench;
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
        EXPECT_FALSE(bench.platform.portOpen());
        EXPECT_EQ(LinkBench::notice(), CheckInterface);
        const std::size_t sent = bench.line.sent.size();
        bench.run(1500);
        Watch(1, 1);
        Write(0, 2, 321);
        bench.run(8700);
        EXPECT_EQ(bench.line.sent.size(), sent) << "nothing goes into a port that is not there";

        bench.plug();
        bench.run(3200);  // the boards are asked who they are first
        EXPECT_EQ((bench.board[{0, 2}]), 0U) << "what nobody asked for is for the machine that was there";
        EXPECT_TRUE(ParamIsFresh(1, 0) && ParamIsFresh(2, 0) && ParamIsFresh(1, 1));
        EXPECT_EQ(ParamRead(1, 0), 1000);
        EXPECT_EQ(LinkBench::notice(), "");
        EXPECT_EQ(notices, 1);
        EXPECT_TRUE(bench.platform.messages.empty());
    }
}

constexpr std::size_t IdentityQuestions = 7 + 6 + 6;  // of the master and the two boards behind it

TEST(PortLoss, TheNoticeGoesWhenThePortIsBackThoughNothingIsAskedForAnyMore) {
    for (const bool exchangeWasOpen : {false, true}) {
        LinkBench bench;
        bench.start();
        bench.replies["0.1?"] = "s";
        if (exchangeWasOpen) Watch(0, 1);
        bench.run(100);
        bench.unplug();
        if (exchangeWasOpen) ParamRelease(1);
        bench.run(3000);
        EXPECT_EQ(LinkBench::notice(), CheckInterface);
        bench.plug();
        bench.run(3000);
        EXPECT_EQ(LinkBench::notice(), "");
        EXPECT_TRUE(bench.platform.portOpen());
        EXPECT_EQ(bench.line.sent.size(), (exchangeWasOpen ? 1U : 0U) + IdentityQuestions);
    }
}

TEST(PortLoss, APortChosenAnewEndsTheWaitForTheLostOne) {
    for (const bool exchangeIsOpen : {false, true}) {
        LinkBench bench;
        bench.start();
        bench.unplug();
        bench.run(100);
        bench.plug();
        OpenPort(1);
        const int opened = bench.platform.opened;
        bench.replies["0.1?"] = "s";
        if (exchangeIsOpen) Watch(0, 1);
        bench.run(900);  // the lost port would have been tried again by now
        EXPECT_EQ(bench.platform.opened, opened);
        EXPECT_EQ(LinkBench::notice(), "");
        bench.replies.clear();
        bench.run(2100);
        EXPECT_EQ(ParamIsFresh(1, 0), exchangeIsOpen);
    }
}

TEST(PortLoss, AFrameThatThePortDoesNotTakeIsATimeOut) {
    LinkBench bench;
    bench.start();
    bench.line.there = false;  // and nothing has told of it
    Watch(0, 1);
    bench.run(100);
    EXPECT_EQ(LinkBench::notice(), CheckInterface);
    bench.run(2900);
    EXPECT_TRUE(bench.line.sent.empty());
    bench.plug();
    bench.run(1200);
    EXPECT_TRUE(ParamIsFresh(1, 0));
    EXPECT_EQ(LinkBench::notice(), "");
}

TEST(PortLoss, APortLostDuringIdentificationIsAskedForAndTakenUpAgain) {
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

TEST(PortLoss, LampsTellOfFramesRepliesAndTrouble) {
    struct Row {
        const char* replies;
        const char* changes;  ///< milliseconds, and what then stands in the panels of sending, reception and trouble
    };
    // The frame leaves at 40, replies take 5 ms, and lamps stay on for 500 ms.
    for (const Row& row :
         {Row{"g", "40 423, 45 453, 540 153, 545 123"}, Row{"bg", "40 423, 45 456, 50 453, 545 153, 550 123"},
          Row{"bs", "40 423, 45 456, 545 423, 545 123, 1045 126, 1080 426, 1580 126"},
          Row{"s", "40 423, 540 123, 1040 126, 1040 426, 1540 126"}}) {
        LinkBench bench;
        bench.start();
        bench.run(640);  // the lamps of the identification are out by then; ticks stand at multiples of 40
        const Micros start = bench.platform.now();
        std::string changes;
        std::string shown = "123";
        bench.platform.afterEvent = [&] {
            std::string now;
            for (const int panel : {2, 3, 4}) now += std::to_string(LinkBench::lamp(panel));
            if (now == shown) return;
            shown = now;
            changes +=
                (changes.empty() ? "" : ", ") + std::to_string((bench.platform.now() - start) / 1000) + " " + now;
        };
        bench.replies["0.1?"] = row.replies;
        Watch(0, 1);
        bench.run(1600);
        EXPECT_EQ(changes, row.changes) << row.replies;
    }
}

TEST(PortLoss, ALampIsTouchedOnlyWhenItChangesAndUnknownLampsAreIgnored) {
    struct Counter : ControlView {
        int touched = 0;
        void controlChanged() override { ++touched; }
    };
    Counter counter;
    LinkBench bench;
    bench.start();
    bench.run(600);
    for (const int panel : {1, 2, 3, 4}) MDIForm1().StatusBar1.Panels(panel).bind(&counter);
    for (const int lamp : {-1, 0, 7, 1, 2, 3}) SetLinkIndicator(lamp);
    EXPECT_EQ(counter.touched, 0);
    for (const int lamp : {4, 4, 1, 6, 6, 5}) SetLinkIndicator(lamp);
    EXPECT_EQ(counter.touched, 4);
}

}  // namespace
}  // namespace kestrel::testing
