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
constexpr Layout ident = Layout::Identity;
const std::string parameterHeader = "number|name|width|refresh|address|preload|meaning\n";
const std::string identityHeader = "number|name|width|refresh|address|meaning\n";

/// A table as its file holds it; in the tests | stands for the tab between two columns.
std::string tabbed(std::string text) {
    std::replace(text.begin(), text.end(), '|', '\t');
    return text;
}

Table tableOf(const std::string& text, Layout layout = params) {
    std::istringstream in(tabbed(text));
    return readTable(in, layout);
}

std::string allProblems(const Table& table) {
    std::string text;
    for (const Problem& problem : table.problems) text += std::to_string(problem.line) + ": " + problem.text + '\n';
    return text;
}

struct BadTable {
    Layout layout;
    const char* rows;  // below the header, which is line 1
    const char* complaint;
};

const BadTable badTables[] = {
    {params, "1|a|1|0|000010|m\n", "2: 7 columns are needed, this row has 6\n"},
    {ident, "1|a|1|0|000010|0|m\n", "2: 6 columns are needed, this row has 7\n"},
    {params, "x|a|1|0|000010|0|m\n", "2: number \"x\" is neither N nor N..M\n"},
    {params, "5..4|a[1..2]|1|0|000010|0|m\n", "2: number \"5..4\" is neither N nor N..M\n"},
    {params, "0|a|1|0|000010|0|m\n", "2: number \"0\" is not within 1 to 32766\n"},
    {params, "32767|a|1|0|000010|0|m\n", "2: number \"32767\" is not within 1 to 32766\n"},
    {params, "1..2000000000|a[1..2]|1|0|000010|0|m\n", "2: number \"1..2000000000\" is not within 1 to 32766\n"},
    {ident, "21|a|1|0|000010|m\n", "2: number \"21\" is not within 1 to 20\n"},
    {params, "7|a|1|0|000010|0|m\n# why not\n6|b|1|0|000011|0|m\n", "4: number 6 does not come after 7\n"},
    {params, "1..4|a[1..4]|1|0|000010|0|m\n4|b|1|0|000020|0|m\n", "3: number 4 does not come after 4\n"},
    {params, "1|a|1|0|000010|0|m\n2|a|1|0|000011|0|m\n", "3: name \"a\" stands twice\n"},
    {params, "1..2|a[1..2]|1|0|000010|0|m\n3..4|a[2..3]|1|0|000020|0|m\n", "3: name \"a[2]\" stands twice\n"},
    {params, "1||1|0|000010|0|m\n", "2: name \"\" may have only small letters, digits, underscores and dots\n"},
    {params, "1|A b|1|0|000010|0|m\n", "2: name \"A b\" may have only small letters, digits, underscores and dots\n"},
    {params, "1..2|a[1..2|1|0|000010|0|m\n", "2: name \"a[1..2\" does not end in indices like [1..8]\n"},
    {params, "1..3|a[1..2]|1|0|000010|0|m\n", "2: name \"a[1..2]\" stands for 2 parameters, the row for 3\n"},
    {params, "1|a|3|0|000010|0|m\n", "2: width \"3\" is not 1, 2 or 4\n"},
    {params, "1|a|1|16|000010|0|m\n", "2: refresh \"16\" is not within 0 to 15\n"},
    {params, "1|a|1|-1|000010|0|m\n", "2: refresh \"-1\" is not within 0 to 15\n"},
    {params, "1|a|1|0|0010|0|m\n", "2: address \"0010\" is not six hexadecimal digits\n"},
    {params, "1|a|1|0|0x0010|0|m\n", "2: address \"0x0010\" is not six hexadecimal digits\n"},
    {params, "1|a|2|0|FFFFFF|0|m\n", "2: the addresses of a run beyond FFFFFF\n"},
    {params, "1|a|1|0|FFFFFF|0|m\n", "3: no addresses are left for the numbers without a row\n"},
    {params, "1|a|1|0|000010|256|m\n", "2: preload \"256\" is not within 0 to 255\n"},
    {params, "1|a|4|0|000010|4294967296|m\n", "2: preload \"4294967296\" is not within 0 to 4294967295\n"},
    {params, "1..3|a[1..3]|1|0|000010|1,2|m\n", "2: there are 2 preloads for 3 parameters\n"},
    {params, "1|a|2|0|000010|0|m\n2|b|1|0|000011|0|m\n",
     "3: the addresses of b overlap those of a in line 2 from 000011 on\n"},
    {params, "1|a|1|0|000010|0|m\n2..9|b[1..8]|4|0|000020|0|m\n10|c|1|0|000022|0|m\n11|d|1|0|00003F|0|m\n",
     "4: the addresses of c overlap those of b[1..8] in line 3 from 000022 on\n"
     "5: the addresses of d overlap those of b[1..8] in line 3 from 00003F on\n"},
    {params, "1|a|3|99|zz|0|m\n",
     "2: width \"3\" is not 1, 2 or 4\n2: refresh \"99\" is not within 0 to 15\n"
     "2: address \"zz\" is not six hexadecimal digits\n"},
    {params, "# to come\n", "3: the table has no rows\n"},
};

TEST(MkindexTable, EveryMistakeIsToldWithItsLine) {
    for (const BadTable& bad : badTables) {
        const std::string& header = bad.layout == ident ? identityHeader : parameterHeader;
        EXPECT_EQ(allProblems(tableOf(header + bad.rows, bad.layout)), bad.complaint) << bad.rows;
    }
    EXPECT_TRUE(allProblems(tableOf("number|name\n")).starts_with("1: the header row must have these columns"));
    EXPECT_EQ(allProblems(tableOf("# to come\n")), "2: the table has no header row\n");
}

// The bytes as the boards' makers fixed them: addresses 2 and 1, command, refresh, address 0, then the value low first.
TEST(MkindexFile, HasTheBytesOfItsLayout) {
    const Table parameters = tableOf(parameterHeader + "1|a|4|12|A2B1C0|67305985|m\n");
    EXPECT_EQ(encode(parameters.records, params).substr(0, 9), std::string("\xA2\xB1\x03\x0C\xC0\x01\x02\x03\x04", 9));
    const Table identity = tableOf(identityHeader + "20|a|1|0|123456|m\n", ident);
    const std::string bytes = encode(identity.records, ident);
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
};

// A page may watch or write a number that the board does not have: that must never reach a cell that is in use.
TEST_F(MkindexCommand, MakesARecordOfEachNumberAndThoseWithoutARowTouchNoParameter) {
    const std::string rows =
        "2..4|coin[1..3]|2|0|0A20FE|5,10,65535|values\r\n"
        "6..7|lamp[0..1]|1|9|000020|7|one preload for both\r\n";
    const std::string table = write("any.tsv", tabbed("# made on another system\r\n\r\n" + parameterHeader + rows));
    const std::string file = path("W0256AP03.inx");
    ASSERT_EQ(run({table, file}), 0) << err.str();
    ASSERT_EQ(run({"--print", file, table}), 0);
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

TEST_F(MkindexCommand, NameOrOptionChoosesTheLayout) {
    const std::string table = write("identity.tsv", tabbed(identityHeader + "1|probe|1|0|0FF000|m\n"));
    EXPECT_EQ(run({table, path("W0256.inx")}), 0) << err.str();
    EXPECT_EQ(run({table, path("V0256.inx")}), 1) << "a parameter file by its name";
    EXPECT_EQ(run({"--identity", table, path("V0256.inx")}), 0) << err.str();
    EXPECT_EQ(content("V0256.inx"), content("W0256.inx"));
    EXPECT_EQ(run({"--parameters", table, path("W0256.inx")}), 1);
}

TEST_F(MkindexCommand, ABadTableLeavesTheOldFile) {
    const std::string table = write("bad.tsv", tabbed(parameterHeader + "0|a|1|0|000010|0|m\n"));
    write("W0256AP03.inx", "old");
    EXPECT_EQ(run({table, path("W0256AP03.inx")}), 1);
    EXPECT_EQ(err.str(), table + ":2: number \"0\" is not within 1 to 32766\n");
    EXPECT_EQ(content("W0256AP03.inx"), "old");
}

TEST_F(MkindexCommand, FilesThatCannotBeUsedAreNamedAndBadCommandLinesToldTheUsage) {
    const std::string table = write("good.tsv", tabbed(parameterHeader + "1|a|1|0|000010|0|m\n"));
    std::filesystem::create_directories(path("folder.inx"));
    for (const Arguments& arguments :
         {Arguments{path("missing.tsv"), path("a.inx")}, Arguments{path(""), path("a.inx")},
          Arguments{table, path("no/such/folder/a.inx")}, Arguments{table, path("folder.inx")},
          Arguments{"--print", path("missing.inx")}, Arguments{"--print", path("folder.inx")}}) {
        EXPECT_EQ(run(arguments), 1) << arguments.back();
        EXPECT_NE(err.str().find("cannot be"), std::string::npos) << arguments.back();
    }
    EXPECT_EQ(filesIn(""), 2) << "nothing is left beside";
    expectBadUsage({"", "one.tsv", "a b c", "--print", "--print a b c", "--fast a b"});
    EXPECT_EQ(run({"--help"}), 0);
}

}  // namespace
}  // namespace kestrel::mkindex
