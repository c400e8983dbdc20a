// Language files: the search, the choice at start-up, the change at run time.
// A refused file must leave the old language whole.
#include <gtest/gtest.h>

#include <optional>

#include "language/language_files.h"
#include "shell/configuration.h"
#include "shell/language_menu.h"
#include "shell/main_window.h"
#include "shell/session.h"
#include "support/world.h"

namespace kestrel {
namespace {

using testing::ProcessEnded;
using testing::VirtualPlatform;
using testing::World;

struct Languages : ::testing::Test {
    VirtualPlatform platform;
    std::optional<Session> session{std::in_place};

    static MenuItem& entry(int i) { return MDIForm1().smnuLingue(i); }
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

TEST_F(Languages, FillTheMenuAndTheEleventhFileNeverAppears) {
    for (const int files : {3, 11}) {
        session.emplace();
        putNumbered(files);
        platform.put(".lng", "nobody's");
        SelectLanguage();
        for (int i = 0; i < 10; ++i) {
            EXPECT_EQ(entry(i).Visible, i < files) << i;
            EXPECT_TRUE(i >= files || entry(i).Caption.get() == std::string(1, static_cast<char>('a' + i))) << i;
        }
    }
}

TEST_F(Languages, LinesAreTakenWhateverTheirEndsAndBeyondTheEndTheOldOnesStay) {
    platform.put("a.lng", "1\n2\n3\n4\n5\n");
    platform.put("b.lng", "one\r\n\r\ncaff\xE8 \x80\nlast");
    LoadLanguage("a.lng");
    LoadLanguage("b.lng");
    int line = 0;
    for (const char* expected : {"", "one", "", "caffè €", "last", "5"}) EXPECT_EQ(LanguageTable(line++), expected);
}

TEST_F(Languages, EightHundredLinesFitAndOneMoreIsARunTimeError) {
    std::string lines;
    for (int i = 1; i <= 800; ++i) lines += "line\n";
    platform.put("a.lng", lines);
    EXPECT_NO_THROW(LoadLanguage("a.lng"));
    EXPECT_EQ(LanguageTable(800), "line");
    platform.put("b.lng", lines);
    EXPECT_TRUE(CheckLanguageFile("a.lng", "b.lng"));
    platform.put("a.lng", lines + "one more\n");
    EXPECT_THROW(LoadLanguage("a.lng"), RunTimeError);
    EXPECT_FALSE(CheckLanguageFile("b.lng", "a.lng")) << "the next start would end with it";
    EXPECT_THROW(LanguageTable(801), ProgrammingError);
}

TEST_F(Languages, AFileIsCheckedByItsMarksAlone) {
    struct Row {
        const char* reference;
        const char* candidate;
        bool passes;
        const char* line3;  ///< of the table afterwards, which held "old" before; line 1 is taken in any case
    };
    for (const Row& row :
         {Row{"a\n;--x\nb\n", "A\n;--y\nB\n", true, "B"}, Row{"a\nb\nc\n", "A\nB\n", false, "old"},
          Row{"a\nb\n", "A\nB\nC\n", true, "old"}, Row{"a\n;--x\nb\n", "A\ntext\nB\n", false, "old"},
          Row{"a\nb\n;--x\n", "A\n;--x\nB\n", false, "old"}, Row{"a\nb\nc\n", "A\n;--x\nC\n", true, "C"}}) {
        SCOPED_TRACE(row.candidate);
        platform.put("old.lng", "old\nold\nold\nold\n");
        platform.put("r.lng", row.reference);
        platform.put("c.lng", row.candidate);
        LoadLanguage("old.lng");
        EXPECT_EQ(CheckLanguageFile("r.lng", "c.lng"), row.passes);
        EXPECT_EQ(LanguageTable(1), "A");
        EXPECT_EQ(LanguageTable(3), row.line3);
    }
}

TEST(LanguageChange, TakesEveryWindowAndTheMenuAlongAndIsSaved) {
    World world;
    world.start();
    ShowPage("FrmTempi");
    Page& totals = ShowPage("FrmTotali");
    const std::string before = totals.Caption;
    world.platform.shown.clear();
    MDIForm1().smnuLingue(1).UserClick();
    EXPECT_EQ(ActiveLanguage(), "English");
    EXPECT_FALSE(MDIForm1().smnuLingue(4).Checked) << "Italiano";
    EXPECT_EQ(totals.Caption.get(), LanguageTable(15));
    EXPECT_NE(totals.Caption.get(), before);
    EXPECT_EQ(MDIForm1().entry("ssmnuTotali").Caption.get(), LanguageTable(15));
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
    world.platform.unwritable.insert((world.platform.directory / "kestrel.ini").generic_string());
    MDIForm1().smnuLingue(1).UserClick();
    EXPECT_EQ(ActiveLanguage(), "English");
    EXPECT_EQ(world.platform.messages.size(), 1U);
    EXPECT_EQ(world.platform.file("kestrel.ini"), "Com=1\r\nLingua=Italiano\r\n");
}

}  // namespace
}  // namespace kestrel
