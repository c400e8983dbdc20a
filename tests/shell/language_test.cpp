// Language files: the search, the choice at start-up, the change at run time.
// A refused file must leave the old language whole.
#include <gtest/gtest.h>

#include "shell/configuration.h"
#include "shell/language_files.h"
#include "shell/language_menu.h"
#include "shell/main_window.h"
#include "support/world.h"

namespace kestrel {
namespace {

using testing::ProcessEnded;
using testing::VirtualPlatform;
using testing::World;

struct Languages : ::testing::Test {
    Languages() { ResetProgram(); }
    ~Languages() override { ResetProgram(); }
    VirtualPlatform platform;

    static std::string caption(int i) { return MDIForm1().smnuLingue(i).Caption; }
    static bool visible(int i) { return MDIForm1().smnuLingue(i).Visible; }
    static std::vector<int> checked() {
        std::vector<int> found;
        for (int i = 0; i < 10; ++i)
            if (MDIForm1().smnuLingue(i).Checked) found.push_back(i);
        return found;
    }
    void putNumbered(int files) {
        for (int i = 0; i < files; ++i) {
            const std::string stem(1, static_cast<char>('a' + i));
            platform.put(stem + ".lng", "text of " + stem + "\r\n");
        }
    }
};

TEST_F(Languages, WithoutAnyFileTheProgramSaysSoAndEnds) {
    EXPECT_THROW(SelectLanguage(), ProcessEnded);
    ASSERT_EQ(platform.messages.size(), 1U);
    EXPECT_EQ(platform.messages[0].title, "Error");
    EXPECT_EQ(platform.messages[0].text, "File missing!\nReinstall program");
    EXPECT_EQ(platform.messages[0].icon, Message::Icon::Critical);
}

TEST_F(Languages, TenFilesFillTheMenuAndTheEleventhNeverAppears) {
    putNumbered(11);
    SelectLanguage();
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(caption(i), std::string(1, static_cast<char>('a' + i)));
        EXPECT_TRUE(visible(i));
    }
}

TEST_F(Languages, OnlyEntriesWithAFileAreVisible) {
    putNumbered(3);
    SelectLanguage();
    EXPECT_TRUE(visible(2));
    EXPECT_FALSE(visible(3));
}

TEST_F(Languages, TheConfiguredOneIsTakenButNeverTheTenth) {
    putNumbered(10);
    const std::pair<const char*, const char*> cases[] = {
        {"c", "c"}, {"i", "i"}, {"j", "a"}, {"", "a"}, {"unknown", "a"}};
    for (const auto& [configured, taken] : cases) {
        ResetProgram();
        ActiveLanguage() = configured;
        SelectLanguage();
        EXPECT_EQ(ActiveLanguage(), taken) << configured;
        EXPECT_EQ(LanguageTable(1), std::string("text of ") + taken);
        EXPECT_EQ(checked().size(), 1U);
    }
}

TEST_F(Languages, LinesAreTakenWhateverTheirEndsAndFromTheCodePage) {
    platform.put("a.lng", "one\r\n\r\ncaff\xE8 \x80\nlast");
    LoadLanguage("a.lng");
    EXPECT_EQ(LanguageTable(0), "");
    EXPECT_EQ(LanguageTable(1), "one");
    EXPECT_EQ(LanguageTable(2), "");
    EXPECT_EQ(LanguageTable(3), "caffè €");
    EXPECT_EQ(LanguageTable(4), "last");
}

TEST_F(Languages, AShorterFileKeepsWhatStoodBeyondItsEnd) {
    platform.put("a.lng", "1\n2\n3\n");
    platform.put("b.lng", "x\n");
    LoadLanguage("a.lng");
    LoadLanguage("b.lng");
    EXPECT_EQ(LanguageTable(1), "x");
    EXPECT_EQ(LanguageTable(3), "3");
}

TEST_F(Languages, EightHundredLinesFitAndOneMoreIsARunTimeError) {
    std::string lines;
    for (int i = 1; i <= 800; ++i) lines += "line\n";
    platform.put("a.lng", lines);
    EXPECT_NO_THROW(LoadLanguage("a.lng"));
    EXPECT_EQ(LanguageTable(800), "line");
    platform.put("a.lng", lines + "one more\n");
    EXPECT_THROW(LoadLanguage("a.lng"), RunTimeError);
    EXPECT_THROW(LanguageTable(801), RunTimeError);
}

struct Pair {
    const char* name;
    const char* reference;
    const char* candidate;
    bool passes;
    const char* line1;  ///< of the table afterwards, which held "old" before
    const char* line3;
};

class CheckLanguage : public Languages, public ::testing::WithParamInterface<Pair> {};

TEST_P(CheckLanguage, ComparesMarksAlone) {
    platform.put("old.lng", "old\nold\nold\nold\n");
    platform.put("r.lng", GetParam().reference);
    platform.put("c.lng", GetParam().candidate);
    LoadLanguage("old.lng");
    EXPECT_EQ(CheckLanguageFile("r.lng", "c.lng"), GetParam().passes);
    EXPECT_EQ(LanguageTable(1), GetParam().line1);
    EXPECT_EQ(LanguageTable(3), GetParam().line3);
}

INSTANTIATE_TEST_SUITE_P(All, CheckLanguage,
                         ::testing::Values(Pair{"alike", "a\n;--x\nb\n", "A\n;--y\nB\n", true, "A", "B"},
                                           Pair{"shorter", "a\nb\nc\n", "A\nB\n", false, "A", "old"},
                                           Pair{"longer", "a\nb\n", "A\nB\nC\n", true, "A", "old"},
                                           Pair{"markMissing", "a\n;--x\nb\n", "A\ntext\nB\n", false, "A", "old"},
                                           Pair{"markElsewhere", "a\nb\n;--x\n", "A\n;--x\nB\n", false, "A", "old"},
                                           Pair{"extraMark", "a\nb\nc\n", "A\n;--x\nC\n", true, "A", "C"}),
                         [](const auto& param) { return std::string(param.param.name); });

TEST(LanguageChange, TakesEveryWindowAndTheMenuAlongAndIsSaved) {
    World world;
    world.start();
    ShowPage("FrmTempi");
    Page& totals = ShowPage("FrmTotali");
    const std::string before = totals.Caption;
    world.platform.shown.clear();
    MDIForm1().smnuLingue(1).UserClick();
    EXPECT_EQ(ActiveLanguage(), "English");
    EXPECT_EQ(totals.Caption.get(), LanguageTable(15));
    EXPECT_NE(totals.Caption.get(), before);
    EXPECT_EQ(MDIForm1().entry("smnuExit").Caption.get(), LanguageTable(2));
    EXPECT_EQ(world.platform.shown, (std::vector<std::string>{"FrmTempi", "FrmTotali", "FrmTotali"}));
    EXPECT_EQ(world.platform.file("kestrel.ini"), "Com=1\r\nLingua=English\r\n");
}

TEST(LanguageChange, ARefusedFileLeavesTheOldLanguageWhole) {
    World world;
    world.start();
    world.platform.put("English.lng", "only one line\r\n");
    Page& page = ShowPage("FrmTotali");
    const std::string before = page.Caption;
    MDIForm1().smnuLingue(1).UserClick();
    ASSERT_EQ(world.platform.messages.size(), 1U);
    EXPECT_EQ(world.platform.messages[0].title, "Wrong file");
    EXPECT_EQ(world.platform.messages[0].text, "Check file message !!!");
    EXPECT_EQ(world.platform.messages[0].icon, Message::Icon::Exclamation);
    EXPECT_EQ(ActiveLanguage(), "Italiano");
    EXPECT_EQ(page.Caption.get(), before);
    EXPECT_NE(LanguageTable(1), "only one line");
    EXPECT_EQ(world.platform.file("kestrel.ini"), "Com=1\r\nLingua=Italiano\r\n");
}

TEST(LanguageChange, HoldsForTheRunWhereItCannotBeSaved) {
    World world;
    world.start();
    world.platform.unwritable.insert(world.platform.directory.string());
    MDIForm1().smnuLingue(1).UserClick();
    EXPECT_EQ(ActiveLanguage(), "English");
    EXPECT_EQ(world.platform.messages.size(), 1U);
    EXPECT_EQ(world.platform.file("kestrel.ini"), "Com=1\r\nLingua=Italiano\r\n");
}

TEST(LanguageChange, AnInstallationWithLongerFilesOfOtherLanguagesWorks) {
    World world;
    std::string lines;
    for (int i = 1; i <= 800; ++i) lines += "zz" + std::to_string(i) + "\n";
    world.platform.put("Zulu.lng", lines);
    world.platform.put("kestrel.ini", "Com=1\r\nLingua=Zulu\r\n");
    MDIForm_Load("Kestrel");
    EXPECT_EQ(ActiveLanguage(), "Zulu");
    EXPECT_EQ(ShowPage("FrmTotali").Caption.get(), "zz15");
}

}  // namespace
}  // namespace kestrel
