// The index files: which file is read for which board, and what becomes of its records.
// A mistake here and every value of a machine stands under a wrong number, or a new machine cannot be served.
#include "link/index_files.h"

#include <gtest/gtest.h>

#include "link/link_engine.h"
#include "link/param_table.h"
#include "link_bench.h"

namespace kestrel::testing {
namespace {

TEST(IndexFiles, AnotherInstallationIsServedByItsFilesAloneAndEveryByteOfARecordGoesToItsPlace) {
    LinkBench bench;
    bench.identity[{2, 13}] = 0x39;  // type 12345, software 26, release 107
    bench.identity[{2, 14}] = 0x30;
    bench.identity[{2, 11}] = 26;
    bench.identity[{2, 17}] = 107;
    bench.platform.put("W2345A[07.inx", std::string(9, '\1') + "\x77\x10\x03\x0F\x63\x11\x22\x33\x44" + "partial");
    LinkBench::load();
    EXPECT_EQ(RecordCount(2), 2) << "a partial record is no record";
    const ParamRecord& record = ParamTable(2, 2);
    EXPECT_EQ((Bytes{record.Addr2, record.Addr1, record.Command, record.Period, record.Addr0, record.Watchers}),
              (Bytes{0x77, 0x10, 3, 0x0F, 0x63, 0}));
    EXPECT_EQ(ParamRead(2, 2), 0x44332211) << "the preload is shown until the board answers";
    EXPECT_EQ(ParamFlags(2, 2), 0);
    EXPECT_EQ(ParamTable(2, 0).Addr0 + ParamTable(2, 3).Addr0, 0) << "neither record 0 nor the partial one is loaded";
    // The last record of a file is never sent for, so one more is counted here.
    SetRecordCount(2, 3);
    bench.line.sent.clear();
    Watch(2, 2);
    bench.run(100);
    ASSERT_EQ(bench.line.sent.size(), 1U);
    EXPECT_EQ(bench.line.sent[0].frame, (Bytes{0xF1, 0x63, 0x10, 0x77, 0x03, 0x56, 0x34}));
}

TEST(IndexFiles, AFileThatIsMissingOrTooLongIsNamedAndEndsTheProgram) {
    struct Row {
        const char* file;
        std::size_t records;  ///< that it holds; 0: it is missing
        const char* text;
    };
    // Before the first board has told its type no parameter file has a name.
    for (const Row& row : {Row{"W0256.inx", 0, " not found !"}, Row{"W0245.inx", 0, " not found !"},
                           Row{"W0256AP03.inx", 0, "W0256AP03.inx not found !"},
                           Row{"W0245AB04.inx", 0, "W0245AB04.inx not found !"}, Row{"W0292.inx", 21, " not found !"},
                           Row{"W0256AP03.inx", 32768, "W0256AP03.inx not found !"}, Row{"W0256AP03.inx", 32767, ""}}) {
        LinkBench bench;
        const std::size_t recordSize = std::string_view(row.file).size() == 9 ? 5 : 9;
        if (row.records == 0)
            bench.platform.files.erase((bench.platform.directory / row.file).string());
        else
            bench.platform.put(row.file, std::string(row.records * recordSize, '\0'));
        EXPECT_EQ(bench.endOfLoad(), row.text) << row.file;
        EXPECT_TRUE(row.records != 32767 || RecordCount(0) == 32767);
    }
}

TEST(IndexFiles, AnEmptyFileIsABoardWithoutParametersAndTheOthersAreServed) {
    LinkBench bench;
    bench.rows[0].clear();
    bench.board[{1, 1}] = 321;
    bench.start();
    EXPECT_EQ(RecordCount(0), 0);
    Watch(1, 1);
    CurrentBank = 0;
    bench.run(500);
    EXPECT_EQ(bench.sent(), (Strings{"1.1?"}));
    EXPECT_EQ(ParamRead(1, 1), 321);
}

TEST(IndexFiles, ABoardThatIsAbsentKeepsTheLengthOfItsIdentityFileAndAnEmptyTable) {
    for (const int absent : {1, 2}) {
        LinkBench bench;
        bench.replies["i" + std::to_string(absent) + ".17?"] = "s";
        bench.start();
        EXPECT_FALSE(BoardPresent(absent));
        EXPECT_EQ(RecordCount(absent), 20);
        for (int index = 0; index < 30; ++index) EXPECT_EQ(ParamTable(absent, index).Addr0, 0) << index;
        EXPECT_TRUE(BoardPresent(3 - absent)) << "the next board is asked all the same";
        EXPECT_EQ(RecordCount(3 - absent), 4);
        EXPECT_EQ(CurrentBank, 0);
        EXPECT_FALSE(Link().Timer2.Enabled);
        EXPECT_EQ(LinkBench::lamp(4), 3) << "the time-out of an absent board leaves no error lamp on";
    }
}

}  // namespace
}  // namespace kestrel::testing
