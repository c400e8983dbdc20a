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

TEST(ConfigurationFile, SettlesPortAndLanguage) {
    for (const Case& the : Cases) {
        SCOPED_TRACE(std::string(the.own ? the.own : "none") + " below " + (the.family ? the.family : "none"));
        World world;
        for (int port = 1; port <= 4; ++port) world.platform.lines[port] = &world.line;
        if (the.own) world.platform.put("kestrel.ini", the.own);
        if (the.family) world.platform.files[Family] = the.family;
        MDIForm_Load("Kestrel");
        EXPECT_EQ(Link().ComPort, the.port);
        EXPECT_EQ(ActiveLanguage(), the.language);
        if (the.written)
            EXPECT_EQ(world.platform.file("kestrel.ini"), the.written);
        else
            EXPECT_TRUE(world.platform.written.empty());
        EXPECT_EQ(world.platform.files.count(Family), the.family ? 1U : 0U);
    }
}

TEST(ConfigurationFile, HoldsForTheRunWhereItCannotBeSaved) {
    struct Row {
        const char* own;
        const char* family;
        int port;
    };
    for (const Row& row : {Row{Missing, Missing, 1}, Row{"", Missing, 1}, Row{"Com=", Missing, 1},
                           Row{"Com=9\r\nLingua=English\r\n", Missing, 1},
                           Row{"Com=3\r\nLingua=English\r\n", "Com=2\r\nLingua=English\r\n", 2}}) {
        SCOPED_TRACE(row.own ? row.own : "none");
        World world;
        for (int port = 1; port <= 4; ++port) world.platform.lines[port] = &world.line;
        if (row.own) world.platform.put("kestrel.ini", row.own);
        if (row.family) world.platform.files[Family] = row.family;
        world.platform.unwritable = {world.platform.directory.string(),
                                     (world.platform.directory / "kestrel.ini").string()};
        MDIForm_Load("Kestrel");
        EXPECT_EQ(Link().ComPort, row.port);
        EXPECT_TRUE(MDIForm1().mnuCox(row.port).Checked);
        EXPECT_TRUE(world.platform.messages.empty());
        EXPECT_TRUE(world.platform.written.empty());
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

}  // namespace
}  // namespace kestrel
