// Tests of mkindex: what it refuses and where it says so, the bytes that it writes, and its printing.
// A mistake here would send a service tool to the wrong cell of a board's memory.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "tools/mkindex_command.h"
#include "tools/mkindex_format.h"

namespace kestrel::mkindex {
namespace {

namespace fs = std::filesystem;

const std::string parameterHeader = "number\tname\twidth\trefresh\taddress\tpreload\tmeaning\n";
const std::string identityHeader = "number\tname\twidth\trefresh\taddress\tmeaning\n";

Table tableOf(const std::string& text, Layout layout = Layout::Parameters) {
    std::istringstream in(text);
    return readTable(in, layout);
}

std::string allProblems(const Table& table) {
    std::string text;
    for (const Problem& problem : table.problems) text += std::to_string(problem.line) + ": " + problem.text + '\n';
    return text;
}

struct BadTable {
    const char* what;
    Layout layout;
    std::string rows;  // below the header, which is line 1
    std::string expected;
};

class MkindexRefuses : public testing::TestWithParam<BadTable> {};

TEST_P(MkindexRefuses, AndNamesTheLine) {
    const BadTable& bad = GetParam();
    const std::string& header = bad.layout == Layout::Identity ? identityHeader : parameterHeader;
    EXPECT_EQ(allProblems(tableOf(header + bad.rows, bad.layout)), bad.expected) << bad.what;
}

constexpr Layout params = Layout::Parameters;
constexpr Layout ident = Layout::Identity;

INSTANTIATE_TEST_SUITE_P(
    Mistakes, MkindexRefuses,
    testing::Values(
        BadTable{"a column lost", params, "1\ta\t1\t0\t000010\tm\n", "2: 7 columns are needed, this row has 6\n"},
        BadTable{"a parameter row in an identity table", ident, "1\ta\t1\t0\t000010\t0\tm\n",
                 "2: 6 columns are needed, this row has 7\n"},
        BadTable{"no number", params, "x\ta\t1\t0\t000010\t0\tm\n", "2: number \"x\" is neither N nor N..M\n"},
        BadTable{"a range that runs down", params, "5..4\ta[1..2]\t1\t0\t000010\t0\tm\n",
                 "2: number \"5..4\" is neither N nor N..M\n"},
        BadTable{"number 0 stands for nothing", params, "0\ta\t1\t0\t000010\t0\tm\n",
                 "2: number \"0\" is not within 1 to 32766\n"},
        BadTable{"a number whose file could not be loaded", params, "32767\ta\t1\t0\t000010\t0\tm\n",
                 "2: number \"32767\" is not within 1 to 32766\n"},
        BadTable{"a range of huge size", params, "1..2000000000\ta[1..2000000000]\t1\t0\t000010\t0\tm\n",
                 "2: number \"1..2000000000\" is not within 1 to 32766\n"},
        BadTable{"identity record 21", ident, "21\ta\t1\t0\t000010\tm\n", "2: number \"21\" is not within 1 to 20\n"},
        BadTable{"rows out of order", params, "7\ta\t1\t0\t000010\t0\tm\n# why not\n6\tb\t1\t0\t000011\t0\tm\n",
                 "4: number 6 does not come after 7\n"},
        BadTable{"a number twice, once in a range", params,
                 "1..4\ta[1..4]\t1\t0\t000010\t0\tm\n4\tb\t1\t0\t000020\t0\tm\n",
                 "3: number 4 does not come after 4\n"},
        BadTable{"a name twice", params, "1\ta\t1\t0\t000010\t0\tm\n2\ta\t1\t0\t000011\t0\tm\n",
                 "3: name \"a\" stands twice\n"},
        BadTable{"ranges that share a name", params,
                 "1..2\ta[1..2]\t1\t0\t000010\t0\tm\n3..4\ta[2..3]\t1\t0\t000020\t0\tm\n",
                 "3: name \"a[2]\" stands twice\n"},
        BadTable{"no name", params, "1\t\t1\t0\t000010\t0\tm\n",
                 "2: name \"\" may have only small letters, digits, underscores and dots\n"},
        BadTable{"a name with a blank", params, "1\tA b\t1\t0\t000010\t0\tm\n",
                 "2: name \"A b\" may have only small letters, digits, underscores and dots\n"},
        BadTable{"indices left open", params, "1..2\ta[1..2\t1\t0\t000010\t0\tm\n",
                 "2: name \"a[1..2\" does not end in indices like [1..8]\n"},
        BadTable{"fewer names than numbers", params, "1..3\ta[1..2]\t1\t0\t000010\t0\tm\n",
                 "2: name \"a[1..2]\" stands for 2 parameters, the row for 3\n"},
        BadTable{"a width that no board has", params, "1\ta\t3\t0\t000010\t0\tm\n",
                 "2: width \"3\" is not 1, 2 or 4\n"},
        BadTable{"a refresh above the nibble", params, "1\ta\t1\t16\t000010\t0\tm\n",
                 "2: refresh \"16\" is not within 0 to 15\n"},
        BadTable{"a negative refresh", params, "1\ta\t1\t-1\t000010\t0\tm\n",
                 "2: refresh \"-1\" is not within 0 to 15\n"},
        BadTable{"an address too short", params, "1\ta\t1\t0\t0010\t0\tm\n",
                 "2: address \"0010\" is not six hexadecimal digits\n"},
        BadTable{"an address with a prefix", params, "1\ta\t1\t0\t0x0010\t0\tm\n",
                 "2: address \"0x0010\" is not six hexadecimal digits\n"},
        BadTable{"beyond the last address", params, "1\ta\t2\t0\tFFFFFF\t0\tm\n",
                 "2: the addresses of a run beyond FFFFFF\n"},
        BadTable{"no room for the record behind the last", params, "1\ta\t1\t0\tFFFFFF\t0\tm\n",
                 "3: no addresses are left for the numbers without a row\n"},
        BadTable{"a preload too wide", params, "1\ta\t1\t0\t000010\t256\tm\n",
                 "2: preload \"256\" is not within 0 to 255\n"},
        BadTable{"a preload beyond four bytes", params, "1\ta\t4\t0\t000010\t4294967296\tm\n",
                 "2: preload \"4294967296\" is not within 0 to 4294967295\n"},
        BadTable{"a preload missing", params, "1..3\ta[1..3]\t1\t0\t000010\t1,2\tm\n",
                 "2: there are 2 preloads for 3 parameters\n"},
        BadTable{"the second byte of a value lies in the next", params,
                 "1\ta\t2\t0\t000010\t0\tm\n2\tb\t1\t0\t000011\t0\tm\n",
                 "3: the addresses of b overlap those of a in line 2 from 000011 on\n"},
        BadTable{"a later row lies inside an earlier, larger one", params,
                 "1\ta\t1\t0\t000010\t0\tm\n2..9\tb[1..8]\t4\t0\t000020\t0\tm\n10\tc\t1\t0\t000022\t0\tm\n11\td\t1\t0\t"
                 "00003F\t0\tm\n",
                 "4: the addresses of c overlap those of b[1..8] in line 3 from 000022 on\n"
                 "5: the addresses of d overlap those of b[1..8] in line 3 from 00003F on\n"},
        BadTable{"every mistake at once", params, "1\ta\t3\t99\tzz\t0\tm\n",
                 "2: width \"3\" is not 1, 2 or 4\n2: refresh \"99\" is not within 0 to 15\n"
                 "2: address \"zz\" is not six hexadecimal digits\n"},
        BadTable{"nothing below the header", params, "# to come\n", "3: the table has no rows\n"}),
    [](const auto& tested) { return "case" + std::to_string(tested.index); });

TEST(MkindexTable, RangesBecomeParametersOneBehindAnother) {
    const Table table = tableOf("# made on another system\r\n\r\n" + parameterHeader +
                                "2..4\tcoin[1..3]\t2\t0\t0A20FE\t5,10,65535\tvalues\r\n"
                                "5..6\tlamp[0..1]\t1\t9\t0A2104\t7\tone preload for both\r\n");
    ASSERT_EQ(allProblems(table), "");
    ASSERT_EQ(table.records.size(), 7U);
    const Record& third = table.records[3];
    EXPECT_EQ(third.number, 4);
    EXPECT_EQ(third.name, "coin[3]");
    EXPECT_EQ(third.address, 0x0A2102U);
    EXPECT_EQ(third.preload, 65535U);
    EXPECT_EQ(third.width(), 2);
    const Record& lamp = table.records[5];
    EXPECT_EQ(lamp.name, "lamp[1]");
    EXPECT_EQ(lamp.address, 0x0A2105U);
    EXPECT_EQ(lamp.preload, 7U);
    EXPECT_EQ(lamp.refresh, 9);
}

// A page may watch or write a number that the board does not have: that must never reach a cell that is in use.
TEST(MkindexTable, UnusedNumbersTouchNoParameter) {
    const Table table = tableOf(parameterHeader + "3\ta\t4\t1\t000100\t9\tm\n6\tb\t1\t1\t000020\t9\tm\n");
    ASSERT_EQ(allProblems(table), "");
    ASSERT_EQ(table.records.size(), 7U) << "one record follows the last number";
    std::vector<std::uint32_t> addresses;
    for (const int number : {1, 2, 4, 5, 7}) {
        const Record& unused = table.records[static_cast<std::size_t>(number - 1)];
        EXPECT_EQ(unused.number, number);
        EXPECT_EQ(unused.width(), 1);
        EXPECT_EQ(unused.refresh, 0);
        EXPECT_GE(unused.address, 0x104U);
        addresses.push_back(unused.address);
    }
    std::sort(addresses.begin(), addresses.end());
    EXPECT_EQ(std::adjacent_find(addresses.begin(), addresses.end()), addresses.end());
}

// The bytes as the boards' makers fixed them: addresses 2 and 1, command, refresh, address 0, then the value low first.
TEST(MkindexFile, HasTheBytesOfItsLayout) {
    const Table parameters = tableOf(parameterHeader + "1\ta\t4\t12\tA2B1C0\t67305985\tm\n");
    EXPECT_EQ(encode(parameters.records, Layout::Parameters).substr(0, 9),
              std::string("\xA2\xB1\x03\x0C\xC0\x01\x02\x03\x04", 9));
    const Table identity = tableOf(identityHeader + "20\ta\t1\t0\t123456\tm\n", Layout::Identity);
    const std::string bytes = encode(identity.records, Layout::Identity);
    EXPECT_EQ(bytes.size(), 20U * 5);
    EXPECT_EQ(bytes.substr(95), std::string("\x12\x34\x00\x00\x56", 5));
}

TEST(MkindexPrint, RemarksOnWhatNoTableCanSay) {
    const std::string bytes("\x01\x02\x7F\x33\x04\x01\x00\x00\x00\x00\x00\x01\x04\x05\x00\x00\x00\x80\xEE\xEE", 20);
    std::ostringstream out;
    print(out, bytes, Layout::Parameters, {{2, "known"}});
    EXPECT_EQ(out.str(),
              "number\tname\twidth\trefresh\taddress\tpreload\n"
              "1\t-\t16\t3\t010204\t1\t# command byte 7F refresh byte 33\n"
              "2\tknown\t2\t4\t000005\t2147483648\n"
              "# 2 more bytes are no whole record\n");
}

class MkindexCommand : public testing::Test {
  protected:
    MkindexCommand()
        : directory_(fs::temp_directory_path() /
                     (std::string("mkindex_") + testing::UnitTest::GetInstance()->current_test_info()->name())) {
        fs::remove_all(directory_);
        fs::create_directories(directory_);
    }
    ~MkindexCommand() override { fs::remove_all(directory_); }

    std::string path(const std::string& name) const { return (directory_ / name).string(); }

    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream(path(name), std::ios::binary) << text;
        return path(name);
    }

    std::string read(const std::string& name) const {
        std::ifstream in(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    int mkindex(const std::vector<std::string>& arguments) {
        out_.str("");
        err_.str("");
        return run(arguments, out_, err_);
    }

    fs::path directory_;
    std::ostringstream out_, err_;
};

TEST_F(MkindexCommand, MadeFilesPrintBackWithTheirNames) {
    const std::string rows =
        parameterHeader + "1..2\tprice[1..2]\t2\t0\t0A2034\t50,65535\tmoney\n3\tstate\t1\t5\t000480\t4\tm\n";
    const std::string table = write("any.tsv", rows);
    ASSERT_EQ(mkindex({table, path("W0256AP03.inx")}), 0) << err_.str();
    EXPECT_EQ(read("W0256AP03.inx").size(), 4U * 9);
    ASSERT_EQ(mkindex({"--print", path("W0256AP03.inx"), table}), 0);
    EXPECT_EQ(out_.str(),
              "number\tname\twidth\trefresh\taddress\tpreload\n"
              "1\tprice[1]\t2\t0\t0A2034\t50\n2\tprice[2]\t2\t0\t0A2036\t65535\n3\tstate\t1\t5\t000480\t4\n"
              "4\t-\t1\t0\t0A2038\t0\n");
    ASSERT_EQ(mkindex({"--print", path("W0256AP03.inx")}), 0);
    EXPECT_EQ(out_.str().find("price"), std::string::npos);
}

TEST_F(MkindexCommand, NameOrOptionChoosesTheLayout) {
    const std::string table = write("identity.tsv", identityHeader + "1\tprobe\t1\t0\t0FF000\tm\n");
    EXPECT_EQ(mkindex({table, path("W0256.inx")}), 0) << err_.str();
    EXPECT_EQ(mkindex({table, path("other.inx")}), 1) << "a parameter file by its name";
    EXPECT_EQ(mkindex({"--identity", table, path("other.inx")}), 0) << err_.str();
    EXPECT_EQ(read("other.inx"), read("W0256.inx"));
    EXPECT_EQ(mkindex({"--parameters", table, path("W0256.inx")}), 1);
}

TEST_F(MkindexCommand, ABadTableLeavesTheOldFile) {
    const std::string table =
        write("bad.tsv", parameterHeader + "1\ta\t1\t0\t000010\t0\tm\n2\ta\t1\t0\t000011\t0\tm\n");
    write("W0256AP03.inx", "old");
    EXPECT_EQ(mkindex({table, path("W0256AP03.inx")}), 1);
    EXPECT_EQ(err_.str(), table + ":3: name \"a\" stands twice\n");
    EXPECT_EQ(read("W0256AP03.inx"), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(directory_), fs::directory_iterator()), 2) << "nothing left beside";
}

TEST_F(MkindexCommand, FilesThatCannotBeReadOrWritten) {
    const std::string table = write("good.tsv", parameterHeader + "1\ta\t1\t0\t000010\t0\tm\n");
    fs::create_directories(path("folder.inx"));
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{path("missing.tsv"), path("a.inx")},
                                                      {path(""), path("a.inx")},
                                                      {table, path("no/such/folder/a.inx")},
                                                      {table, path("folder.inx")},
                                                      {"--print", path("missing.inx")},
                                                      {"--print", path("folder.inx")}}) {
        EXPECT_EQ(mkindex(arguments), 1) << arguments.back();
        EXPECT_NE(err_.str().find("cannot be"), std::string::npos) << arguments.back();
    }
}

TEST_F(MkindexCommand, ABadCommandLineIsTold) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{},
                                                      {"one.tsv"},
                                                      {"a", "b", "c"},
                                                      {"--print"},
                                                      {"--print", "a", "b", "c"},
                                                      {"--fast", "a", "b"}}) {
        EXPECT_EQ(mkindex(arguments), 2);
        EXPECT_NE(err_.str().find("usage:"), std::string::npos);
        EXPECT_EQ(out_.str(), "");
    }
    EXPECT_EQ(mkindex({"--help"}), 0);
    EXPECT_EQ(err_.str(), "");
}

}  // namespace
}  // namespace kestrel::mkindex
