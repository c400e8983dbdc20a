// What opening and closing a page does, on machines with all boards and on those that lack one: what is subscribed to,
// what a user can then work, what is written, and what is left behind. The pages of beverages and of tests.
#include <gtest/gtest.h>

#include "platform/switches.h"
#include "support/writes.h"

namespace kestrel {
namespace {

using testing::World;
using testing::WriteLog;
using testing::Writes;

bool isInput(const Control& control) {
    const auto* label = dynamic_cast<const Label*>(&control);
    return (label && label->isClickable()) || dynamic_cast<const ScrollBar*>(&control) ||
           dynamic_cast<const SteppedSwitch*>(&control) || dynamic_cast<const ToggleSwitch*>(&control) ||
           dynamic_cast<const CommandButton*>(&control);
}

int usableInputs(const Layout& layout) {
    int count = layout.kind == Layout::Kind::Control && isInput(*layout.control) && layout.control->usable() ? 1 : 0;
    for (const Layout& child : layout.children) count += usableInputs(child);
    return count;
}

TEST(Opening, SubscribesOpensToTheUserAndWritesWhatThePageAndTheBoardsThereAskFor) {
    struct {
        const char* page;
        bool hotDrink, sector;
        int watched, usable;
        Writes opening, closing;
        int left;  ///< watched after closing
    } const cases[] = {
        {"FrmDosi", true, true, 84, 22, {{0, 4, 0}}, {}, 0},
        // Without the board: the preselection toggle and the one switch that no lock knows.
        {"FrmDosi", false, true, 3, 2, {{0, 4, 0}}, {}, 0},
        {"FrmProUni", true, true, 16, 6, {}, {}, 1},  // one is given back in another bank
        {"FrmProUni", false, true, 1, 0, {}, {}, 0},
        {"FrmPresel", true, true, 35, 16, {}, {}, 0},
        {"FrmPresel", false, true, 1, 4, {}, {}, 0},  // the times of the plus block are live at all times
        {"FrmInter", true, true, 14, 15, {}, {}, 0},
        {"FrmInter", false, true, 1, 0, {}, {}, 0},
        {"FrmTempi", true, true, 18, 8, {}, {}, 0},
        {"FrmTempi", false, true, 4, 1, {}, {}, 0},
        {"FrmTempi", true, false, 16, 7, {}, {}, 0},
        {"FrmInOut", true, true, 19, 1, {{0, 368, 255}}, {{0, 368, 0}}, 0},
        {"FrmInOut", false, true, 9, 1, {{0, 368, 255}}, {{0, 368, 0}}, 0},  // a test can be started on one board
        {"FrmInOut", true, false, 14, 1, {{0, 368, 255}}, {{0, 368, 0}}, 0},
        {"FrmInOut", false, false, 4, 0, {{0, 368, 255}}, {{0, 368, 0}}, 0},
        {"FrmSchema", true, true, 7, 0, {}, {}, 0},
        {"FrmSchema", false, true, 0, 0, {}, {}, 0},
        {"FrmTestCedar", true, true, 3, 7, {}, {}, 0},
        {"FrmTestCedar", true, false, 2, 0, {}, {}, 0},
        {"FrmAllarmi", false, false, 61, 0, {}, {}, 0},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(std::string(each.page) + (each.hotDrink ? " H" : "") + (each.sector ? " S" : ""));
        auto options = World::still();
        options.hotDrinkBoard = each.hotDrink;
        options.sectorBoard = each.sector;
        World world(options);
        world.start();
        WriteLog log(world);
        Window& page = ShowPage(each.page);
        EXPECT_EQ(testing::watchersLeft(), each.watched);
        world.run(20'000);
        EXPECT_EQ(usableInputs(page.Arrange()), each.usable);
        EXPECT_EQ(log.take(), each.opening);
        page.UserClose();
        world.run(20'000);
        EXPECT_EQ(log.take(), each.closing);
        EXPECT_EQ(testing::watchersLeft(), each.left);
    }
}

}  // namespace
}  // namespace kestrel
