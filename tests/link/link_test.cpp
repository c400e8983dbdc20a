// The link where no simulated run looks: which files serve which boards, the lamps, the bounds of its tables, and pages
// that make mistakes. What goes over the line and when is seen there, against a model of it.
#include <gtest/gtest.h>

#include <functional>

#include "language/language_files.h"
#include "link/frames.h"
#include "link/index_files.h"
#include "link/link_engine.h"
#include "link/loaded_pages.h"
#include "link/param_table.h"
#include "link/recheck.h"
#include "link_bench.h"
#include "platform/errors.h"

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
            bench.platform.files.erase((bench.platform.directory / row.file).generic_string());
        else
            bench.platform.put(row.file, std::string(row.records * recordSize, '\0'));
        EXPECT_EQ(bench.endOfLoad(), row.text) << row.file;
        EXPECT_TRUE(row.records != 32767 || RecordCount(0) == 32767);
    }
}

TEST(Link, AFrameGoesToNoOtherBoardWhenAPageHasMovedTheBankUnderIt) {
    for (const bool pendingThere : {true, false}) {
        LinkBench bench;
        bench.replies["0.2?"] = "bg";
        bench.board = {{{0, 2}, 1000}, {{1, 2}, 2000}};
        bench.start();
        Watch(0, 2);
        bench.run(42);
        CurrentBank = 1;
        if (pendingThere) ParamWatch(2);
        bench.run(9);
        EXPECT_EQ(bench.sent(), (Strings{"0.2?"}));
        EXPECT_FALSE(ParamIsFresh(2, 1));
        EXPECT_EQ(ParamFlags(0, 2), 6) << "the record that was asked for is asked for again";
        EXPECT_TRUE(Link().LinkIdle);
    }
}

constexpr std::size_t IdentityQuestions = 7 + 6 + 6;  // of the master and the two boards behind it

TEST(Link, TheNoticeGoesWhenThePortIsBackThoughNothingIsAskedForAnyMore) {
    for (const bool exchangeWasOpen : {false, true}) {
        LinkBench bench;
        bench.start();
        bench.replies["0.1?"] = "s";
        if (exchangeWasOpen) Watch(0, 1);
        bench.run(100);
        bench.unplug();
        if (exchangeWasOpen) ParamRelease(1);
        bench.run(3000);
        EXPECT_EQ(LinkBench::notice(), "Check serial interface ");
        bench.plug();
        bench.run(3000);
        EXPECT_EQ(LinkBench::notice(), "");
        EXPECT_TRUE(bench.platform.portOpen());
        EXPECT_EQ(bench.line.sent.size(), (exchangeWasOpen ? 1U : 0U) + IdentityQuestions);
    }
}

TEST(Mirror, NothingOutsideTheTableIsTouched) {
    const Session session;
    SetBoardPresent(0, true);
    struct Place {
        int bank, index;
    };
    for (const auto [bank, index] : {Place{0, -1}, Place{0, 33001}, Place{-1, 1}, Place{3, 1}}) {
        CurrentBank = bank;
        EXPECT_THROW(ParamWatch(index), ProgrammingError) << bank << " " << index;
        EXPECT_THROW(ParamRelease(index), ProgrammingError) << bank << " " << index;
        EXPECT_THROW(ParamWrite(index, 1), ProgrammingError) << bank << " " << index;
        EXPECT_THROW(ParamWithdraw(index), ProgrammingError) << bank << " " << index;
        EXPECT_THROW(ParamRead(index, bank), ProgrammingError) << bank << " " << index;
        EXPECT_THROW(ParamIsFresh(index, bank), ProgrammingError) << bank << " " << index;
        EXPECT_THROW(IdentTable(bank, index), RunTimeError) << bank << " " << index;
    }
    for (const int bank : {-1, 3}) EXPECT_THROW(BoardAddress(bank), ProgrammingError);
    EXPECT_THROW(IdentTable(0, 21), RunTimeError);
    CurrentBank = 2;
    ParamTable(2, 33000).Command = 3;
    ParamWrite(33000, 0xFFFFFFFF);
    EXPECT_EQ(ParamRead(33000, 2), 4294967295) << "the last record of the last bank";
    SetBoardPresent(2, true);
    ParamTable(2, 1).Watchers = 255;
    EXPECT_THROW(ParamWatch(1), RunTimeError) << "one more would count as none";
}

TEST(Mirror, AWriteThatIsHeldIsTakenBackAsWell) {
    const Session session;
    SetBoardPresent(0, true);
    ParamWrite(7, 5);
    HoldWrite(0, 7);
    ParamWrite(8, 5);
    HoldWrite(0, 8);
    ParamWithdraw(7);
    EXPECT_FALSE(IsHeld(0, 7));
    EXPECT_TRUE(IsHeld(0, 8));
}

class Listener : public Page {
  public:
    Listener(std::string name, Strings& log) : Page(std::move(name)), log_(log) {}
    std::function<void()> act;
    Layout Arrange() override { return Column{}; }
    void Form_Unload() override { log_.push_back(name() + " unloaded"); }
    void SLabel_Change(int n, ParamValue value) override {
        log_.push_back(name() + " " + std::to_string(CurrentBank) + "." + std::to_string(n) + "=" +
                       std::to_string(value));
        if (act) act();
    }

    bool isUpdating() const { return Updating; }
    void keep() { keepUpdating(); }

  private:
    Strings& log_;
};

class FanOutTest : public ::testing::Test {
  protected:
    Listener& open(const std::string& name) {
        return dynamic_cast<Listener&>(LoadPage(std::make_unique<Listener>(name, log)));
    }
    Strings log;
    LinkBench bench;
};

TEST_F(FanOutTest, AnErrorInOnePageLeavesTheOthersAndTheLinkAndNothingIsToldOfBadRepliesAndSilence) {
    ::testing::internal::CaptureStderr();
    open("A").act = [] { throw RunTimeError(error_number::Overflow, "Overflow"); };
    open("B");
    bench.start();
    bench.replies = {{"0.2?", "b"}, {"1.1?", "s"}};
    Watch(1, 1);
    for (const int number : {1, 2, 3}) Watch(0, number);
    bench.run(3000);
    EXPECT_EQ(log, (Strings{"A 0.1=0", "B 0.1=0", "A 0.3=0", "B 0.3=0"}));
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "kestrel: A, parameter 0.1 = 0: Overflow\n");
}

TEST_F(FanOutTest, AMistakeOfTheProgramsOwnInOnePageEndsTheRun) {
    ControlArray<Label, 2> labels;
    const std::function<void()> mistakes[] = {
        [&] { labels[2].Caption = "beyond"; }, [&] { labels[-1].Caption = "before"; },   [] { ParamWrite(0, 1); },
        [] { ParamRead(ParamRecords, 0); },    [] { LanguageTable(LanguageLines + 1); }, [] { BoardAddress(3); }};
    Listener& page = open("A");
    bench.start();
    for (const auto& mistake : mistakes) {
        page.act = mistake;
        EXPECT_THROW(page.notify(1, 0), ProgrammingError);
    }
}

TEST_F(FanOutTest, WhatAPageShowsIsTakenForNoChangeOfTheUserWhateverEndsItUnlessThePageKeepsItSo) {
    Listener& page = open("A");
    bench.start();
    const std::pair<std::function<void()>, bool> rows[] = {
        {[] {}, false},
        {[] { throw RunTimeError(error_number::Overflow, "Overflow"); }, false},
        {[] { throw ProgrammingError("of our own"); }, false},
        {[&] { page.keep(); }, true},
        {[] {}, false}};
    for (const auto& [act, keeps] : rows) {
        bool shows = false;
        page.act = [&, run = act] {
            shows = page.isUpdating();
            run();
        };
        try {
            page.notify(1, 0);
        } catch (const ProgrammingError&) {  // the run would end here
        }
        EXPECT_TRUE(shows);
        EXPECT_EQ(page.isUpdating(), keeps);
    }
}

}  // namespace
}  // namespace kestrel::testing
