// The two configuration files: what they settle, and that a bad one costs at most its own settings.
// The whole start-up runs on the simulated machine.
#include <gtest/gtest.h>

#include "link/link_engine.h"
#include "shell/configuration.h"
#include "shell/main_window.h"
#include "support/world.h"

namespace kestrel {
namespace {

using testing::ProcessEnded;
using testing::World;

constexpr const char* Family = "/family/kestrel.ini";

struct Case {
    const char* name;
    const char* own;  ///< null: the file is missing
    const char* family;
    int port;
    const char* language;
    const char* written;  ///< what the program's own file holds afterwards; null: it is not written
};

class Configuration : public ::testing::TestWithParam<Case> {};

TEST_P(Configuration, SettlesPortAndLanguage) {
    World world;
    for (int port = 1; port <= 4; ++port) world.platform.lines[port] = &world.line;
    if (GetParam().own) world.platform.put("kestrel.ini", GetParam().own);
    if (GetParam().family) world.platform.files[Family] = GetParam().family;
    MDIForm_Load("Kestrel");
    EXPECT_EQ(Link().ComPort, GetParam().port);
    EXPECT_EQ(ActiveLanguage(), GetParam().language);
    if (GetParam().written)
        EXPECT_EQ(world.platform.file("kestrel.ini"), GetParam().written);
    else
        EXPECT_TRUE(world.platform.written.empty());
    EXPECT_EQ(world.platform.files.count(Family), GetParam().family ? 1U : 0U);
}

INSTANTIATE_TEST_SUITE_P(
    All, Configuration,
    ::testing::Values(Case{"own", "Com=3\r\nLingua=English\r\n", nullptr, 3, "English", nullptr},
                      Case{"unixLineEndsAndNoLast", "Com=3\nLingua=English", nullptr, 3, "English", nullptr},
                      Case{"prefixesAreNotChecked", "anything 2\r\n1234567English\r\n", nullptr, 2, "English", nullptr},
                      Case{"onlyTheLastCharacterCounts", "Com=12\r\nLingua=English\r\n", nullptr, 2, "English",
                           nullptr},
                      // The menu is not filled yet when the port is saved, so the language of the file is lost with it.
                      Case{"familyPortWins", "Com=3\r\nLingua=English\r\n", "Com=2\r\nLingua=English\r\n", 2, "English",
                           "Com=2\r\nLingua=\r\n"},
                      Case{"familyLanguageWins", "Com=1\r\nLingua=English\r\n", "Com=1\r\nLingua=Italiano\r\n", 1,
                           "Italiano", "Com=1\r\nLingua=Italiano\r\n"},
                      Case{"familyLanguageNotInMenu", "Com=1\r\nLingua=English\r\n", "Com=1\r\nLingua=Klingon\r\n", 1,
                           "English", nullptr},
                      Case{"bothMissing", nullptr, nullptr, 1, "Deutsch", "Com=1\r\nLingua=\r\n"},
                      Case{"empty", "", nullptr, 1, "Deutsch", "Com=1\r\nLingua=\r\n"},
                      Case{"oneLine", "Com=4\r\n", nullptr, 1, "Deutsch", "Com=1\r\nLingua=\r\n"},
                      Case{"shortSecondLine", "Com=4\r\nLing\r\n", nullptr, 1, "Deutsch", "Com=1\r\nLingua=\r\n"},
                      Case{"noDigit", "Com=x\r\nLingua=English\r\n", nullptr, 1, "Deutsch", "Com=1\r\nLingua=\r\n"},
                      Case{"portNine", "Com=9\r\nLingua=English\r\n", nullptr, 1, "Deutsch", "Com=1\r\nLingua=\r\n"},
                      Case{"notText", "\x01\xff\x80\x02", nullptr, 1, "Deutsch", "Com=1\r\nLingua=\r\n"},
                      Case{"languageNotThere", "Com=2\r\nLingua=Klingon\r\n", nullptr, 2, "Deutsch", nullptr}),
    [](const auto& param) { return std::string(param.param.name); });

TEST(ConfigurationFile, CutAtAnyByteGivesItsSettingsOrTheDefaults) {
    const std::string whole = "Com=2\r\nLingua=English\r\n";
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        World world;
        for (int port = 1; port <= 4; ++port) world.platform.lines[port] = &world.line;
        world.platform.put("kestrel.ini", whole.substr(0, length));
        MDIForm_Load("Kestrel");
        const bool known = ActiveLanguage() == "English" || ActiveLanguage() == "Deutsch";
        EXPECT_TRUE(known) << length;
        EXPECT_TRUE(Link().ComPort == 2 || Link().ComPort == 1) << length;
    }
}

TEST(ConfigurationFile, ReadOnlyDirectoryStillStarts) {
    World world;
    world.platform.unwritable.insert(world.platform.directory.string());
    MDIForm_Load("Kestrel");
    EXPECT_EQ(Link().ComPort, 1);
    EXPECT_TRUE(Link().LinkIdle);
    EXPECT_TRUE(world.platform.messages.empty());
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
