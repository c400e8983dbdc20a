// Every received value to every loaded page, and the small routines that show it.
// A mistake here and a page shows another board's value, or one page's trouble blinds the others.
#include "link/loaded_pages.h"

#include <gtest/gtest.h>

#include <functional>

#include "language/language_files.h"
#include "link/frames.h"
#include "link/value_helpers.h"
#include "link_bench.h"
#include "platform/errors.h"

namespace kestrel::testing {
namespace {

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

TEST_F(FanOutTest, EveryAcceptedReplyReachesEveryPageInOrderAndSameValuesCountAgain) {
    const Page& first = open("A");
    open("B");
    bench.rows[2][0] = {0, 3, 0};
    bench.board = {{{2, 1}, 4000000000}};
    bench.start();
    Watch(2, 1);
    bench.run(200);
    Watch(2, 1);
    bench.run(200);
    Write(1, 2, 70000);
    bench.run(200);
    EXPECT_EQ(log, (Strings{"A 2.1=4000000000", "B 2.1=4000000000", "A 2.1=4000000000", "B 2.1=4000000000",
                            "A 1.2=4464", "B 1.2=4464"}));
    EXPECT_EQ(first.arrivals(), 3);
}

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

TEST_F(FanOutTest, APageThatMovesTheBankMovesItForThePagesAfterIt) {
    open("A").act = [] { Watch(2, 3); };
    open("B");
    bench.start();
    Watch(0, 1);
    bench.run(46);
    EXPECT_EQ(log, (Strings{"A 0.1=0", "B 2.1=0"}));
}

TEST_F(FanOutTest, PagesOpenAndCloseBetweenReplies) {
    Listener& first = open("A");
    open("B");
    bench.start();
    Watch(0, 1);
    Watch(0, 2);
    bench.run(50);
    first.UserClose();
    open("C");
    EXPECT_EQ(FindLoadedPage("A"), nullptr);
    EXPECT_EQ(LoadedPages().size(), 2U);
    bench.run(200);
    EXPECT_EQ(log, (Strings{"A 0.1=0", "B 0.1=0", "A unloaded", "B 0.2=0", "C 0.2=0"}));
}

TEST_F(FanOutTest, APageStandsInTheMiddleALittleAbove) {
    Listener& page = open("A");  // 6000 x 4000 twips in a window of 15000 x 11000
    CenterPage(page);
    EXPECT_EQ(page.Top, 2775);
    EXPECT_EQ(page.Left, 4420);
}

}  // namespace
}  // namespace kestrel::testing
