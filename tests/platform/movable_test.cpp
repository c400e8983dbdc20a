// Gestures and timers in virtual time: however a bar is moved, one change goes out at the end of the gesture, and none
// by accident.
#include <gtest/gtest.h>

#include "platform/layout.h"
#include "platform/platform.h"
#include "platform/switches.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "shell/session.h"
#include "support/virtual_platform.h"

namespace kestrel::testing {
namespace {

struct Page : Window {
    Page() : Window("FrmTest") {}
    Layout Arrange() override { return Row{}; }
};

/// A page with a bar that the board has set to 100, and the user's hand on it.
struct Hand : Window {
    Hand() : Window("FrmTest") {
        settleLayout(Hand::Arrange());
        eachControl(Hand::Arrange(), [this](Control& control) { control.standOn(this); });
        bar.Value = 100;
        bar.OnChange([this] {
            if (Control::acting() == &bar) written.push_back({bar.Value, static_cast<int>(platform.now() / 1000)});
        });
    }
    Layout Arrange() override { return Group(frame, Row{bar, stepped}); }
    void lockAndUnlock(Property<bool>& flag) const {
        flag = false;
        flag = true;
    }
    void pass(int milliseconds) { platform.run(milliseconds); }

    VirtualPlatform platform;
    Session session;
    Frame frame;
    ScrollBar bar;
    SliderSwitch stepped;
    Page other;
    std::vector<std::pair<int, int>> written;  ///< by the user, and the milliseconds since the start
};

using Written = std::vector<std::pair<int, int>>;

struct Case {
    const char* what;
    void (*act)(Hand& hand, ScrollBar& bar);
    Written written;
};

const Case cases[] = {
    {"a drag ends when it is let go",
     [](Hand& hand, ScrollBar& bar) {
         bar.UserHold(150), hand.pass(2'000), bar.UserHold(999), hand.pass(2'000), bar.UserCommit();
     },
     {{255, 4'000}}},
    {"quick steps are one gesture",
     [](Hand& hand, ScrollBar& bar) {
         for (int i = 0; i < 3; ++i) bar.UserStepBy(1), hand.pass(249);
     },
     {{103, 748}}},
    {"slow steps are one each",
     [](Hand& hand, ScrollBar& bar) { bar.UserStepBy(1), hand.pass(251), bar.UserStepTo(0); },
     {{101, 250}, {0, 501}}},
    {"a held arrow ends as a step does, and a step may follow it",
     [](Hand& hand, ScrollBar& bar) {
         bar.UserHold(120), hand.pass(900), bar.UserSettle(), hand.pass(200), bar.UserStepBy(-1);
     },
     {{119, 1'350}}},
    {"a hand that comes back goes on",
     [](Hand& hand, ScrollBar& bar) { bar.UserStepBy(9), hand.pass(9), bar.UserHold(50); },
     {}},
    {"where it began nothing changes", [](Hand&, ScrollBar& bar) { bar.UserStepBy(1), bar.UserStepBy(-1); }, {}},
    {"what is dropped is gone",
     [](Hand&, ScrollBar& bar) { bar.UserStepBy(1), bar.UserDrop(), bar.UserCommit(), bar.UserSettle(); },
     {}},
    {"the board speaks in the middle",
     [](Hand&, ScrollBar& bar) {
         bar.UserStepBy(1);
         const Control::Speaking board(nullptr, true);
         bar.Value = 50;
     },
     {{101, 250}}},
    {"the limits change in the middle", [](Hand&, ScrollBar& bar) { bar.UserStepBy(90), bar.Max = 150; }, {{150, 250}}},
    {"a user who turns away has made the steps",
     [](Hand&, ScrollBar& bar) { bar.UserStepBy(1), bar.UserFinish(); },
     {{101, 0}}},
    {"and has not let go", [](Hand&, ScrollBar& bar) { bar.UserHold(150), bar.UserFinish(); }, {}},
    {"closing the page", [](Hand& hand, ScrollBar& bar) { bar.UserStepBy(1), hand.UserClose(); }, {{101, 0}}},
    {"closing is not committing", [](Hand& hand, ScrollBar& bar) { bar.UserHold(150), hand.UserClose(); }, {}},
    {"closing another page",
     [](Hand& hand, ScrollBar& bar) { bar.UserStepBy(1), hand.other.UserClose(); },
     {{101, 250}}},
    {"the end of the program", [](Hand&, ScrollBar& bar) { bar.UserStepBy(1), FinishGestures(); }, {{101, 0}}},
    {"a lock", [](Hand& hand, ScrollBar& bar) { bar.UserStepBy(1), hand.lockAndUnlock(bar.Enabled); }, {}},
    {"a lock round it",
     [](Hand& hand, ScrollBar& bar) { bar.UserHold(150), hand.lockAndUnlock(hand.frame.Enabled), bar.UserCommit(); },
     {}},
    {"a frame that is hidden",
     [](Hand& hand, ScrollBar& bar) { bar.UserStepBy(1), hand.lockAndUnlock(hand.frame.Visible); },
     {}},
    {"a lock elsewhere",
     [](Hand& hand, ScrollBar& bar) { bar.UserStepBy(1), hand.lockAndUnlock(hand.stepped.Enabled); },
     {{101, 250}}},
    {"a page that waits for its end",
     [](Hand& hand, ScrollBar& bar) { bar.UserStepBy(1), hand.beginClosing(), hand.endClosing(); },
     {}},
    {"what is not read",
     [](Hand&, ScrollBar& bar) { bar.awaitValue(), bar.UserHold(150), bar.UserCommit(), bar.UserStepBy(1); },
     {}},
    {"steps wait for the end of a message box",
     [](Hand& hand, ScrollBar& bar) {
         hand.platform.whileMessageIsOpen = [&] { hand.pass(100), bar.UserFinish(), hand.pass(1'050); };
         bar.UserStepBy(1), ShowMessage({});
     },
     {{101, 1'250}}},
    {"a message box takes the hand away",
     [](Hand&, ScrollBar& bar) { bar.UserHold(150), ShowMessage({}), bar.UserCommit(); },
     {}},
    {"an exchange in which the steps end",
     [](Hand& hand, ScrollBar& bar) {
         bar.UserStepBy(1), hand.pass(200), ExchangeOpened(), hand.pass(100), ExchangeEnded();
     },
     {{101, 301}}},
    {"a step while the last one waits for the end of an exchange",
     [](Hand& hand, ScrollBar& bar) {
         bar.UserStepBy(1), ExchangeOpened(), hand.pass(260), bar.UserStepBy(1), ExchangeEnded();
     },
     {{102, 510}}},
    {"a held key", [](Hand&, ScrollBar& bar) { bar.UserStepOn(1), bar.UserStepOn(1), bar.UserSettle(); }, {{102, 250}}},
    {"what is typed and entered",
     [](Hand& hand, ScrollBar& bar) { bar.UserType("7"), bar.UserType("70"), hand.pass(900), bar.UserEnter(); },
     {{70, 900}}},
    {"what is typed and left", [](Hand&, ScrollBar& bar) { bar.UserType("7"), bar.UserLeave(); }, {{7, 0}}},
    {"what is no value stays for another try",
     [](Hand&, ScrollBar& bar) { bar.UserType("256"), bar.UserEnter(), bar.UserType("25"), bar.UserEnter(); },
     {{25, 0}}},
    {"what is no value and left", [](Hand&, ScrollBar& bar) { bar.UserType("256"), bar.UserLeave(); }, {}},
    {"typing takes the place of steps",
     [](Hand&, ScrollBar& bar) { bar.UserStepBy(1), bar.UserType("9"), bar.UserEnter(); },
     {{9, 0}}},
    {"typing that is given up", [](Hand&, ScrollBar& bar) { bar.UserType("9"), bar.UserDrop(), bar.UserLeave(); }, {}},
    {"a lock while one types",
     [](Hand& hand, ScrollBar& bar) { bar.UserType("9"), hand.lockAndUnlock(hand.frame.Enabled), bar.UserLeave(); },
     {}},
    {"typing into what is not read",
     [](Hand&, ScrollBar& bar) { bar.awaitValue(), bar.UserType("9"), bar.UserLeave(); },
     {}},
    {"a value that comes while one types",
     [](Hand&, ScrollBar& bar) {
         bar.UserType("9");
         const Control::Speaking board(nullptr, 0);
         bar.Value = 50;
         bar.UserEnter();
     },
     {{9, 0}}},
};

TEST(Gestures, WriteOnceAtTheirEndAndNothingByAccident) {
    for (const Case& each : cases) {
        Hand hand;
        each.act(hand, hand.bar);
        hand.pass(2'000);
        EXPECT_EQ(hand.written, each.written) << each.what;
    }
}

TEST(Gestures, ShowTheValueUnderTheFingerAndThenWhatIsOnItsWay) {
    Hand hand;
    ScrollBar& bar = hand.bar;
    bar.UserHold(999);
    EXPECT_EQ(bar.shownValue(), 255);
    EXPECT_EQ(bar.Value, 100);
    EXPECT_TRUE(bar.isMoving());
    ExchangeOpened();
    bar.UserCommit();
    EXPECT_FALSE(bar.isMoving());
    EXPECT_EQ(bar.shownValue(), 255) << "it waits for the end of the exchange";
    bar.Enabled = false;
    ExchangeEnded();
    hand.pass(10);
    EXPECT_EQ(bar.shownValue(), 100) << "refused";
    bar.Enabled = true;
    bar.awaitValue();
    bar.UserHold(150);
    EXPECT_FALSE(bar.isMoving()) << "there is nothing yet to be moved";
}

TEST(Gestures, OfAHeldKeySpeedUpOnAWideRangeAloneAndBeginAnewAfterARest) {
    Hand hand;
    ScrollBar& bar = hand.bar;
    const auto heldFor = [&bar](int steps) {
        const int from = bar.shownValue();
        for (int i = 0; i < steps; ++i) bar.UserStepOn(1);
        bar.UserSettle();
        return bar.shownValue() - from;
    };
    EXPECT_EQ(heldFor(40), 40);
    bar.design(-32768, 32767, 100);
    for (int again = 0; again < 2; ++again) EXPECT_EQ(heldFor(40), 10 + 20 * 10 + 10 * 100);
    EXPECT_EQ(heldFor(10), 10);
}

TEST(Gestures, OfASwitchStayAmongItsLabelsAndGoWithIt) {
    Hand hand;
    for (const auto& [by, shown] : {std::pair{9, 1}, {-9, 0}}) {
        hand.stepped.UserStepBy(by);
        EXPECT_EQ(hand.stepped.shownValue(), shown);
    }
    auto gone = std::make_unique<RotarySwitch>();
    bool moved = false;
    gone->OnPositionChange([&] { moved = true; });
    gone->UserStepBy(1);
    gone.reset();
    FinishGestures();
    hand.pass(1'000);
    EXPECT_FALSE(moved);
}

TEST(Timers, AreRestartedByOffAndOnOrANewIntervalAlone) {
    using After60ms = void (*)(Timer&);
    const std::pair<After60ms, std::vector<Micros>> rows[] = {
        {[](Timer& timer) { timer.Enabled = true; }, {100'000, 200'000}},
        {[](Timer& timer) { timer.Enabled = false; }, {}},
        {[](Timer& timer) { timer.Enabled = false, timer.Enabled = true; }, {160'000}},
        {[](Timer& timer) { timer.Interval = 80; }, {140'000, 220'000}},
        {[](Timer& timer) { timer.Interval = 0; }, {}},
    };
    for (const auto& [act, expected] : rows) {
        VirtualPlatform platform;
        const Session session;
        std::vector<Micros> fired;
        Timer timer{100};
        timer.OnTimer([&] { fired.push_back(platform.now()); });
        timer.Enabled = true;
        platform.run(60);
        act(timer);
        platform.run(190);
        EXPECT_EQ(fired, expected);
    }
}

}  // namespace
}  // namespace kestrel::testing
