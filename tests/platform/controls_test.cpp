// The control models: what a user's action and a page's assignment do.
// A mistake here and a locked control writes to a machine, or a setting is lost without a mark.
#include <gtest/gtest.h>

#include "platform/displays.h"
#include "platform/layout.h"
#include "platform/switches.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "shell/session.h"
#include "support/virtual_platform.h"

namespace kestrel::testing {
namespace {

struct Controls : ::testing::Test {
    Session session;
};

/// One of each kind that a user can act on, in two frames, with a count of the events raised.
struct Panel {
    Frame outer, inner;
    Label caption, clickable;
    ScrollBar bar;
    SliderSwitch slider;
    ToggleSwitch toggle;
    LedSwitch led;
    CommandButton button;
    TextBox box;
    const std::vector<const Control*> settings{&bar, &slider, &toggle, &led};
    int events = 0;

    Panel() {
        slider.PositionLabels = "off, low ,high";
        const auto count = [this] { ++events; };
        bar.OnChange(count);
        slider.OnPositionChange(count);
        toggle.OnClick(count);
        led.OnClick(count);
        button.OnClick(count);
        clickable.OnClick(count);
        box.OnKeyPress([this](int) { ++events; });
        box.OnLostFocus(count);
        caption.Caption = "Water";
        settleLayout(
            Group(outer, Column{Group(inner, Column{Row{caption, bar, slider}, toggle, led, button, box}), clickable}));
    }
    void actOnAll() {
        bar.UserMove(bar.Value + 1);
        slider.UserMove(slider.Position == 1 ? 2 : 1);
        toggle.UserClick();
        led.UserClick();
        button.UserClick();
        clickable.UserClick();
        box.UserType(box.Text.get() + "1");
        box.UserEnter();
        box.UserLeave();
    }
};

TEST_F(Controls, AUserReachesOnlyWhatIsEnabledAndVisibleInAllItsFrames) {
    Panel panel;
    EXPECT_EQ(panel.slider.accessibleName(), "Water") << "by the caption in the row";
    EXPECT_EQ(panel.toggle.accessibleName(), "") << "another row";
    panel.actOnAll();
    EXPECT_EQ(panel.events, 8);
    for (Frame* frame : {&panel.outer, &panel.inner}) {
        for (Property<bool>* flag : {&frame->Enabled, &frame->Visible}) {
            panel.events = 0;
            *flag = false;
            panel.actOnAll();
            EXPECT_EQ(panel.events, frame == &panel.inner ? 1 : 0) << "the label stands in the outer frame alone";
            EXPECT_EQ(panel.box.Text.get(), "1");
            EXPECT_TRUE(panel.bar.Enabled && panel.bar.Visible) << "the flags of the contents stay";
            *flag = true;
        }
    }
    panel.events = 0;
    panel.bar.Enabled = false;
    panel.toggle.Visible = false;
    panel.box.Enabled = false;
    panel.actOnAll();
    EXPECT_EQ(panel.events, 4);
    EXPECT_TRUE(panel.toggle.Active) << "still as the first click left it";
}

TEST_F(Controls, AChangeIsToldOnceAndAtOnceWhoeverMadeIt) {
    ScrollBar bar;
    std::vector<int> told;
    bar.OnChange([&] { told.push_back(bar.Value); });
    bar.Value = 7;
    EXPECT_EQ(told, (std::vector{7}));
    bar.Value = 7;
    bar.UserMove(7);
    EXPECT_EQ(told.size(), 1U) << "no change, no event";
    bar.UserMove(300);
    bar.Value = -5;
    EXPECT_EQ(told, (std::vector{7, 255, 0})) << "kept inside the limits";
    bar.Value = 200;
    bar.Max = 100;
    EXPECT_EQ(told, (std::vector{7, 255, 0, 200, 100})) << "a lower limit pulls the bar along";
    bar.design(-32768, 32767, 10);
    bar.UserMove(-32768);
    EXPECT_EQ(told.back(), -32768);
}

TEST_F(Controls, ASteppedSwitchKeepsAPositionWithoutLabelAndTellsTheUsersChangesApart) {
    RotarySwitch rotary;
    rotary.PositionLabels = "0,1,2,";
    std::vector<int> all, users;
    rotary.OnPositionChange([&] { all.push_back(rotary.Position); });
    rotary.OnPositionChangeUser([&] { users.push_back(rotary.Position); });
    rotary.Position = 200;
    for (const int position : {-1, 3, 200, 2, 2}) rotary.UserMove(position);
    EXPECT_EQ(all, (std::vector{200, 2}));
    EXPECT_EQ(users, (std::vector{2})) << "the user has the labelled positions alone";
}

TEST_F(Controls, AToggleTurnsOverBeforeItsClickAndAssigningItRaisesNothing) {
    LedSwitch led;
    std::vector<bool> told;
    led.OnClick([&] { told.push_back(led.Active); });
    led.UserClick();
    led.Active = false;
    led.Active = true;
    led.UserClick();
    EXPECT_EQ(told, (std::vector{true, false}));
}

TEST_F(Controls, AUsersChangeWaitsUntilThePageSetsTheControlAgain) {
    Panel panel;
    panel.actOnAll();
    for (const Control* setting : panel.settings) EXPECT_TRUE(setting->waiting());
    EXPECT_FALSE(panel.button.waiting() || panel.clickable.waiting());
    panel.bar.Value = panel.bar.Value;
    panel.slider.Position = 1;
    panel.toggle.Active = false;
    panel.led.Active = true;
    for (const Control* setting : panel.settings)
        EXPECT_FALSE(setting->waiting()) << "confirmed, if with the same value";
    panel.bar.isSelector = true;
    panel.bar.UserMove(99);
    EXPECT_FALSE(panel.bar.waiting()) << "what only chooses what is shown waits for no board";
}

TEST_F(Controls, WhatItsPageDoesInTheChangeItselfIsNoAnswerOfTheBoard) {
    Panel panel;
    panel.toggle.OnClick([&] { panel.toggle.Active = false; });
    panel.box.OnLostFocus([&] { panel.box.Text = "12"; });
    panel.actOnAll();
    EXPECT_TRUE(panel.toggle.waiting()) << "a switch that is put back waits for the echo";
    EXPECT_TRUE(panel.box.waiting()) << "what the page took stays marked until the board has it";
    panel.toggle.Active = false;
    panel.box.Text = "12";
    EXPECT_FALSE(panel.toggle.waiting() || panel.box.waiting());
    panel.box.OnLostFocus([&] { panel.box.putBack("12"); });
    panel.box.UserLeave();
    EXPECT_FALSE(panel.box.waiting()) << "what went to no board waits for none";
}

/// The figure of a bar through all that can become of it: told, changed, answered, lost, silent, and back.
TEST_F(Controls, AFigureStandsWhereItsBarDoesAndOldIsWhatASilentBoardHasTold) {
    constexpr int Board = 2;
    struct : Window {
        using Window::Window;
        Layout Arrange() override { return Row{caption, bar, figure, lamp}; }
        Label caption, figure;
        ScrollBar bar;
        Led lamp;
    } page{"FrmTest"};
    page.figure.role = Label::Role::Value;
    settleLayout(page.Arrange());
    eachControl(page.Arrange(), [&page](Control& control) { control.standOn(&page); });
    const auto board = [&page](const char* value) {
        const Control::Speaking speaking(nullptr, Board);
        page.bar.Value = std::stoi(value);
        page.figure.Caption = value;
    };
    const auto old = [&page](const char* since) { page.setOldSince(Board, since); };
    struct Step {
        const char* what;
        std::function<void()> happens;
        Standing standing;
        const char* texts;  ///< what the board has and what the user wants
        bool isChanged = false;
    };
    const Step steps[] = {
        {"opened", [&] { eachControl(page.Arrange(), std::mem_fn(&Control::awaitValue)); }, Standing::Unread, ""},
        {"silent before anything came", [&] { old("10:31"); }, Standing::Unread, ""},
        {"back", [&] { old(""); }, Standing::Unread, ""},
        {"told", [&] { board("70"); }, Standing::Confirmed, "70"},
        {"changed", [&] { page.bar.UserMove(71); }, Standing::Waiting, "70 71"},
        {"changed again", [&] { page.bar.UserMove(72); }, Standing::Waiting, "70 72"},
        {"silent", [&] { old("10:32"); }, Standing::Waiting, "70 72"},
        {"answered", [&] { board("72"); }, Standing::Old, "72", true},
        {"heard again", [&] { old(""); }, Standing::Confirmed, "72", true},
        {"lost", [&] { page.bar.UserMove(73), board("72"), page.bar.tellNotTaken({"73"}); }, Standing::NotTaken,
         "72 73", true},
        {"no value", [&] { page.bar.UserType("999"), page.bar.UserLeave(); }, Standing::NotTaken, "72 999", true},
        {"typed anew", [&] { page.bar.UserType("7"); }, Standing::Confirmed, "72", true},
        {"put back", [&] { page.bar.UserDrop(), page.bar.UserMove(70), board("70"); }, Standing::Confirmed, "70"},
    };
    for (const Step& each : steps) {
        SCOPED_TRACE(each.what);
        each.happens();
        const Label& figure = page.figure;
        EXPECT_EQ(figure.standing(), each.standing);
        EXPECT_EQ(page.bar.standing(), each.standing);
        const std::string wanted = figure.wantedText();
        EXPECT_EQ(figure.boardsText() + (wanted.empty() ? "" : " " + wanted), each.texts);
        EXPECT_EQ(figure.changedFrom().has_value(), each.isChanged);
        const bool isOld = std::string(each.what) == "answered" || std::string(each.what) == "silent";
        EXPECT_EQ(page.oldSince(), isOld ? "10:32" : "") << "the page's head tells of what stands on it";
    }
    page.setOldSince(Board - 1, "10:33");
    EXPECT_EQ(page.figure.standing(), Standing::Confirmed) << "another board";
}

TEST_F(Controls, AnEntryIsObjectedToForWhatIsWrongWithIt) {
    VirtualPlatform platform;
    ScrollBar price;
    price.design(-32768, 32767, 100);
    price.scale = {32768, 2};
    TextBox code;
    code.takesNumbers(4, 9'998);
    const TextBox name;
    const std::pair<const char*, std::pair<Objection, Objection>> rows[] = {
        {"0.5", {Objection::None, Objection::NoNumber}},
        {"1,25", {Objection::None, Objection::NoNumber}},
        {"655.36", {Objection::OutOfRange, Objection::NoNumber}},
        {"-1", {Objection::OutOfRange, Objection::OutOfRange}},
        {"0.125", {Objection::TooFine, Objection::NoNumber}},
        {"1x", {Objection::NoNumber, Objection::NoNumber}},
        {"", {Objection::NoNumber, Objection::NoNumber}},
        {"9999", {Objection::OutOfRange, Objection::OutOfRange}},
        {"12345", {Objection::OutOfRange, Objection::TooLong}},
        {"12", {Objection::None, Objection::None}},
    };
    for (const auto& [typed, objections] : rows) {
        EXPECT_EQ(price.objectionTo(typed), objections.first) << typed;
        EXPECT_EQ(code.objectionTo(typed), objections.second) << typed;
        EXPECT_EQ(name.objectionTo(typed), Objection::None);
    }
    EXPECT_EQ(price.entryLimits()->highest, "655.35");
    EXPECT_EQ(code.entryLimits()->highest, "9998");
    EXPECT_FALSE(name.entryLimits());
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
