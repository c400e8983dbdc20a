// The page of doses: choosing a selection, what it shows and writes, and what is locked when.
// Test dispensing has its own file.
#include "pages/beverage/frm_dosi.h"

#include <gtest/gtest.h>

#include "support/bare_mirror.h"
#include "support/doses.h"
#include "support/layouts.h"

namespace kestrel::testing {
namespace {

auto& barsOf(FrmDosi& page, int step) { return step == 0 ? page.HScroll1 : step == 1 ? page.HScroll2 : page.HScroll3; }
auto& valuesOf(FrmDosi& page, int step) { return step == 0 ? page.Label1 : step == 1 ? page.Label2 : page.Label3; }
auto& testsOf(FrmDosi& page, int step) { return step == 0 ? page.Command1 : step == 1 ? page.Command2 : page.Command3; }

/// A letter for what can be used: k keys and full tests, then of each step v valve, t time, p the rest with its tests,
/// and j the jug's switch.
std::string openParts(FrmDosi& page) {
    std::string parts;
    bool keys = page.HScroll7.usable() && page.Command4[0].usable() && page.Command4[1].usable();
    for (Label& key : page.Label11) keys = keys && key.usable();
    if (keys) parts += 'k';
    if (page.SwitchX5[JugMask].usable()) parts += 'j';
    for (int step = 0; step < 3; ++step) {
        parts += static_cast<char>('1' + step);
        auto& bars = barsOf(page, step);
        if (bars[0].usable()) parts += 'v';
        if (bars[1].usable()) parts += 't';
        int live = 0;
        for (int field = 2; field < 11; ++field) live += bars[field].usable();
        for (CommandButton& test : testsOf(page, step)) live += test.usable();
        if (live != 0) parts += live == 12 ? 'p' : '?';
    }
    return parts;
}

TEST(FrmDosi, WhatIsStillUnderTheFingerGoesOutBeforeAnotherSelectionIsShown) {
    Doses doses;
    auto& page = doses.openAt(0);
    ScrollBar& time = page.HScroll1[1];
    time.UserStepBy(time.Value == 0 ? 1 : -1);
    const int wanted = time.shownValue();
    ASSERT_NE(wanted, time.Value);
    page.Label11[3].UserClick();
    doses.world.run(5'000);
    EXPECT_EQ(doses.world.board(1, 103), static_cast<std::uint32_t>(wanted));
    EXPECT_EQ(page.HScroll7.Value, 3);
    EXPECT_TRUE(page.HScroll7.usable());
    EXPECT_TRUE(doses.world.platform.messages.empty());
}

TEST(FrmDosi, TheTimeLinesShowWhatRunsWhenOnOneScaleAndNothingThatDoesNotRun) {
    Doses doses;
    auto& page = doses.openAt(0);
    EXPECT_EQ(page.timeLines[0].text(),
              "EV 2.4 - 3.6 s, mixer 4.8 - 8.4 s, sol. 1 9.6 - 15.6 s, sol. 2 10.8 - 18.0 s, sol. 3 12.0 - 20.4 s");
    EXPECT_TRUE(page.timeLines[2].text().ends_with("sol. 3 12.8 - 22.0 s")) << page.timeLines[2].text();
    for (const TimeLine& line : page.timeLines) EXPECT_EQ(line.End, 250) << "one scale, up to whole five seconds";
    page.HScroll1[1].UserMove(240);
    ASSERT_TRUE(doses.world.settle());
    EXPECT_TRUE(page.timeLines[0].text().starts_with("EV 2.4 - 26.4 s,"));
    EXPECT_EQ(page.timeLines[2].End, 300);
    page.HScroll2[0].UserMove(0);
    ASSERT_TRUE(doses.world.settle());
    EXPECT_EQ(page.timeLines[1].text() + page.timeLines[2].text(), "") << "a step without a valve ends the recipe";
    page.HScroll1[0].UserMove(FirstBrewerCode);
    ASSERT_TRUE(doses.world.settle());
    EXPECT_EQ(page.timeLines[0].text(), "EV 0.0 - 24.0 s") << "of a brewer the valve's time alone counts";
    EXPECT_EQ(page.Label1[0].ToolTip.get(), "FB1: gruppo FB1. Conta solo il tempo EV.");
    page.Label11[4].UserClick();
    EXPECT_EQ(page.timeLines[0].text(), "") << "the next selection has not come";
}

TEST(FrmDosi, EverySelectionIsReachedByKeyAndByBar) {
    for (const bool byKey : {true, false}) {
        Doses doses;
        doses.world.setBoards(1, 1031, RecipeSelections, 60);
        doses.world.setBoards(1, 1095, RecipeSelections, 20);
        auto& page = doses.open();
        const Boards before = doses.boards();
        for (const int selection : {17, 0, 9, 1, 8, 16, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15}) {
            if (byKey) {
                const int chosen = page.HScroll7.Value;
                if ((selection >= 9) != page.lblPres.Chosen) page.lblPres.UserClick();
                EXPECT_EQ(page.lblVPres.Caption.get(), selection >= 9 ? "presel." : "");
                EXPECT_EQ(page.HScroll7.Value, chosen) << "the toggle counts for the next key";
                EXPECT_EQ(openParts(page)[0], 'k');
                page.Label11[selection % 9].UserClick();
            } else {
                page.HScroll7.UserMove(selection);
            }
            EXPECT_EQ(openParts(page), "123") << "locked while it loads";
            EXPECT_TRUE(page.LoadingBar.Visible);
            ASSERT_TRUE(doses.settle(page));
            EXPECT_EQ(page.Label7.Caption.get(), "Selezione " + std::to_string(selection + 1));
            EXPECT_EQ(page.HScroll7.Value, selection);
            EXPECT_EQ(page.Label5[9].Caption.get(), std::to_string(20 + selection));
            EXPECT_EQ(page.lblVPres.Caption.get(), selection >= 9 ? "presel." : "");
            EXPECT_EQ(page.HScroll3[10].Value, 60 + selection);
            for (int k = 0; k < 9; ++k) EXPECT_EQ(page.Label11[k].Chosen, k == selection % 9);
        }
        EXPECT_TRUE(changed(before, doses.boards()).empty()) << "looking changes nothing";
    }
}

TEST(FrmDosi, UntilTheMachineTellsHowManyValvesItHasTheBarsEndAsTheyWereDrawn) {
    BareMirror mirror;
    auto& page = mirror.load<FrmDosi>();
    EXPECT_EQ(page.HScroll1[0].Max, 12);
    for (ScrollBar* bar : {&page.HScroll2[0], &page.HScroll3[0]}) EXPECT_EQ(bar->Max, 8);
    EXPECT_EQ(page.HScroll7.Max, 17);
    EXPECT_EQ(page.HScroll7.LargeChange, 3);
}

TEST(FrmDosi, WhatIsOpenFollowsTheThreeValves) {
    const struct {
        std::uint32_t valves[3];
        std::uint32_t valveCount;
        const char* parts;
        const char* captions[3];
        int firstBar;
    } cases[] = {
        {{3, 2, 1}, 4, "kj1vtp2vtp3vtp", {"3", "2", "1"}, 3}, {{0, 2, 1}, 4, "k1v23", {"OFF", "2", "1"}, 0},
        {{3, 0, 1}, 4, "kj1vtp2v3", {"3", "0", "1"}, 3},      {{3, 2, 0}, 4, "kj1vtp2vtp3v", {"3", "2", "0"}, 3},
        {{5, 0, 0}, 4, "kj1vt2v3", {"FB1", "0", "0"}, 5},     {{6, 1, 2}, 4, "kj1vt2vtp3vtp", {"FB2", "1", "2"}, 6},
        {{5, 0, 0}, 2, "kj1vt2v3", {"FB1", "0", "0"}, 4},      // the codes are told before the bar's end is
        {{9, 9, 9}, 4, "kj1vtp2vtp3vtp", {"6", "4", "4"}, 6},  // shown clamped, and 6 by clamping is no brewer
        {{3, 5, 6}, 7, "kj1vtp2vtp3vtp", {"3", "5", "6"}, 3},  // only step 1 has brewers
    };
    for (const auto& each : cases) {
        Doses doses;
        doses.world.setBoard(1, 1154, each.valveCount);
        auto& page = doses.openAt(4, each.valves[0], each.valves[1], each.valves[2]);
        page.Label11[0].UserClick();
        ASSERT_TRUE(doses.settle(page));
        page.Label11[4].UserClick();
        ASSERT_TRUE(doses.settle(page));
        EXPECT_EQ(openParts(page), each.parts);
        EXPECT_EQ(page.Label1[10].Enabled, page.HScroll1[10].usable());
        for (int step = 0; step < 3; ++step) EXPECT_EQ(valuesOf(page, step)[0].Caption.get(), each.captions[step]);
        EXPECT_EQ(page.HScroll1[0].Value, each.firstBar);
        EXPECT_EQ(page.HScroll1[0].Max, static_cast<int>(each.valveCount) + 2);
        EXPECT_EQ(page.HScroll3[0].Max, static_cast<int>(each.valveCount));
    }
}

TEST(FrmDosi, AnotherSelectionIsUnreadUntilItsOwnValuesHaveCome) {
    Doses doses;
    doses.world.setBoard(1, 1456, 0xA6);
    auto& page = doses.openAt(0);
    page.HScroll7.UserMove(9);
    doses.world.letActsIn();
    say(page, 0, 1, 0x14);
    EXPECT_EQ(openParts(page), "kj1vtp2vtp3vtp") << "a new status opens it";
    EXPECT_TRUE(page.Label3[10].unread() && page.Label5[9].unread());
    doses.writes.clear();
    page.SwitchX5[FreeMask].UserMove(1 - page.SwitchX5[FreeMask].Position);
    page.HScroll2[3].UserMove(page.HScroll2[3].Value + 1);
    page.HScroll5.UserMove(page.HScroll5.Value + 1);
    page.Command3[1].UserClick();
    ASSERT_TRUE(doses.settle(page));
    EXPECT_EQ(doses.writes, Writes{});
    eachControl(page.Arrange(), [](const Control& control) {
        EXPECT_FALSE(control.unread() && control.Visible) << control.accessibleName();
    });
    page.SwitchX5[FreeMask].UserMove(0);
    EXPECT_TRUE(doses.settle(page));
    EXPECT_EQ(doses.world.board(1, 1456), 0xA4U);
}

TEST(FrmDosi, AValveMovedFromNoneToABrewerInOneGoOpensWhatTheStepsBetweenWouldHaveOpened) {
    for (const int brewer : {5, 6}) {
        Doses doses;
        auto& page = doses.openAt(2, 0);
        say(page, 1, 9, brewer);
        EXPECT_EQ(openParts(page), "k1v23") << "nobody moved it";
        say(page, 1, 9, 0);
        page.HScroll1[0].UserMove(brewer);
        ASSERT_TRUE(doses.world.settle());
        EXPECT_EQ(openParts(page), "kj1vt2vtp3vtp");
        doses.world.run(500);
        page.HScroll1[0].UserMove(0);
        ASSERT_TRUE(doses.world.settle());
        EXPECT_EQ(openParts(page), "k1v23");
        page.HScroll1[0].UserMove(brewer);
        page.Label11[0].UserClick();
        say(page, 1, 7, brewer);
        EXPECT_EQ(openParts(page), "123") << "another selection's brewer opens nothing while it loads";
    }
}

TEST(FrmDosi, AfterABrewersCodeNothingIsWrittenUntilTheNextValue) {
    Doses doses;
    doses.world.setBoard(1, 1087, 1);
    doses.world.setBoard(1, 1095, 20);
    auto& page = doses.openAt(0);
    for (const ParamValue brewer : {5, 6}) {
        say(page, 1, 7, brewer);
        EXPECT_EQ(openParts(page), "kj1vt2vtp3vtp");
        EXPECT_FALSE(page.Label1[2].Enabled || page.Label1[10].Enabled);
        doses.writes.clear();
        const auto isDropped = [](auto& control, const auto& shown) {
            EXPECT_TRUE(control.usable());
            const int before = shown;
            control.UserMove(before == 0 ? 1 : before - 1);
            EXPECT_EQ(shown, before) << "what is dropped does not stay on show";
            EXPECT_FALSE(control.waiting());
        };
        isDropped(page.HScroll1[1], page.HScroll1[1].Value);
        isDropped(page.HScroll3[0], page.HScroll3[0].Value);
        isDropped(page.HScroll5, page.HScroll5.Value);
        for (const Mask mask : {CupMask, JugMask}) isDropped(page.SwitchX5[mask], page.SwitchX5[mask].Position);
        EXPECT_FALSE(ParamFlags(1, 103) & flag::WriteDue);
        EXPECT_FALSE(ParamFlags(1, 1063) & flag::WriteDue);
        say(page, 1, 103, 9);
        EXPECT_EQ(page.HScroll1[1].Value, 9);
        page.HScroll1[1].UserMove(10);
        ASSERT_TRUE(doses.world.settle());
        EXPECT_EQ(doses.writes.size(), 1U);
    }
}

TEST(FrmDosi, TheJugCountGoesWithTheJugAndIsWrittenRaw) {
    Doses doses;
    doses.world.setBoard(1, 1088, 0);
    auto& page = doses.openAt(10);
    EXPECT_FALSE(page.HScroll5.usable());
    page.SwitchX5[JugMask].UserMove(1);
    EXPECT_TRUE(page.HScroll5.usable());
    EXPECT_EQ(page.HScroll5.Min, 1);
    ASSERT_TRUE(doses.world.settle());
    expectMove(doses.world, page.HScroll5, page.Label5[9], 42, "42", {{1, 1105, 42}});
    page.SwitchX5[JugMask].UserMove(0);
    EXPECT_FALSE(page.HScroll5.usable());
}

TEST(FrmDosi, AColdBeverageShowsNoStepsOnAMachineThatCoolsThatWay) {
    const struct {
        std::uint32_t coldMode;
        bool cold;
        bool steps;
        bool switchLive;
    } cases[] = {{0, true, true, false}, {1, true, true, true}, {3, true, false, true}, {3, false, true, true}};
    for (const auto& each : cases) {
        Doses doses;
        doses.world.setBoard(1, 1153, each.coldMode);
        doses.world.setBoard(1, 1079, each.cold ? 1 : 0);
        auto& page = doses.openAt(0);
        for (const Frame* frame : {&page.Frame1, &page.Frame2, &page.Frame3}) EXPECT_EQ(frame->Visible, each.steps);
        EXPECT_EQ(page.Label1s[10].Visible, each.steps);
        EXPECT_EQ(page.SwitchX5[ColdMask].usable(), each.switchLive) << each.coldMode;
        if (each.coldMode != 3) continue;
        page.SwitchX5[ColdMask].UserMove(each.cold ? 0 : 1);
        EXPECT_EQ(page.Frame2.Visible, !each.steps) << "at once with the switch";
        ASSERT_TRUE(doses.world.settle());
        EXPECT_EQ(page.Frame2.Visible, !each.steps);
    }
}

TEST(FrmDosi, OnlyAChangedStatusLocksOrUnlocks) {
    Doses doses;
    auto& page = doses.open();
    say(page, 0, 1, 4);
    page.Label11[1].UserClick();
    say(page, 0, 1, 4);
    EXPECT_EQ(openParts(page), "123") << "a repeated status opens no page that is loading";
    say(page, 0, 7, 2);
    say(page, 0, 7, 0);
    EXPECT_EQ(openParts(page), "123") << "nor does a vend of the machine's own that ends";
    say(page, 0, 1, 0x14);
    EXPECT_EQ(openParts(page)[0], 'k') << "a new one opens it all the same";
    page.Label11[2].UserClick();
    ASSERT_TRUE(doses.settle(page));
    doses.world.setBoard(0, 1, 0x1B);
    doses.world.run(2000);
    EXPECT_EQ(openParts(page), "123");
    doses.world.setBoard(0, 1, 0x04);
    doses.world.run(2000);
    EXPECT_EQ(openParts(page)[0], 'k');
    EXPECT_TRUE(page.SwitchX5[FreeMask].usable()) << "never locked";
}

TEST(FrmDosi, LeavesAKeysSelectionWatchedAndTheBarsNot) {
    for (const bool byKey : {true, false}) {
        Doses doses;
        auto& page = doses.open();
        if (byKey)
            page.Label11[3].UserClick();
        else
            page.HScroll7.UserMove(3);
        ASSERT_TRUE(doses.settle(page));
        EXPECT_EQ(ParamTable(1, 10).Watchers, byKey ? 2 : 1);
        page.UserClose();
        EXPECT_EQ(ParamTable(1, 10).Watchers, byKey ? 1 : 0);
        EXPECT_EQ(ParamTable(1, 7).Watchers, 0);
        for (const int n : {1, 5, 7}) EXPECT_EQ(ParamTable(0, n).Watchers, 0) << n;
    }
}

}  // namespace
}  // namespace kestrel::testing
