// Pages on machines that lack a board: what a user can still work, and that opening the page orders nothing.
// One table for the pages of beverages and of tests; what each does with the boards it has stands in its own tests.
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

TEST(AbsentBoards, LockWhatIsTheirsAndOpeningAPageOrdersNothing) {
    struct {
        const char* page;
        bool hotDrink, sector;
        int usable;
        Writes written;
    } const cases[] = {
        {"FrmDosi", false, true, 2, {{0, 4, 0}}},  // the preselection toggle and the one switch that no lock knows
        {"FrmProUni", false, true, 0, {}},
        {"FrmPresel", false, true, 4, {}},  // the times of the plus block are live at all times
        {"FrmInter", false, true, 0, {}},
        {"FrmTempi", false, true, 1, {}},
        {"FrmTempi", true, false, 7, {}},
        {"FrmInOut", false, true, 1, {{0, 368, 255}}},  // a test can be started on one board
        {"FrmInOut", true, false, 1, {{0, 368, 255}}},
        {"FrmInOut", false, false, 0, {{0, 368, 255}}},
        {"FrmSchema", false, false, 0, {}},
        {"FrmTestCedar", false, true, 7, {}},
        {"FrmTestCedar", true, false, 0, {}},
        {"FrmAllarmi", false, false, 0, {}},
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
        world.run(20'000);
        EXPECT_EQ(usableInputs(page.Arrange()), each.usable);
        EXPECT_EQ(log.take(), each.written);
        page.UserClose();
        EXPECT_EQ(testing::watchersLeft(), 0);
    }
}

}  // namespace
}  // namespace kestrel
