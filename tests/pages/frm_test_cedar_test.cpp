// The model test over a bare mirror: the pair, the zeroing of the motors, and every way in and out of the lock.
// Motors run on this page's orders, so nothing may go out that nobody clicked.
#include "pages/diagnostics/frm_test_cedar.h"

#include <gtest/gtest.h>

#include <functional>

#include "link/changes.h"
#include "link/recheck.h"
#include "support/bare_mirror.h"
#include "support/layouts.h"

namespace kestrel::testing {
namespace {

constexpr std::uint32_t There = 4;
constexpr std::uint32_t Running = 2;
constexpr int All = FrmTestCedar::Zones + 1;

struct ModelTest : ::testing::Test {
    BareMirror mirror;
    FrmTestCedar& page = mirror.load<FrmTestCedar>();

    ModelTest() { mirror.arrive(0, 2, There); }

    /// Zones, and the button of the motors, that can be worked.
    int live() { return usableInputs(page.Arrange()); }
    std::string pair() const { return page.Label2[1].Caption; }
    void clickPair(int first, int second) {
        page.Label1[first - 1].UserClick();
        page.Label1[second - 1].UserClick();
    }
};

TEST_F(ModelTest, EveryPairGoesToTheMailboxFirstAndIsCommandedOnceTheBoardHasTakenBoth) {
    for (int first = 1; first <= 6; ++first)
        for (int second = 1; second <= 6; ++second)
            for (const bool firstIsTakenFirst : {true, false}) {
                const auto one = static_cast<std::uint32_t>(first);
                const auto two = static_cast<std::uint32_t>(second);
                page.Label1[first - 1].UserClick();
                EXPECT_EQ(pair(), std::to_string(first) + " _");
                EXPECT_EQ(live(), All);
                page.Label1[second - 1].UserClick();
                EXPECT_EQ(pair(), std::to_string(first) + " " + std::to_string(second));
                EXPECT_EQ(live(), 0);
                EXPECT_EQ(mirror.due(), (Writes{{0, 5, 11 + two}, {0, 6, 16 * one}}));
                mirror.deliver(0, firstIsTakenFirst ? 6 : 5);
                EXPECT_EQ(mirror.due().size(), 1U);
                mirror.deliver(0, firstIsTakenFirst ? 5 : 6);
                EXPECT_EQ(mirror.due(), (Writes{{0, 4, 2}}));
                mirror.deliverAll();

                mirror.arrive(0, 7, Running);
                EXPECT_EQ(live(), 0);
                mirror.arrive(0, 7, 0xFF & ~Running);
                EXPECT_EQ(live(), All);
                EXPECT_EQ(pair(), "_ _");
            }
}

TEST_F(ModelTest, AMasterThatDoesNotStartIsWaitedForTwoSeconds) {
    clickPair(4, 4);
    mirror.deliverAll();
    mirror.arrive(0, 7, 0);
    mirror.run(1999);
    EXPECT_EQ(live(), 0);
    EXPECT_EQ(pair(), "4 4");
    mirror.run(2);
    EXPECT_EQ(live(), All);
    EXPECT_EQ(pair(), "_ _");
    clickPair(5, 6);
    mirror.arrive(0, 7, Running);
    mirror.run(60'000);
    EXPECT_EQ(live(), 0) << "a pair that has started may take its time";
    EXPECT_EQ(pair(), "5 6");
}

TEST_F(ModelTest, TheZeroingLocksUntilItsBitFallsAndClearsAPendingChoice) {
    page.Label1[2].UserClick();
    page.Command1.UserClick();
    EXPECT_EQ(pair(), "_ _");
    EXPECT_EQ(mirror.due(), (Writes{{2, 284, 3}}));
    mirror.deliverAll();
    EXPECT_EQ(live(), 0);
    mirror.arrive(2, 290, 1);
    EXPECT_EQ(live(), 0) << "the test mode bit is another one";
    mirror.arrive(2, 290, 3);
    mirror.arrive(2, 290, 1);
    EXPECT_EQ(live(), All);
    page.Label1[3].UserClick();
    mirror.arrive(2, 290, 1);
    EXPECT_EQ(pair(), "4 _") << "the choice before the zeroing is forgotten";
}

TEST_F(ModelTest, AZeroingThatNeverBeginsLocksUntilThePresenceWordChanges) {
    page.Command1.UserClick();
    mirror.deliverAll();
    mirror.run(60'000);
    mirror.arrive(2, 290, 0);
    mirror.arrive(0, 7, 0);
    mirror.arrive(0, 2, There);
    EXPECT_EQ(live(), 0);
    mirror.arrive(0, 2, 0);
    EXPECT_EQ(live(), 0);
    mirror.arrive(0, 2, There);
    EXPECT_EQ(live(), All);
}

/// However far the order got: the line may come back when nobody stands at the machine any more.
TEST_F(ModelTest, WhatIsGivenUpNeverGoesOut) {
    const auto timer = [&] { mirror.run(2001); };
    const auto foreignRun = [&] {
        mirror.arrive(0, 7, Running);
        mirror.arrive(0, 7, 0);
    };
    const auto boardGoes = [&] { mirror.arrive(0, 2, 0); };
    const auto interruption = [&] {
        page.LineInterrupted();
        EXPECT_EQ(mirror.due(), Writes{});
        mirror.run(2001);
    };
    const auto close = [&] { UnloadPage(page); };
    const std::vector<std::vector<int>> delivered = {{}, {5}, {5, 6}};
    for (const auto& giveUp : std::vector<std::function<void()>>{timer, foreignRun, boardGoes, interruption, close})
        for (const std::vector<int>& parameters : delivered) {
            mirror.arrive(0, 2, There);
            clickPair(1, 1);
            for (const int n : parameters) mirror.deliver(0, n);
            EXPECT_FALSE(mirror.due().empty());
            CurrentBank = 1;
            giveUp();
            EXPECT_EQ(mirror.due(), Writes{});
            EXPECT_FALSE(parameters.empty() && IsChange(0, 5)) << "it is no change of which the user hears later";
            for (const auto& [n, value] : {std::pair(5, 12U), {6, 16U}}) mirror.arrive(0, n, value);
            EXPECT_EQ(mirror.due(), Writes{}) << "nor does the command follow a mailbox that came after all";
            if (!FindLoadedPage("FrmTestCedar")) return;
        }
}

TEST_F(ModelTest, TheZeroingIsGivenUpWithItsBoardAndItsPageAndAnotherOrderIsLeftAlone) {
    page.Command1.UserClick();
    mirror.arrive(0, 2, 0);
    EXPECT_EQ(mirror.due(), Writes{});
    mirror.arrive(0, 2, There);
    page.Command1.UserClick();
    mirror.arrive(2, 290, 2);
    mirror.arrive(2, 290, 0);
    clickPair(1, 1);
    CurrentBank = 0;
    ParamWrite(6, 8);
    CurrentBank = 1;
    mirror.run(2001);
    EXPECT_EQ(CurrentBank, 1) << "the scan is not moved";
    EXPECT_EQ(mirror.due(), (Writes{{0, 6, 8}}));
    mirror.deliverAll();
    clickPair(1, 1);
    HoldWrite(0, 6);
    mirror.run(2001);
    EXPECT_FALSE(IsHeld(0, 6)) << "nor does it wait for the user's word after an interruption";
    page.Command1.UserClick();
    UnloadPage(page);
    EXPECT_EQ(mirror.due(), Writes{});
}

}  // namespace
}  // namespace kestrel::testing
