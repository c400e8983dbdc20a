// mklang: what it refuses in a language source, the files that it makes, and the texts of the installation.
// A technician would meet a fault here as a caption on the wrong control, a broken letter or a refused language.
#include "tools/mklang_format.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tools/mklang_codepage.h"
#include "tools/mklang_command.h"

namespace kestrel::mklang {
namespace {

const std::string header = "line\tUno\tDue\tnote\n";

struct ReadResult {
    LanguageTexts texts;
    std::vector<Complaint> complaints;
};

ReadResult read(const std::string& source) {
    ReadResult result;
    std::istringstream in(source);
    readLanguageSource(in, "a.tsv", result.texts, result.complaints);
    return result;
}

TEST(MklangSource, BadRowsAreComplainedOfWithTheirPlace) {
    struct Case {
        std::string source;
        std::string complaint;
    };
    const std::vector<Case> cases{
        {"", "a.tsv: the source has no header"},
        {"1\tuno\tdue\t\n", "a.tsv:1: the header must be: line, the languages, note"},
        {"line\tEspañol\tnote\n", "a.tsv:1: \"Español\" cannot be a file name; use the letters A to Z"},
        {"line\tUno\tUno\tnote\n", "a.tsv:1: a language has two columns"},
        {header + "0\tuno\tdue\t\n", "a.tsv:2: \"0\" is no line number from 1 to 800"},
        {header + "801\tuno\tdue\t\n", "a.tsv:2: \"801\" is no line number from 1 to 800"},
        {header + "1x\tuno\tdue\t\n", "a.tsv:2: \"1x\" is no line number from 1 to 800"},
        {header + "# a\n\n7\ta\tb\t\n7\tc\td\t\n", "a.tsv:5: line 7 stands at a.tsv:4 already"},
        {header + "1\tuno\t\t\n", "a.tsv:2: no text in Due"},
        {header + "1\tuno\t  \t\n", "a.tsv:2: no text in Due"},
        {header + "1\tuno\tdue\n", "a.tsv:2: the row has 3 columns, the header 4"},
        {header + "1\tu\tno\tdue\t\n", "a.tsv:2: the row has 5 columns, the header 4"},
        {header + "1\tuno\tdu\re\t\n", "a.tsv:2: Due has a control character"},
        {header + "1\tuno\tdu\u0141\t\n", "a.tsv:2: Due has a character outside Windows-1252, or is not UTF-8"},
        {header + "1\tuno\tdu\xE8\t\n", "a.tsv:2: Due has a character outside Windows-1252, or is not UTF-8"},
        {header + "1\tèèè\tdue+\tmenu, max 3\n", "a.tsv:2: Due has 4 characters, the most is 3"},
        {header + "1\tuno\td,e\tno comma\n", "a.tsv:2: Due has a comma, but stands in a list separated by commas"},
        {header + "1\t;-- A\tdue\t\n", "a.tsv:2: a section mark must stand in every language or in none"},
    };
    for (const Case& c : cases) {
        const auto [texts, complaints] = read(c.source);
        ASSERT_EQ(complaints.size(), 1U) << c.source;
        EXPECT_EQ(describe(complaints.front()), c.complaint);
    }
}

TEST(MklangSource, SourcesJoinOnlyWithTheSameLanguages) {
    auto [texts, complaints] = read(header + "1\ta\tb\t\n");
    for (const std::string languages : {"Due\tUno", "Uno", "Uno\tDue\tTre"}) {
        complaints.clear();
        std::istringstream in("line\t" + languages + "\tnote\n2\tx\ty\t\n");
        readLanguageSource(in, "b.tsv", texts, complaints);
        ASSERT_EQ(complaints.size(), 1U) << languages;
        EXPECT_EQ(describe(complaints[0]), "b.tsv:1: the languages differ from those of the source before");
        EXPECT_FALSE(texts.rows.contains(2));
    }
    complaints.clear();
    std::istringstream in(header + "1\tx\ty\t\n");
    readLanguageSource(in, "b.tsv", texts, complaints);
    ASSERT_EQ(complaints.size(), 1U);
    EXPECT_EQ(describe(complaints[0]), "b.tsv:2: line 1 stands at a.tsv:2 already");
}

// Sources edited on another system make the same files.
TEST(MklangSource, LineEndsAndByteOrderMarkMakeNoDifference) {
    const auto [texts, complaints] = read("\xEF\xBB\xBFline\tUno\tDue\tnote\r\n2\ta\t b \t\r\n");
    EXPECT_TRUE(complaints.empty());
    EXPECT_EQ(languageFileBytes(texts, 0), "\r\na\r\n");
    EXPECT_EQ(languageFileBytes(texts, 1), "\r\n b \r\n");
}

TEST(MklangFile, TextOfRowNIsLineN) {
    const auto [texts, complaints] = read(header + "5\tè\t€\t\n2\t;-- A\t;-- A\t\n3\tuno\tdue\t\n");
    EXPECT_TRUE(complaints.empty());
    EXPECT_EQ(languageFileBytes(texts, 0), "\r\n;-- A\r\nuno\r\n\r\n\xE8\r\n");
    EXPECT_EQ(languageFileBytes(texts, 1), "\r\n;-- A\r\ndue\r\n\r\n\x80\r\n");
    EXPECT_EQ(printLanguageFile(languageFileBytes(texts, 0)), "1\t\n2\t;-- A\n3\tuno\n4\t\n5\tè\n");
}

TEST(MklangCodePage, EveryByteWithAMeaningComesBack) {
    int meanings = 0;
    for (int byte = 0; byte <= 0xFF; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        const std::string utf8 = fromWindows1252(text);
        if (utf8 == "\uFFFD") continue;
        ++meanings;
        EXPECT_EQ(toWindows1252(utf8), text) << byte;
    }
    EXPECT_EQ(meanings, 251);
    EXPECT_EQ(toWindows1252("Š“ß–ÿ"), "\x8A\x93\xDF\x96\xFF");
}

TEST(MklangCodePage, RefusesWhatIsNoCharacterOfIt) {
    const std::vector<std::string> cases{
        "\xC3",          // cut short
        "\xE2\x82",      // cut short
        "\xC3(",         // no continuation
        "\xA8",          // a continuation alone
        "\xC1\x81",      // overlong
        "\xE0\x80\x80",  // overlong
        "\xC2\x80",      // U+0080 has no byte
        "\uFFFD",       "\u0416", "\U0001F600",
    };
    for (const std::string& text : cases) EXPECT_FALSE(toWindows1252("ab" + text)) << text;
}

TEST(MklangUsedLines, EveryLineThatIsReadMustHaveAText) {
    const LanguageTexts texts = read(header + "3\ta\tb\t\n4\ta\tb\t\n6\t;-- A\t;-- A\t\n").texts;
    struct Case {
        std::string list;
        std::vector<std::string> complaints;
    };
    const std::vector<Case> cases{
        {"# page\n\n3\n3..4 # rows\r\n", {}},
        {"3..6\n", {"u:1: line 5 has no text", "u:1: line 6 has no text"}},
        {"3\n800\n", {"u:2: line 800 has no text"}},
        {"4..3\n", {"u:1: \"4..3\" is no line number and no range a..b"}},
        {"0..3\n", {"u:1: \"0..3\" is no line number and no range a..b"}},
        {"3..801\n", {"u:1: \"3..801\" is no line number and no range a..b"}},
        {"3..\n", {"u:1: \"3..\" is no line number and no range a..b"}},
        {"three\n", {"u:1: \"three\" is no line number and no range a..b"}},
    };
    for (const Case& c : cases) {
        std::istringstream in(c.list);
        std::vector<Complaint> complaints;
        checkUsedLines(in, "u", texts, complaints);
        std::vector<std::string> described;
        for (const Complaint& complaint : complaints) described.push_back(describe(complaint));
        EXPECT_EQ(described, c.complaints) << c.list;
    }
}

// Runs the tool in a directory of its own.
class MklangCommand : public ::testing::Test {
  protected:
    void SetUp() override { std::filesystem::create_directories(directory); }
    void TearDown() override { std::filesystem::remove_all(directory); }

    std::string path(const std::string& name) const { return (directory / name).string(); }
    void write(const std::string& name, const std::string& text) const {
        std::ofstream(path(name), std::ios::binary) << text;
    }
    std::string content(const std::string& name) const {
        std::ifstream in(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    int runTool(const std::vector<std::string>& arguments) {
        out.str("");
        err.str("");
        return run(arguments, out, err);
    }

    const std::filesystem::path directory = std::filesystem::path(::testing::TempDir()) / "kestrel_mklang";
    std::ostringstream out;
    std::ostringstream err;
};

TEST_F(MklangCommand, MakesAFileForEachLanguageAndPrintsIt) {
    write("a.tsv", header + "1\tperché\twhy\t\n");
    write("b.tsv", header + "3\tsì\tyes\t\n");
    write("used", "1\n3\n");
    ASSERT_EQ(runTool({path("a.tsv"), path("b.tsv"), "--check-used", path("used"), "--out", path("new")}), 0);
    EXPECT_EQ(content("new/Uno.lng"), "perch\xE9\r\n\r\ns\xEC\r\n");
    EXPECT_EQ(content("new/Due.lng"), "why\r\n\r\nyes\r\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(path("new")), {}), 2) << "a file was left over";
    ASSERT_EQ(runTool({"--print", path("new/Uno.lng")}), 0);
    EXPECT_EQ(out.str(), "1\tperché\n2\t\n3\tsì\n");
}

TEST_F(MklangCommand, BadSourcesLeaveTheOldFilesAlone) {
    write("a.tsv", header + "1\told\told\t\n");
    ASSERT_EQ(runTool({path("a.tsv"), "--out", path("")}), 0);
    write("a.tsv", header + "1\tnew\t\t\n");
    EXPECT_EQ(runTool({path("a.tsv"), "--out", path("")}), 1);
    EXPECT_EQ(err.str(), path("a.tsv") + ":2: no text in Due\n");
    EXPECT_EQ(content("Uno.lng"), "old\r\n");

    write("a.tsv", header + "1\tnew\tnew\t\n");
    write("used", "2\n");
    EXPECT_EQ(runTool({path("a.tsv"), "--check-used", path("used"), "--out", path("")}), 1);
    EXPECT_EQ(err.str(), path("used") + ":1: line 2 has no text\n");
    EXPECT_EQ(content("Uno.lng"), "old\r\n");
}

TEST_F(MklangCommand, FilesThatCannotBeUsedAreNamed) {
    write("a.tsv", header + "1\ta\tb\t\n");
    const std::string none = path("none");
    EXPECT_EQ(runTool({none, "--out", path("")}), 1);
    EXPECT_EQ(err.str(), none + ": cannot be read\n");
    EXPECT_EQ(runTool({path("a.tsv"), "--check-used", none, "--out", path("")}), 1);
    EXPECT_EQ(err.str(), none + ": cannot be read\n");
    EXPECT_EQ(runTool({"--print", path("")}), 1) << "a directory is no file";
    EXPECT_EQ(runTool({path("a.tsv"), "--out", path("a.tsv")}), 1) << "a file is no directory";
    EXPECT_NE(err.str().find("Uno.lng: cannot be written"), std::string::npos);
}

TEST_F(MklangCommand, BadCommandLinesEndWithTwo) {
    const std::vector<std::vector<std::string>> cases{
        {},
        {"a.tsv"},
        {"a.tsv", "--out"},
        {"--out", "d"},
        {"a.tsv", "--out", "d", "--out", "e"},
        {"a.tsv", "--out", "d", "--colour", "red"},
        {"--print"},
        {"--print", "x.lng", "a.tsv"},
        {"--print", "x.lng", "--out", "d"},
        {"--print", "x.lng", "--check-used", "u"},
    };
    for (const auto& arguments : cases) {
        EXPECT_EQ(runTool(arguments), 2);
        EXPECT_EQ(err.str().rfind("usage: mklang", 0), 0U);
    }
}

// The language files of the installation, line by line from entry 1.
std::vector<std::string> installedLines(const std::string& language) {
    std::ifstream in(std::string(KESTREL_INSTALLATION) + "/" + language + ".lng", std::ios::binary);
    std::vector<std::string> lines(1);
    for (std::string line; std::getline(in, line);) lines.push_back(line.substr(0, line.find('\r')));
    return lines;
}

class InstalledLanguage : public ::testing::TestWithParam<const char*> {};

// A language is refused at run time when a mark of the language before it stands elsewhere.
TEST_P(InstalledLanguage, CanFollowEveryOtherLanguage) {
    const auto lines = installedLines(GetParam());
    const auto reference = installedLines("Italiano");
    ASSERT_EQ(lines.size(), reference.size());
    int marks = 0;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].starts_with(sectionMark), reference[i].starts_with(sectionMark)) << i;
        EXPECT_EQ(lines[i].empty(), reference[i].empty()) << i;
        marks += lines[i].starts_with(sectionMark) ? 1 : 0;
    }
    EXPECT_GT(marks, 20);
}

// Two alarm codes with one text could not be told apart.
TEST_P(InstalledLanguage, TellsTheAlarmCodesApart) {
    constexpr std::size_t firstAlarm = 478;
    constexpr std::size_t alarms = 138;
    const auto lines = installedLines(GetParam());
    ASSERT_GE(lines.size(), firstAlarm + alarms);
    const std::set<std::string> texts(lines.begin() + firstAlarm, lines.begin() + firstAlarm + alarms);
    EXPECT_EQ(texts.size(), alarms);
}

// The diagram's lamps repeat outputs of the test page: bytes 0, 2 and the low bits of bytes 1 and 3.
TEST_P(InstalledLanguage, NamesADeviceAlikeOnBothTestPages) {
    constexpr std::size_t firstOutput = 346;
    constexpr std::size_t firstLamp = 415;
    struct Run {
        std::size_t output, lamp, count;
    };
    const auto lines = installedLines(GetParam());
    ASSERT_GT(lines.size(), firstLamp + 23);
    for (const Run run : {Run{0, 0, 8}, Run{8, 8, 4}, Run{16, 12, 8}, Run{24, 20, 3}}) {
        for (std::size_t i = 0; i < run.count; ++i) {
            EXPECT_EQ(lines[firstLamp + run.lamp + i], lines[firstOutput + run.output + i]) << run.lamp + i;
        }
    }
    struct Pair {
        std::size_t lamp, input;
    };
    for (const Pair pair : {Pair{438, 406}, Pair{439, 407}, Pair{441, 408}, Pair{444, 409}, Pair{447, 387}}) {
        EXPECT_EQ(lines[pair.lamp], lines[pair.input]);
    }
}

INSTANTIATE_TEST_SUITE_P(All, InstalledLanguage,
                         ::testing::Values("Italiano", "English", "Deutsch", "Francais", "Espanol"));

}  // namespace
}  // namespace kestrel::mklang
