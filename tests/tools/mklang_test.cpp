// mklang: what it refuses in a language source, the files that it makes, and the texts of the installation.
// A technician would meet a fault here as a caption on the wrong control, a broken letter or a refused language.
#include "tools/mklang_format.h"

#include <gtest/gtest.h>

#include <set>

#include "platform/code_page.h"
#include "tool_test.h"
#include "tools/mklang_command.h"
#include "tools/mklang_glossary.h"

namespace kestrel::mklang {
namespace {

using kestrel::testing::Arguments;
using Strings = std::vector<std::string>;

const std::string header = "line\tUno\tDue\tnote\n";

Strings described(const std::vector<Complaint>& complaints) {
    Strings texts;
    for (const Complaint& complaint : complaints) texts.push_back(describe(complaint));
    return texts;
}

struct ReadResult {
    LanguageTexts texts;
    Strings complaints;
};

/// Reads the sources one after the other, as a.tsv and b.tsv.
ReadResult read(const Strings& sources) {
    ReadResult result;
    std::vector<Complaint> complaints;
    char name = 'a';
    for (const std::string& source : sources) {
        std::istringstream in(source);
        readLanguageSource(in, name++ + std::string(".tsv"), result.texts, complaints);
    }
    result.complaints = described(complaints);
    return result;
}

TEST(MklangSource, BadRowsAreComplainedOfWithTheirPlace) {
    const std::string good = header + "1\ta\tb\t\n";
    const std::pair<Strings, const char*> headers[] = {
        {{"# to come\n"}, "a.tsv: the source has no header"},
        {{"1\tuno\tdue\t\n"}, "a.tsv:1: the header must be: line, the languages, note"},
        {{"line\tEspañol\tnote\n"}, "a.tsv:1: \"Español\" cannot be a file name; use the letters A to Z"},
        {{"line\tUno\tUno\tnote\n"}, "a.tsv:1: a language has two columns"},
        {{good, "line\tDue\tUno\tnote\n"}, "b.tsv:1: the languages differ from those of the source before"},
        {{good, "line\tUno\tDue\tTre\tnote\n"}, "b.tsv:1: the languages differ from those of the source before"},
        {{"line\tFrancais\tnote\n1\tQuoi ?\t\n2\tQuoi\u00A0?\t\n"},
         "a.tsv:2: Francais has a blank before a sign that is no no-break blank"},
        {{good, header + "1\tx\ty\t\n"}, "b.tsv:2: line 1 stands at a.tsv:2 already"},
        {{header + "# a\n\n7\ta\tb\t\n7\tc\td\t\n"}, "a.tsv:5: line 7 stands at a.tsv:4 already"}};
    for (const auto& [sources, complaint] : headers) EXPECT_EQ(read(sources).complaints, Strings{complaint});
    const std::pair<const char*, const char*> rows[] = {
        {"0\tuno\tdue\t", "\"0\" is no line number from 1 to 800"},
        {"801\tuno\tdue\t", "\"801\" is no line number from 1 to 800"},
        {"1x\tuno\tdue\t", "\"1x\" is no line number from 1 to 800"},
        {"1\tuno\t  \t", "no text in Due"},
        {"1\tuno\tdue", "the row has 3 columns, the header 4"},
        {"1\tu\tno\tdue\t", "the row has 5 columns, the header 4"},
        {"1\tuno\tdu\re\t", "Due has a control character"},
        {"1\tuno\tdu\u0141\t", "Due has a character outside Windows-1252, or is not UTF-8"},
        {"1\tuno\tdu\xE8\t", "Due has a character outside Windows-1252, or is not UTF-8"},
        {"1\tèèè\tdue+\tmenu, max 3", "Due has 4 characters, the most is 3"},
        {"1\tuno\td,e\tno comma", "Due has a comma, but stands in a list separated by commas"},
        {"1\t;-- A\tdue\t", "a section mark must stand in every language or in none"}};
    for (const auto& [row, complaint] : rows)
        EXPECT_EQ(read({header + row + "\n"}).complaints, Strings{std::string("a.tsv:2: ") + complaint});
}

TEST(MklangCodePage, EveryByteWithAMeaningComesBack) {
    int meanings = 0;
    for (int byte = 0; byte <= 0xFF; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        const std::string utf8 = textOfInstallation(text);
        if (utf8 == "\uFFFD") continue;
        ++meanings;
        EXPECT_EQ(bytesForInstallation(utf8), text) << byte;
    }
    EXPECT_EQ(meanings, 251);
    EXPECT_EQ(bytesForInstallation("Š“ß–ÿ"), "\x8A\x93\xDF\x96\xFF");
}

TEST(MklangCodePage, RefusesWhatIsNoCharacterOfIt) {
    // Cut short, without or with nothing but a continuation, overlong; and what has no byte.
    for (const std::string text : {"\xC3", "\xE2\x82", "\xC3(", "\xA8", "\xC1\x81", "\xE0\x83\xA9", "\xC2\x80",
                                   "\uFFFD", "\u0416", "\U0001F600"})
        EXPECT_FALSE(bytesForInstallation("ab" + text)) << text;
}

TEST(MklangUsedLines, EveryLineThatIsReadMustHaveAText) {
    const LanguageTexts texts = read({header + "3\ta\tb\t\n4\ta\tb\t\n6\t;-- A\t;-- A\t\n"}).texts;
    struct Case {
        const char* list;
        Strings complaints;
    };
    for (const Case& c : std::initializer_list<Case>{
             {"# page\n\n3\n3..4 # rows\r\n", {}},
             {"3..6\n", {"u:1: line 5 has no text", "u:1: line 6 has no text"}},
             {"3\n800\n", {"u:2: line 800 has no text"}},
             {"4..3\n0..3\n3..801\n3..\nthree\n",
              {"u:1: \"4..3\" is no line number and no range a..b", "u:2: \"0..3\" is no line number and no range a..b",
               "u:3: \"3..801\" is no line number and no range a..b",
               "u:4: \"3..\" is no line number and no range a..b",
               "u:5: \"three\" is no line number and no range a..b"}},
         }) {
        std::istringstream in(c.list);
        std::vector<Complaint> complaints;
        checkUsedLines(in, "u", texts, complaints);
        EXPECT_EQ(described(complaints), c.complaints) << c.list;
    }
}

TEST(MklangGlossary, ATermHasOneWordInEveryLanguage) {
    const std::string glossary =
        "Words | and texts.\n\n| Term | Uno | Due | Meaning |\n|---|---|---|---|\n"
        "| price number | prezzi sel. | Preisnummer (never Preis) | |\n"
        "| selection | selezione, sel. | Auswahl | 1 to 18 |\n| state | stàto | État | |\n| vend | (prova) | Verkauf | "
        "|\n";
    const std::string state = "1\tSTÀTO 1\tétat\t\n4\t;-- sel.\t;-- sel.\t\n";
    const auto lacks = [](const char* text, const char* term, int line) {
        return std::string("a.tsv:4: \"") + text + "\" lacks the word for " + term +
               " in Due (g:" + std::to_string(line) + ")";
    };
    const std::pair<const char*, Strings> rows[] = {
        {"Prezzi sel.\tPreisnummern", {"g:6: no text has the term selection"}},
        {"prezzi sel. selezione\tPreisnummer je auswahl", {}},
        {"prezzi sel. 1 sel.\tPreis je Auswahl", {lacks("Preis je Auswahl", "price number", 5)}},
        {"prezzi sel. e selezione\tPreisnummer", {lacks("Preisnummer", "selection", 6)}},
        {"preselezione, selezioni, prova\tVorwahl",
         {"g:5: no text has the term price number", "g:6: no text has the term selection"}}};
    for (const auto& [row, expected] : rows) {
        std::istringstream in(glossary);
        std::vector<Complaint> complaints;
        checkGlossary(in, "g", read({header + state + "2\t" + row + "\t\n"}).texts, complaints);
        EXPECT_EQ(described(complaints), expected) << row;
    }
    std::istringstream in("|||\n|||\n| a | b | c |\n");
    std::vector<Complaint> complaints;
    checkGlossary(in, "g", read({header}).texts, complaints);
    EXPECT_EQ(described(complaints), Strings{"g:3: the row must have a term, each language and the meaning"});
}

class MklangCommand : public kestrel::testing::ToolTest {
  protected:
    MklangCommand() : ToolTest(mklang::run) {}
};

TEST_F(MklangCommand, MakesAFileForEachLanguageInWhichLineNIsTheTextOfRowN) {
    // Sources edited on another system make the same files.
    write("a.tsv", "\xEF\xBB\xBFline\tUno\tDue\tnote\r\n5\tsì\t € \t\r\n2\t;-- A\t;-- B\t\r\n");
    write("b.tsv", header + "3\tperché\twhy\t\n");
    write("used", "3\n5\n");
    ASSERT_EQ(run({path("a.tsv"), path("b.tsv"), "--check-used", path("used"), "--out", path("new")}), 0) << err.str();
    EXPECT_EQ(content("new/Uno.lng"), "\r\n;-- A\r\nperch\xE9\r\n\r\ns\xEC\r\n");
    EXPECT_EQ(content("new/Due.lng"), "\r\n;-- B\r\nwhy\r\n\r\n \x80 \r\n");
    EXPECT_EQ(filesIn("new"), 2) << "a file was left over";
    ASSERT_EQ(run({"--print", path("new/Uno.lng")}), 0);
    EXPECT_EQ(out.str(), "1\t\n2\t;-- A\n3\tperché\n4\t\n5\tsì\n");
}

TEST_F(MklangCommand, BadSourcesLeaveTheOldFilesAloneAndFilesThatCannotBeUsedAreNamed) {
    write("old.tsv", header + "1\told\told\t\n");
    ASSERT_EQ(run({path("old.tsv"), "--out", path("")}), 0);
    write("half.tsv", header + "1\tnew\t\t\n");
    write("used", "2\n");
    write("terms", "||\n||\n|new|new|neu||\n");
    const std::pair<Arguments, std::string> rows[] = {
        {{path("half.tsv"), "--out", path("")}, path("half.tsv") + ":2: no text in Due\n"},
        {{path("old.tsv"), "--check-used", path("used"), "--out", path("")}, path("used") + ":1: line 2 has no text\n"},
        {{path("none"), "--out", path("")}, path("none") + ": cannot be read\n"},
        {{path("old.tsv"), "--check-used", path("none"), "--out", path("")}, path("none") + ": cannot be read\n"},
        {{path("old.tsv"), "--glossary", path("terms"), "--out", path("")},
         path("terms") + ":3: no text has the term new\n"},
        {{"--print", path("")}, path("") + ": cannot be read\n"},
        {{path("old.tsv"), "--out", path("old.tsv")},
         (directory / "old.tsv" / "Uno.lng").string() + ": cannot be written\n"}};
    for (const auto& [arguments, said] : rows) {
        EXPECT_EQ(run(arguments), 1) << said;
        EXPECT_EQ(err.str(), said);
    }
    EXPECT_EQ(content("Uno.lng"), "old\r\n");
    expectBadUsage({"", "a.tsv", "--out d", "a.tsv --out d --out e", "a.tsv --out d --colour red", "--print",
                    "--print x.lng a.tsv", "--print x.lng --out d", "--print x.lng --check-used u",
                    "--print x.lng --glossary g"});
}

constexpr const char* installed[] = {"Italiano", "English", "Deutsch", "Francais", "Espanol"};

/// A language file of the installation, line by line from entry 1.
Strings installedLines(const std::string& language) {
    std::istringstream in(kestrel::testing::fileContent(std::string(KESTREL_INSTALLATION) + "/" + language + ".lng"));
    Strings lines(1);
    for (std::string line; std::getline(in, line);) lines.push_back(line.substr(0, line.find('\r')));
    return lines;
}

// Two alarm codes with one text could not be told apart.
TEST(InstalledLanguages, TellTheAlarmCodesApart) {
    constexpr std::size_t firstAlarm = 478;
    constexpr std::size_t alarms = 138;
    for (const char* language : installed) {
        const Strings lines = installedLines(language);
        ASSERT_GE(lines.size(), firstAlarm + alarms) << language;
        const std::set<std::string> texts(lines.begin() + firstAlarm, lines.begin() + firstAlarm + alarms);
        EXPECT_EQ(texts.size(), alarms) << language;
    }
}

// The diagram's lamps repeat outputs of the test page (bytes 0, 2 and the low bits of bytes 1 and 3) and some inputs.
TEST(InstalledLanguages, NameADeviceAlikeOnBothTestPages) {
    struct Run {
        std::size_t lamp, device, count;
    };
    for (const char* language : installed) {
        const Strings lines = installedLines(language);
        for (const Run run : {Run{415, 346, 8}, Run{423, 354, 4}, Run{427, 362, 8}, Run{435, 370, 3}, Run{438, 406, 2},
                              Run{441, 408, 1}, Run{444, 409, 1}, Run{447, 387, 1}})
            for (std::size_t i = 0; i < run.count; ++i)
                EXPECT_EQ(lines.at(run.lamp + i), lines.at(run.device + i)) << language << run.lamp + i;
    }
}

}  // namespace
}  // namespace kestrel::mklang
