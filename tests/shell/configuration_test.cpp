// The two configuration files: what they settle, and that a bad one costs at most its own settings.
// The whole start-up runs on the simulated machine.
#include <gtest/gtest.h>

#include "link/link_engine.h"
#include "shell/configuration.h"
#include "shell/main_window.h"
#include "support/world.h"

namespace kestrel {
namespace {

using testing::World;

constexpr const char* Family = "/family/kestrel.ini";
constexpr const char* Missing = nullptr;  ///< the file is not there
constexpr const char* Kept = nullptr;     ///< nothing is written

struct Case {
    const char* own;
    const char* family;
    int port;
    const char* language;
    const char* written;  ///< what the program's own file holds afterwards
};

// The menu is not filled yet when the port is saved, so the language of the file is lost with it.
constexpr const char* Defaults = "Com=1\r\nLingua=\r\n";

const Case Cases[] = {
    {"Com=3\r\nLingua=English\r\n", Missing, 3, "English", Kept},
    {"Com=3\nLingua=English", Missing, 3, "English", Kept},
    {"anything 2\r\n1234567English\r\n", Missing, 2, "English", Kept},
    {"Com=12\r\nLingua=English\r\n", Missing, 2, "English", Kept},
    {"Com=2\r\nLingua=Klingon\r\n", Missing, 2, "Deutsch", Kept},
    {"Com=3\r\nLingua=English\r\n", "Com=2\r\nLingua=English\r\n", 2, "English", "Com=2\r\nLingua=\r\n"},
    {"Com=1\r\nLingua=English\r\n", "Com=1\r\nLingua=Italiano\r\n", 1, "Italiano", "Com=1\r\nLingua=Italiano\r\n"},
    {"Com=1\r\nLingua=English\r\n", "Com=1\r\nLingua=Klingon\r\n", 1, "English", Kept},
    {Missing, Missing, 1, "Deutsch", Defaults},
    {"", Missing, 1, "Deutsch", Defaults},
    {"Com=4\r\n", Missing, 1, "Deutsch", Defaults},
    {"Com=4\r\nLing\r\n", Missing, 1, "Deutsch", Defaults},
    {"Com=x\r\nLingua=English\r\n", Missing, 1, "Deutsch", Defaults},
    {"Com=9\r\nLingua=English\r\n", Missing, 1, "Deutsch", Defaults},
    {"\x01\xff\x80\x02", Missing, 1, "Deutsch", Defaults},
};

// Where it cannot be saved it holds for the run, and nobody is troubled.
TEST(ConfigurationFile, SettlesPortAndLanguageAlsoWhereItCannotBeSaved) {
    for (const Case& the : Cases)
        for (const bool canBeSaved : {true, false}) {
            SCOPED_TRACE(std::string(the.own ? the.own : "none") + " below " + (the.family ? the.family : "none"));
            World world;
            for (int port = 1; port <= 4; ++port) world.platform.lines[port] = &world.line;
            if (the.own) world.platform.put("kestrel.ini", the.own);
            if (the.family) world.platform.files[Family] = the.family;
            const std::string own = (world.platform.directory / "kestrel.ini").generic_string();
            if (!canBeSaved) world.platform.unwritable = {world.platform.directory.generic_string(), own};
            MDIForm_Load("Kestrel");
            EXPECT_EQ(Link().ComPort, the.port);
            EXPECT_TRUE(MDIForm1().mnuCox(the.port).Checked);
            EXPECT_TRUE(!canBeSaved || ActiveLanguage() == the.language) << ActiveLanguage();
            if (the.written && canBeSaved)
                EXPECT_EQ(world.platform.file("kestrel.ini"), the.written);
            else
                EXPECT_TRUE(world.platform.written.empty());
            EXPECT_TRUE(world.platform.messages.empty());
            EXPECT_EQ(world.platform.files.count(Family), the.family ? 1U : 0U);
        }
}

TEST(ConfigurationFile, PortOfTheFamilyAboveFourEndsInARunTimeError) {
    World world;
    world.platform.put("kestrel.ini", "Com=1\r\nLingua=English\r\n");
    world.platform.files[Family] = "Com=9\r\nLingua=English\r\n";
    EXPECT_THROW(MDIForm_Load("Kestrel"), RunTimeError);
}

TEST(ConfigurationFile, ChosenPortIsNotSavedByItself) {
    World world;
    world.platform.lines[2] = &world.line;
    world.start();
    MDIForm1().mnuCox(2).UserClick();
    EXPECT_EQ(Link().ComPort, 2);
    EXPECT_TRUE(world.platform.written.empty());
    MDIForm1().smnuLingue(1).UserClick();
    EXPECT_EQ(world.platform.file("kestrel.ini"), "Com=2\r\nLingua=English\r\n");
}

/// Until the user has one of his own, what was installed for all holds; a file that lies above is nobody's family.
TEST(ConfigurationFile, OfAnInstalledProgramIsTheUsers) {
    const std::string users = "/home/user/.config/kestrel/kestrel.ini";
    for (const bool hasOwn : {false, true}) {
        World world;
        world.platform.usersDirectory = "/home/user/.config/kestrel";
        world.platform.put("kestrel.ini", "Com=2\r\nLingua=English\r\n");
        world.platform.files[Family] = "Com=4\r\nLingua=Deutsch\r\n";
        if (hasOwn) world.platform.files[users] = "Com=3\r\nLingua=Italiano\r\n";
        for (int port = 1; port <= 4; ++port) world.platform.lines[port] = &world.line;
        MDIForm_Load("Kestrel");
        EXPECT_EQ(Link().ComPort, hasOwn ? 3 : 2);
        EXPECT_EQ(ActiveLanguage(), hasOwn ? "Italiano" : "English");
        EXPECT_TRUE(world.platform.written.empty());
        MDIForm1().smnuLingue(2).UserClick();
        EXPECT_EQ(world.platform.written, std::vector{users});
        EXPECT_EQ(world.platform.files[users], hasOwn ? "Com=3\r\nLingua=Espanol\r\n" : "Com=2\r\nLingua=Espanol\r\n");
        EXPECT_THROW(smnuExit_Click(), testing::ProcessEnded);
        EXPECT_TRUE(world.platform.started.empty());
    }
}

}  // namespace
}  // namespace kestrel
