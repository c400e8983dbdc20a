// Tests of mkindex: what it refuses and where it says so, the bytes that it writes, and its printing.
// A mistake here would send a service tool to the wrong cell of a board's memory.
#include <algorithm>

#include "tool_test.h"
#include "tools/mkindex_command.h"
#include "tools/mkindex_format.h"

namespace kestrel::mkindex {
namespace {

using kestrel::testing::Arguments;

constexpr Layout params = Layout::Parameters;
const std::string parameterHeader = "name|width|refresh|address|preload\n";
const std::string identityHeader = "number|name|width|refresh|address|meaning\n";
const std::string catalogueHeader = "number|name|copy|unit|scale|kind|range|group|meaning\n";
const std::string catalogueRows =
    "1|a||||report||status|m\n2..4|coin[1..3]|12..14|||report||status|m\n6..7|lamp[0..1]||||report||status|m\n9|last|||"
    "|report||status|m\n";

/// A table as its file holds it; in the tests | stands for the tab between two columns.
std::string tabbed(std::string text) {
    std::replace(text.begin(), text.end(), '|', '\t');
    return text;
}

/// Which of the three kinds of table a text is.
enum class Kind { Identity, Parameters, Catalogue };
constexpr Kind ident = Kind::Identity;
constexpr Kind param = Kind::Parameters;
constexpr Kind catal = Kind::Catalogue;

tables::Catalogue catalogueOf(const std::string& text) {
    std::istringstream in(tabbed(text));
    return tables::readCatalogue(in);
}

Table tableOf(const std::string& text, Kind kind) {
    std::istringstream in(tabbed(text));
    if (kind == ident) return readIdentityTable(in);
    return readParameterTable(in, catalogueOf(catalogueHeader + catalogueRows));
}

std::string problemsOf(const std::string& text, Kind kind) {
    std::string told;
    for (const auto& [line, problem] : kind == catal ? catalogueOf(text).problems : tableOf(text, kind).problems)
        told += std::to_string(line) + ": " + problem + '\n';
    return told;
}

struct BadTable {
    Kind kind;
    const char* rows;  // below the header, which is line 1
    const char* complaint;
};

const BadTable badTables[] = {
    {param, "a|1|0|000010\n", "2: 5 columns are needed, this row has 4\n"},
    {ident, "1|a|1|0|000010|0|m\n", "2: 6 columns are needed, this row has 7\n"},
    {ident, "1..2|a|1|0|000010|m\n", "2: number \"1..2\" is none\n"},
    {ident, "0|a|1|0|000010|m\n", "2: number \"0\" is not within 1 to 20\n"},
    {ident, "21|a|1|0|000010|m\n", "2: number \"21\" is not within 1 to 20\n"},
    {ident, "7|a|1|0|000010|m\n# why not\n6|b|1|0|000011|m\n", "4: number 6 does not come after 7\n"},
    {ident, "1|a|1|0|000010|m\n2|a|1|0|000011|m\n", "3: name \"a\" stands twice\n"},
    {ident, "1|a[1..2]|1|0|000010|m\n", "2: name \"a[1..2]\" stands for more than one record\n"},
    {param, "b|1|0|000010|0\n", "2: name \"b\" is not in the catalogue\n"},
    {param, "a.copy|1|0|000010|0\n", "2: name \"a.copy\" is not in the catalogue\n"},
    {param, "a[1]|1|0|000010|0\n", "2: name \"a[1]\" is not in the catalogue\n"},
    {param, "coin|1|0|000010|0\n", "2: name \"coin\" is not in the catalogue\n"},
    {param, "coin[0..1]|1|0|000010|0\n", "2: name \"coin[0..1]\" is not in the catalogue\n"},
    {param, "coin[3..4].copy|1|0|000010|0\n", "2: name \"coin[3..4].copy\" is not in the catalogue\n"},
    {param, "coin[1..3]|1|0|000010|0\ncoin[2]|1|0|000020|0\n", "3: name \"coin[2]\" stands twice\n"},
    {param, "|1|0|000010|0\n", "2: name \"\" may have only small letters, digits, underscores and dots\n"},
    {param, "A b|1|0|000010|0\n", "2: name \"A b\" may have only small letters, digits, underscores and dots\n"},
    {param, "coin[1..2|1|0|000010|0\n", "2: name \"coin[1..2\" does not end in indices like [1..8]\n"},
    {param, "a|3|0|000010|0\n", "2: width \"3\" is not 1, 2 or 4\n"},
    {param, "a|1|16|000010|0\n", "2: refresh \"16\" is not within 0 to 15\n"},
    {param, "a|1|-1|000010|0\n", "2: refresh \"-1\" is not within 0 to 15\n"},
    {param, "a|1|0|0010|0\n", "2: address \"0010\" is not six hexadecimal digits\n"},
    {param, "a|1|0|0x0010|0\n", "2: address \"0x0010\" is not six hexadecimal digits\n"},
    {param, "a|2|0|FFFFFF|0\n", "2: the addresses of a run beyond FFFFFF\n"},
    {param, "a|1|0|FFFFFF|0\n", "3: no addresses are left for the numbers without a row\n"},
    {param, "a|1|0|000010|256\n", "2: preload \"256\" is not within 0 to 255\n"},
    {param, "a|4|0|000010|4294967296\n", "2: preload \"4294967296\" is not within 0 to 4294967295\n"},
    {param, "coin[1..3]|1|0|000010|1,2\n", "2: there are 2 preloads for 3 parameters\n"},
    {param, "a|2|0|000010|0\nlast|1|0|000011|0\n",
     "3: the addresses of last overlap those of a in line 2 from 000011 on\n"},
    {param, "a|2|0|000010|0\ncoin[1..3]|4|0|000020|0\nlast|1|0|000022|0\nlamp[1]|1|0|00002B|0\n",
     "4: the addresses of last overlap those of coin[1..3] in line 3 from 000022 on\n"
     "5: the addresses of lamp[1] overlap those of coin[1..3] in line 3 from 00002B on\n"},
    {param, "a|3|99|zz|0\n",
     "2: width \"3\" is not 1, 2 or 4\n2: refresh \"99\" is not within 0 to 15\n"
     "2: address \"zz\" is not six hexadecimal digits\n"},
    {param, "# to come\n", "3: the table has no rows\n"},
    {catal, "1|a||||report||status\n", "2: 9 columns are needed, this row has 8\n"},
    {catal, "x|a||||report||status|m\n", "2: number \"x\" is neither N nor N..M\n"},
    {catal, "5..4|a[1..2]||||report||status|m\n", "2: number \"5..4\" is neither N nor N..M\n"},
    {catal, "0|a||||report||status|m\n", "2: number \"0\" is not within 1 to 32766\n"},
    {catal, "1|a|32767|||report||status|m\n", "2: copy \"32767\" is not within 1 to 32766\n"},
    {catal, "1..2000000000|a[1..2]||||report||status|m\n", "2: number \"1..2000000000\" is not within 1 to 32766\n"},
    {catal, "7|a||||report||status|m\n# why not\n6|b||||report||status|m\n", "4: number 6 does not come after 7\n"},
    {catal, "1..4|a[1..4]||||report||status|m\n4|b||||report||status|m\n",
     "3: number 4 has a meaning in line 2 already\n"},
    {catal, "1|a|2|||report||status|m\n2|b||||report||status|m\n", "3: number 2 has a meaning in line 2 already\n"},
    {catal, "1|a|9|||report||status|m\n2|b|9|||report||status|m\n", "3: number 9 has a meaning in line 2 already\n"},
    {catal, "1|a|1|||report||status|m\n", "2: number 1 has a meaning in line 2 already\n"},
    {catal, "1..3|a[1..2]||||report||status|m\n", "2: name \"a[1..2]\" stands for 2 parameters, the row for 3\n"},
    {catal, "1..3|a[1..3]|7..8|||report||status|m\n", "2: there are 2 copies of 3 parameters\n"},
    {catal, "1|a.b_c||||report||status|m\n2|a_b.c||||report||status|m\n",
     "3: name \"a_b.c\" stands in line 2 already\n"},
    {catal, "1|4a||||report||status|m\n", "2: name \"4a\" begins with no letter or ends in .copy\n"},
    {catal, "1|a.copy||||report||status|m\n", "2: name \"a.copy\" begins with no letter or ends in .copy\n"},
    {catal, "1|a||s|/7|report||status|m\n2|b||s|+x|report||status|m\n3|c||s|-5|report||status|m\n",
     "2: scale \"/7\" is none that programs know\n3: scale \"+x\" is none that programs know\n"},
    {catal, "1|a||||other|70|other|\n",
     "2: range \"70\" is neither N..M nor bits\n2: kind \"other\" is none that programs know\n"
     "2: group \"other\" is none that programs know\n2: there is no meaning\n"},
    {catal, "1|a||||own|bits 2,x|status|m\n2|b||||clock|bits 32|status|m\n",
     "2: range \"bits 2,x\" names no bits\n3: range \"bits 32\" names no bits\n"},
};

TEST(MkindexTable, EveryMistakeIsToldWithItsLine) {
    for (const BadTable& bad : badTables) {
        const std::string& header = bad.kind == ident   ? identityHeader
                                    : bad.kind == param ? parameterHeader
                                                        : catalogueHeader;
        EXPECT_EQ(problemsOf(header + bad.rows, bad.kind), bad.complaint) << bad.rows;
    }
    for (const Kind kind : {ident, param, catal})
        EXPECT_TRUE(problemsOf("number|name\n", kind).starts_with("1: the header row must have these columns"));
    EXPECT_EQ(problemsOf("# to come\n", param), "2: the table has no header row\n");
    EXPECT_EQ(problemsOf("# to come\n", catal), "2: the catalogue has no header row\n");
}

// The bytes as the boards' makers fixed them: addresses 2 and 1, command, refresh, address 0, then the value low first.
TEST(MkindexFile, HasTheBytesOfItsLayout) {
    const Table parameters = tableOf(parameterHeader + "a|4|12|A2B1C0|67305985\n", param);
    EXPECT_EQ(encode(parameters.records, params).substr(0, 9), std::string("\xA2\xB1\x03\x0C\xC0\x01\x02\x03\x04", 9));
    const Table identity = tableOf(identityHeader + "20|a|1|0|123456|m\n", ident);
    const std::string bytes = encode(identity.records, Layout::Identity);
    EXPECT_EQ(bytes.size(), 20U * 5);
    EXPECT_EQ(bytes.substr(95), std::string("\x12\x34\x00\x00\x56", 5));
}

TEST(MkindexPrint, RemarksOnWhatNoTableCanSay) {
    const std::string bytes("\x01\x02\x7F\x33\x04\x01\x00\x00\x00\x00\x00\x01\x04\x05\x00\x00\x00\x80\xEE\xEE", 20);
    std::ostringstream out;
    print(out, bytes, params, {{2, "known"}});
    EXPECT_EQ(out.str(), tabbed("number|name|width|refresh|address|preload\n"
                                "1|-|16|3|010204|1|# command byte 7F refresh byte 33\n"
                                "2|known|2|4|000005|2147483648\n"
                                "# 2 more bytes are no whole record\n"));
}

class MkindexCommand : public kestrel::testing::ToolTest {
  protected:
    MkindexCommand() : ToolTest(mkindex::run) {}

    const std::string catalogue = write("board.tsv", tabbed(catalogueHeader + catalogueRows));
};

// A page may watch or write a number that the board does not have: that must never reach a cell that is in use.
TEST_F(MkindexCommand, MakesARecordOfEachNumberAndThoseWithoutARowTouchNoParameter) {
    const std::string rows =
        "lamp[0..1]|1|9|000020|7\r\n"
        "coin[1..3]|2|0|0A20FE|5,10,65535\r\n";
    const std::string table = write("any.tsv", tabbed("# made on another system\r\n\r\n" + parameterHeader + rows));
    const std::string file = path("W0256AP03.inx");
    ASSERT_EQ(run({"--catalogue", catalogue, table, file}), 0) << err.str();
    ASSERT_EQ(run({"--print", file, table, "--catalogue", catalogue}), 0);
    EXPECT_EQ(out.str(), tabbed("number|name|width|refresh|address|preload\n"
                                "1|-|1|0|0A2104|0\n"
                                "2|coin[1]|2|0|0A20FE|5\n"
                                "3|coin[2]|2|0|0A2100|10\n"
                                "4|coin[3]|2|0|0A2102|65535\n"
                                "5|-|1|0|0A2105|0\n"
                                "6|lamp[0]|1|9|000020|7\n"
                                "7|lamp[1]|1|9|000021|7\n"
                                "8|-|1|0|0A2106|0\n"));
    ASSERT_EQ(run({"--print", file}), 0);
    EXPECT_EQ(out.str().find("coin"), std::string::npos);
}

TEST_F(MkindexCommand, FilesThatCannotBeUsedAreNamedAndBadCommandLinesToldTheUsage) {
    const std::string table = write("good.tsv", tabbed(parameterHeader + "a|1|0|000010|0\n"));
    std::filesystem::create_directories(path("folder.inx"));
    for (const Arguments& arguments :
         {Arguments{"--catalogue", catalogue, path("missing.tsv"), path("a.inx")},
          Arguments{"--catalogue", path("missing.tsv"), table, path("a.inx")},
          Arguments{"--catalogue", catalogue, path(""), path("a.inx")},
          Arguments{"--catalogue", catalogue, table, path("no/such/folder/a.inx")},
          Arguments{"--catalogue", catalogue, table, path("folder.inx")}, Arguments{"--print", path("missing.inx")},
          Arguments{"--print", path("folder.inx")}}) {
        EXPECT_EQ(run(arguments), 1) << arguments.back();
        EXPECT_NE(err.str().find("cannot be"), std::string::npos) << arguments.back() << err.str();
    }
    EXPECT_EQ(filesIn(""), 3) << "nothing is left beside";
    expectBadUsage(
        {"", "one.tsv", "a b c", "--print", "--print a b c", "--fast a b", "a.tsv V0256.inx", "--catalogue"});
    EXPECT_EQ(run({"--help"}), 0);
}

}  // namespace
}  // namespace kestrel::mkindex
