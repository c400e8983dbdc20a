// Every fault of the line and of the boards, on a real port: the window answers, the process lives, and once it is over
// the page shows what the boards hold.
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <utility>

#include "link/loaded_pages.h"
#include "session.h"
#include "shell/main_window.h"
#include "wire.h"

namespace kestrel::testing {
namespace {

/// Milliseconds for which this thread was ready to run and other programs had the processor: no fault of the program.
qint64 heldUpByOthers() {
    qint64 ran = 0;
    qint64 waited = 0;
    std::ifstream("/proc/thread-self/schedstat") >> ran >> waited;
    return waited / 1'000'000;
}

struct Fault {
    const char* orders;  ///< to the board program
    int lastsOn;         ///< milliseconds for which it may go on by itself after healing
    /// Milliseconds for the window. A port that is opened anew after a time-out waits for the system, too.
    int answersWithin = 300;
};

/// The first of them live for a moment in every run of the tests, all of them for seconds in a long one.
constexpr Fault Faults[] = {
    {"fault request=0.3,part=0.3,noise=1,extra=0.3,drop=0.2,flip=0.2", 1000},
    {"strike swap\nfault noeffect=0.3,clamp=0.3,change=0.3,echo=0.3,collide=0.3", 0},
    {"fault stream=1", 1500, 100},
    {"strike busy", 6000},
    {"fault request=1", 1000},
    {"fault part=1", 1000},
    {"fault noeffect=0.5,clamp=0.5", 0},
    {"fault echo=1", 0},
    {"fault collide=1", 0},
    {"fault blind=0.5", 0},
    {"fault silent=1", 1000},
    {"fault slow=1", 1000},
    {"fault drop=1", 1000},
    {"fault extra=0.5,flip=0.5,ack=0.5", 0},
    {"fault busy=0.2", 6000},
    {"fault late=0.5", 5000},
    {"fault reset=0.1", 3000},
    {"fault lost=0.1", 10000},
    {"fault port=0.1", 7000},
};
constexpr std::size_t AlwaysLived = 3;

class LineFaults : public Session {
  protected:
    FrmTempi& reopenTimes() {
        if (Page* page = FindLoadedPage("FrmTempi")) close(*page);
        return openTimes();
    }
    void expectAllIsWell() {
        FrmTempi& page = reopenTimes();
        EXPECT_TRUE(stepIsConfirmed(page));
        EXPECT_TRUE(eventually([&] { return showsTheBoards(page); }));
        EXPECT_EQ(notice(), "");
        EXPECT_EQ(witness.boxes, 0);
    }
    /// The longest time, in milliseconds, for which the window did not answer while somebody worked at it.
    qint64 liveWith(const Fault& fault, FrmTempi& page) {
        QElapsedTimer clock;
        qint64 longest = 0;
        QTimer heart;
        qint64 heldUp = heldUpByOthers();
        QObject::connect(&heart, &QTimer::timeout, &heart, [&] {
            const qint64 before = std::exchange(heldUp, heldUpByOthers());
            longest = std::max(longest, clock.restart() - (heldUp - before));
        });
        board.tell(fault.orders);
        clock.start();
        heart.start(10);
        for (int i = 0; i < (isLongRun() ? 10 : 1); ++i) {
            QTest::keyClick(&firstBar(page), page.HScroll1[0].Value < 100 ? Qt::Key_Right : Qt::Key_Left);
            QTest::qWait(500);
        }
        return longest;
    }
};

TEST_F(LineFaults, PassAndLeaveNothingBehind) {
    choose(MDIForm1().entry("ssmnuTotali"));
    FrmTempi* page = &openTimes();
    const int descriptors = openDescriptors();
    for (std::size_t i = 0; i < (isLongRun() ? std::size(Faults) : AlwaysLived); ++i) {
        const Fault& fault = Faults[i];
        SCOPED_TRACE(fault.orders);
        const qint64 unanswered = liveWith(fault, *page);
        EXPECT_LT(unanswered, fault.answersWithin);
        QElapsedTimer healed;
        healed.start();
        board.tell("fault");
        EXPECT_TRUE(stepIsConfirmed(*page, Soon + fault.lastsOn));
        std::printf("answers within %lld ms, a step confirmed %lld ms after healing: %s\n",
                    static_cast<long long>(unanswered), static_cast<long long>(healed.elapsed()), fault.orders);
        page = &reopenTimes();
        EXPECT_TRUE(eventually([&] { return showsTheBoards(*page); }));
        EXPECT_EQ(notice(), "");
    }
    EXPECT_EQ(witness.boxes, 0);
    EXPECT_EQ(openDescriptors(), descriptors);
}

TEST_F(LineFaults, PortThatGoesAwayInItsProbeIsPassedOverAtStartAndFromTheMenu) {
    {
        const auto fromTheMenu = Wire::thatHangsUp(second);
        choose(MDIForm1().mnuCox(2));
        EXPECT_FALSE(MDIForm1().mnuCox(2).Enabled);
        expectAllIsWell();
    }
    const auto configuration = installation.configuration(platform->programName());
    stop();
    std::ofstream(configuration) << "Com=2\r\nLingua=English\r\n";
    const auto atStart = Wire::thatHangsUp(second);
    start();
    EXPECT_TRUE(MDIForm1().mnuCox(1).Checked);
    expectAllIsWell();
}

}  // namespace
}  // namespace kestrel::testing
