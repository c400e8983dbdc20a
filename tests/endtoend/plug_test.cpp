// A plug that is pulled and put back over and over, in every state of the link.
// One notice a loss, an idle processor meanwhile, work within two seconds of its return, and nothing left behind.
#include <QElapsedTimer>
#include <cstdio>
#include <fstream>

#include "link/link_engine.h"
#include "moments.h"
#include "session.h"
#include "shell/main_window.h"
#include "support/processor_time.h"

namespace kestrel::testing {
namespace {

constexpr int NoticeWithin = 500;
constexpr int BackWithin = 2000;

struct State {
    const char* name;
    const char* fault;  ///< of the machine, that brings the state about
    bool edits;         ///< the user has just changed something, and is asked what becomes of it
    bool (*isThere)();
};

constexpr State States[] = {
    {"idle", "fault", false, [] { return Link().LinkIdle; }},
    {"half a reply", "fault drop=1", false, [] { return isWaiting() && Link().Comm1->InBufferCount() > 0; }},
    {"waiting for an acknowledgement", "fault slow=1", true, isWriting},
};

class Plug : public Session {
  protected:
    /// A language file that is refused: choosing it brings up a message box.
    Plug() { std::ofstream(installation.program() / "English.lng") << "too short\n"; }

    void pull() {
        witness.notices = 0;
        board.tell("unplug");
        EXPECT_TRUE(QTest::qWaitFor([] { return !notice().empty(); }, NoticeWithin)) << "no notice";
    }
    void stayAway(int ms) {
        constexpr int PaintingWithin = 200;
        QTest::qWait(PaintingWithin);  // the notice, or the box with its question, is painted once
        const double before = processorSeconds();
        QElapsedTimer clock;
        clock.start();
        QTest::qWait(ms);
        const double share = (processorSeconds() - before) * 1000 / static_cast<double>(clock.elapsed());
        EXPECT_LT(share, 0.05) << "of a processor while the line is away";
        mostProcessor = std::max(mostProcessor, share);
    }
    void putBack() {
        board.tell("fault");
        board.tell("plug");
        sinceBack.start();
    }
    /// The port is open again, and an exchange that was under way has had its reply: that takes the notice away.
    void expectWork() {
        const auto works = [] { return notice().empty() && Link().Comm1->PortOpen(); };
        EXPECT_TRUE(QTest::qWaitFor(works, BackWithin)) << "does not work again";
        longestReturn = std::max(longestReturn, sinceBack.elapsed());
        EXPECT_EQ(witness.notices, 1);
    }
    void pullAndPutBack(int away) {
        pull();
        stayAway(away);
        putBack();
        expectWork();
    }
    void pullAndPutBackIn(const State& state, FrmTempi& page, int away) {
        board.tell(state.fault);
        if (state.edits) QTest::keyClick(&firstBar(page), Qt::Key_Right);
        ASSERT_TRUE(eventually(state.isThere)) << state.name;
        bool asked = false;
        if (state.edits) when(witness, isBoxOpen, [&] { asked = !clickInBox(QMessageBox::No).isEmpty(); });
        pullAndPutBack(away);
        EXPECT_TRUE(eventually([&] { return asked == state.edits; }));
    }
    /// With the box open nothing but what comes from its own event loop runs.
    void behindABox(int away) {
        when(witness, isBoxOpen, [this, away] {
            pullAndPutBack(away);
            confirmBox();
        });
        choose(MDIForm1().smnuLingue(1));
    }
    void duringIdentification(int away) {
        stop();
        when(witness, isIdentifying, [this] {
            witness.notices = 0;
            board.tell("unplug");
        });
        when(witness, isBoxOpen, [this, away] {
            stayAway(away);
            putBack();
            confirmBox();
        });
        start();
        expectWork();
    }
    QElapsedTimer sinceBack;
    qint64 longestReturn = 0;
    double mostProcessor = 0;
};

TEST_F(Plug, MayBePulledInEveryStateOfTheLink) {
    constexpr int Kinds = static_cast<int>(std::size(States)) + 2;
    const int rounds = isLongRun() ? 200 : Kinds;
    FrmTempi* page = &openTimes();
    const int descriptors = openDescriptors();
    int round = 0;
    for (; round < rounds && !HasFailure(); ++round) {
        const int kind = round % Kinds;
        const int away = isLongRun() ? 700 + round * 37 % 1000 : 400;
        const int boxes = witness.boxes;
        SCOPED_TRACE(std::to_string(round) + ", kind " + std::to_string(kind) + ", away " + std::to_string(away));
        if (kind == Kinds - 1) {
            duringIdentification(away);
            page = &openTimes();
        } else if (kind == Kinds - 2) {
            behindABox(away);
        } else {
            pullAndPutBackIn(States[kind], *page, away);
        }
        EXPECT_EQ(witness.boxes - boxes, kind >= Kinds - 2 || States[kind].edits ? 1 : 0);
        EXPECT_TRUE(stepIsConfirmed(*page));
    }
    EXPECT_LE(openDescriptors(), descriptors);
    std::printf("%d rounds: back at work within %lld ms, at most %.1f %% of a processor while the line was away\n",
                rounds, static_cast<long long>(longestReturn), mostProcessor * 100);
}

}  // namespace
}  // namespace kestrel::testing
