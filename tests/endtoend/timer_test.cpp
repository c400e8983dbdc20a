// Timers on the real clock: the pace of the link rests on them.
// The only tests that let real time pass for its own sake.
#include "platform/timer.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <vector>

#include "qt/io/qt_platform.h"
#include "shell/session.h"

namespace kestrel {
namespace {

constexpr double Millisecond = 1e6;

class RealTimer : public ::testing::Test {
  protected:
    RealTimer() { setPlatform(&platform); }
    ~RealTimer() override { setPlatform(nullptr); }

    static void start(Timer& timer, std::function<void()> handler) {
        timer.OnTimer(std::move(handler));
        timer.Enabled = true;
    }
    void pumpUntil(const std::function<bool()>& done) {
        QElapsedTimer guard;
        guard.start();
        while (!done() && !guard.hasExpired(2000)) platform.PumpEvents();
    }

    Session session;
    qt::QtPlatform platform{{.directory = "/tmp", .devices = {}}};
};

TEST_F(RealTimer, RestartedFromItsOwnHandlerIsNeverEarlyAndKeepsThePaceOfTheLink) {
    constexpr int Ticks = 20;
    std::vector<double> intervals;
    QElapsedTimer clock;
    Timer timer(40);
    timer.OnTimer([&] {
        timer.Enabled = false;
        intervals.push_back(static_cast<double>(clock.nsecsElapsed()) / Millisecond);
        timer.Enabled = true;
        clock.restart();
    });
    clock.start();
    timer.Enabled = true;
    pumpUntil([&] { return intervals.size() == Ticks; });
    timer.Enabled = false;
    ASSERT_EQ(intervals.size(), static_cast<std::size_t>(Ticks));
    std::sort(intervals.begin(), intervals.end());
    EXPECT_GE(intervals.front(), 39.99) << "a timer that fires early breaks the pause between two frames";
    // One in four, because a machine that is busy elsewhere delays the others.
    EXPECT_LT(intervals[Ticks / 4], 40 / 0.97) << "the link must reach 0.97 of its ceiling";
}

TEST_F(RealTimer, GoesOnWhileTheHandlerOfAnotherRunsAnEventLoopOfItsOwn) {
    int inner = 0;
    int outer = 0;
    Timer fast(5);
    auto slow = std::make_unique<Timer>(20);
    start(fast, [&] { ++inner; });
    start(*slow, [&] {
        ++outer;
        pumpUntil([&, from = inner] { return inner >= from + 8; });  // longer than its own interval
        slow.reset();
    });
    pumpUntil([&] { return slow == nullptr && inner >= 12; });
    EXPECT_EQ(outer, 1) << "a handler is not entered anew while it runs, nor after its timer is gone";
    EXPECT_GE(inner, 12);
}

}  // namespace
}  // namespace kestrel
