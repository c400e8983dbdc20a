// The index files: which file is read for which board, and what becomes of its records.
// A mistake here and every value of a machine stands under a wrong number, or a new machine cannot be served.
#include "link/index_files.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "link/link_engine.h"
#include "link/param_table.h"
#include "link_bench.h"
#include "platform/trouble.h"

namespace kestrel::testing {
namespace {

class IndexFilesTest : public ::testing::Test {
  protected:
    /// Starts a program that must end, and gives what it said.
    std::string endedWith() {
        EXPECT_THROW(LinkBench::load(), ProcessEnded);
        if (bench.platform.messages.size() != 1) return "no message, or more than one";
        const Message& message = bench.platform.messages.front();
        EXPECT_EQ(message.title, "ERROR");
        EXPECT_EQ(message.icon, Message::Icon::Critical);
        return message.text;
    }
    void again() {
        LinkBench::reset();
        bench.platform.messages.clear();
        bench.putFiles();
    }
    void remove(const std::string& name) { bench.platform.files.erase((bench.platform.directory / name).string()); }
    LinkBench bench;
};

TEST_F(IndexFilesTest, NamesFollowFromWhatABoardReports) {
    struct Row {
        int type, software, release;
        const char* name;
    };
    for (const Row& row : {Row{256, 15, 3, "W0256AP03.inx"}, Row{0, 0, 0, "W0000AA00.inx"},
                           Row{12345, 25, 107, "W2345AZ07.inx"}, Row{7, 26, 99, "W0007A[99.inx"}})
        EXPECT_EQ(ParameterFileName(row.type, row.software, row.release), row.name);
}

TEST_F(IndexFilesTest, EveryByteOfARecordGoesToItsPlace) {
    const std::string eleven("\x03\x02\x83\x5F\x01\x11\x22\x33\x44", 9);
    bench.putFiles();
    bench.platform.put("W0256AP03.inx", std::string(9, '\1') + eleven + "partial");
    bench.putIdentityFile(1, 2);
    bench.platform.put("W0292.inx", bench.platform.file("W0292.inx") + "rest");
    bench.silent = {"i1.1?"};
    LinkBench::load();
    EXPECT_EQ(RecordCount(0), 2) << "a partial record is no record";
    EXPECT_EQ(RecordCount(1), 2);
    const ParamRecord& record = ParamTable(0, 2);
    EXPECT_EQ((Bytes{record.Addr2, record.Addr1, record.Command, record.Period, record.Addr0, record.Watchers}),
              (Bytes{3, 2, 0x83, 0x5F, 1, 0}));
    EXPECT_EQ(ParamRead(2, 0), 0x44332211) << "the preload is shown until the board answers";
    EXPECT_EQ(ParamFlags(0, 2), 0);
    EXPECT_EQ(ParamTable(0, 0).Addr0 + ParamTable(0, 3).Addr0, 0) << "neither record 0 nor the partial one is loaded";
}

TEST_F(IndexFilesTest, WhatIsMissingIsNamedAndEndsTheProgram) {
    struct Row {
        const char* missing;
        const char* text;
    };
    // Before the first board has told its type no parameter file has a name.
    for (const Row& row :
         {Row{"W0256.inx", " not found !"}, Row{"W0245.inx", " not found !"},
          Row{"W0256AP03.inx", "W0256AP03.inx not found !"}, Row{"W0245AB04.inx", "W0245AB04.inx not found !"}}) {
        again();
        remove(row.missing);
        EXPECT_EQ(endedWith(), row.text) << row.missing;
    }
}

TEST_F(IndexFilesTest, FilesThatAreTooLongEndTheProgramAndFitJustBelow) {
    bench.putFiles();
    bench.putIdentityFile(1, 21);
    EXPECT_EQ(endedWith(), " not found !") << "record 21 has no place";

    again();
    bench.platform.put("W0256AP03.inx", std::string(std::size_t{32768} * 9, '\0'));
    EXPECT_EQ(endedWith(), "W0256AP03.inx not found !");

    again();
    bench.platform.put("W0256AP03.inx", std::string(std::size_t{32767} * 9, '\0'));
    LinkBench::load();
    EXPECT_EQ(RecordCount(0), 32767);
    EXPECT_TRUE(bench.platform.messages.empty());
}

TEST_F(IndexFilesTest, AnEmptyFileIsABoardWithoutParametersAndTheOthersAreServed) {
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

TEST_F(IndexFilesTest, ABoardThatIsAbsentKeepsTheLengthOfItsIdentityFileAndAnEmptyTable) {
    bench.silent = {"i1.1?"};
    bench.start();
    EXPECT_FALSE(BoardPresent(1));
    EXPECT_EQ(RecordCount(1), 20);
    for (int index = 0; index < 30; ++index) EXPECT_EQ(ParamTable(1, index).Addr0, 0) << index;
    EXPECT_TRUE(BoardPresent(2)) << "the next board is asked all the same";
    EXPECT_EQ(RecordCount(2), 4);
    EXPECT_EQ(CurrentBank, 0);
    EXPECT_FALSE(Link().Timer2.Enabled);

    LinkBench::reset();
    bench.silent = {"i2.17?"};
    bench.start();
    EXPECT_EQ(LinkBench::lamp(4), 3) << "the time-out of an absent board leaves no error lamp on";
}

TEST_F(IndexFilesTest, AnotherInstallationIsServedByItsFilesAlone) {
    bench.putFiles();
    bench.identity[{2, 13}] = 0x39;  // type 12345, software 26, release 107
    bench.identity[{2, 14}] = 0x30;
    bench.identity[{2, 11}] = 26;
    bench.identity[{2, 17}] = 107;
    bench.rows[2] = {{0, 3}, {0x11, 0}, {0, 3, 9}, {}};
    bench.putParameterFile(2, "W2345A[07.inx");
    std::string other = bench.platform.file("W2345A[07.inx");
    other.replace(0, 5, std::string("\x77\x10\x03\x02\x63", 5));  // address 77 10 63, four bytes, repeated without end
    bench.platform.put("W2345A[07.inx", other);
    LinkBench::load();
    bench.line.sent.clear();
    Watch(2, 1);
    bench.run(100);
    ASSERT_EQ(bench.line.sent.size(), 1U);
    EXPECT_EQ(bench.line.sent[0].frame, (Bytes{0xF1, 0x63, 0x10, 0x77, 0x03, 0x56, 0x34}));
    Write(2, 2, 500);
    bench.run(400);
    const Strings sent = bench.sent();
    EXPECT_EQ(std::count(sent.begin(), sent.end(), "2.2=244"), 1) << "a one-byte record, whatever was written";
    EXPECT_EQ(ParamRead(3, 2), 9);
}

}  // namespace
}  // namespace kestrel::testing
