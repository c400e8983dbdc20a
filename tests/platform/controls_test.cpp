// What stands on a control: whose value it is, how sure, and what is wrong with what was typed.
// A mistake here and a figure that no board has confirmed is read as the machine's own.
#include <gtest/gtest.h>

#include <functional>

#include "platform/displays.h"
#include "platform/layout.h"
#include "platform/switches.h"
#include "platform/window.h"
#include "shell/session.h"
#include "support/virtual_platform.h"

namespace kestrel::testing {
namespace {

/// The figure of a bar through all that can become of it: told, changed, answered, lost, silent, and back.
TEST(Standing, AFigureStandsWhereItsBarDoesAndOldIsWhatASilentBoardHasTold) {
    const Session session;
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

TEST(Entries, AreObjectedToForWhatIsWrongWithThem) {
    const VirtualPlatform platform;
    const Session session;
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

}  // namespace
}  // namespace kestrel::testing
