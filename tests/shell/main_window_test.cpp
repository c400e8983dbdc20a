// The menu tree, opening and closing pages, and the ways out.
// Clicks go through the menu's entries, as a user's do.
#include <gtest/gtest.h>

#include "language/language_files.h"
#include "link/link_engine.h"
#include "link/param_table.h"
#include "shell/main_window.h"
#include "support/watches.h"
#include "support/world.h"

namespace kestrel {
namespace {

using testing::ProcessEnded;
using testing::World;

std::vector<std::string> loadedNames() {
    std::vector<std::string> names;
    for (const Page* page : LoadedPages()) names.push_back(page->name());
    return names;
}

TEST(Pages, ASecondClickBringsThePageToTheFrontAndClosingReleasesEverything) {
    World world;
    world.start();
    for (const char* entry : {"smnuTempi", "ssmnuTotali", "smnuTempi"}) MDIForm1().entry(entry).UserClick();
    EXPECT_EQ(loadedNames(), (std::vector<std::string>{"FrmTempi", "FrmTotali"}));
    EXPECT_EQ(world.platform.shown, (std::vector<std::string>{"FrmTempi", "FrmTotali", "FrmTempi"}));
    EXPECT_EQ(ParamTable(0, 159).Watchers, 1);
    ShowPage("FrmTotali").UserClose();
    EXPECT_EQ(loadedNames(), std::vector<std::string>{"FrmTempi"});
    EXPECT_EQ(ParamTable(0, 159).Watchers, 0);
    ShowPage("FrmTotali");
    ClosePages();
    EXPECT_TRUE(LoadedPages().empty());
    EXPECT_TRUE(testing::watches().empty());
}

TEST(Pages, AnEntryOpensAPageOnlyWhenThePageIsThereAndTheBoardsAreKnown) {
    World world;
    RegisterPages({{"FrmTempi", AllPages().at("FrmTempi")}});
    bool wasEnabled = false;
    world.platform.afterEvent = [&] {
        if (!Link().LinkSetup) return;
        for (const char* entry : {"smnuTempi", "mnuCom"}) wasEnabled |= MDIForm1().entry(entry).Enabled;
        MDIForm1().mnuCox(2).UserClick();
    };
    world.start();
    EXPECT_FALSE(wasEnabled);
    EXPECT_TRUE(MDIForm1().mnuCox(2).Enabled) << "nobody has looked for a board there";
    EXPECT_TRUE(MDIForm1().entry("mnuCom").Enabled);
    EXPECT_TRUE(MDIForm1().entry("smnuTempi").Enabled);
    EXPECT_FALSE(MDIForm1().entry("smnuDosi").Enabled);
    MDIForm1().entry("smnuDosi").UserClick();
    EXPECT_TRUE(LoadedPages().empty());
    EXPECT_THROW(ShowPage("FrmDosi"), RunTimeError);
}

TEST(WayOut, ExitStartsTheFamilyLauncherAndEndsTheProcessButNotWithoutALauncher) {
    World world;
    world.platform.launcherIsThere = false;
    world.platform.afterEvent = [] {
        if (Link().LinkSetup) MDIForm1().entry("smnuExit").UserClick();
    };
    world.start();
    world.platform.afterEvent = nullptr;
    EXPECT_TRUE(BoardPresent(0) && BoardPresent(1) && BoardPresent(2)) << "the boards are asked all the same";
    ShowPage("FrmTempi");
    world.run(100);
    EXPECT_NO_THROW(MDIForm1().entry("smnuExit").UserClick());
    world.run(5000);
    StatusBar& bar = MDIForm1().StatusBar1;
    EXPECT_EQ(bar.Panels(1).Text.get(), "Check serial interface ");
    for (int lamp = 1; lamp <= 3; ++lamp) EXPECT_EQ(bar.Panels(lamp + 1).Picture, lamp) << "out";
    EXPECT_FALSE(world.platform.portOpen());
    MDIForm1().mnuCox(1).UserClick();
    EXPECT_TRUE(world.settle()) << "a port that is chosen brings the link back";
    EXPECT_EQ(bar.Panels(1).Text.get(), "");
    EXPECT_THROW(MDIForm_Unload(), ProcessEnded) << "closing the window ends it all the same";
    EXPECT_TRUE(world.platform.messages.empty());
    world.platform.launcherIsThere = true;
    MDIForm1().mnuCox(1).UserClick();
    world.run(5);
    EXPECT_TRUE(Link().LinkSetup && world.platform.portOpen()) << "boards are asked who they are";
    MDIForm1().entry("smnuExit").UserClick();
    EXPECT_THROW(world.run(200), ProcessEnded);
    EXPECT_EQ(world.platform.started, std::vector<std::string>{"/family/KESTREL.EXE"});
    EXPECT_FALSE(world.platform.portOpen());
}

TEST(WayOut, ClosingTheWindowDuringIdentificationEnds) {
    World world;
    world.platform.afterEvent = [] {
        if (Link().LinkSetup) MDIForm_Unload();
    };
    EXPECT_THROW(world.start(), ProcessEnded);
    EXPECT_EQ(world.platform.started.size(), 1U);
}

}  // namespace
}  // namespace kestrel
