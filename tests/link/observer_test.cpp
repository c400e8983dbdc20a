// What somebody who looks on is told of the link: simulated runs, monitors and logs know nothing else of it.
// A word that is missing or in the wrong place, and a check passes over what it should see.
#include "link/observer.h"

#include <gtest/gtest.h>

#include <functional>

#include "link/link_engine.h"
#include "link/loaded_pages.h"
#include "link/port_search.h"
#include "link_bench.h"

namespace kestrel::testing {
namespace {

class Log : public LinkObserver {
  public:
    Log() { SetObserver(this); }
    ~Log() override { SetObserver(nullptr); }

    std::string words;

    void searchingPort() override { add("searching"); }
    void portOpened() override { add("port"); }
    void readingIndexFiles() override { add("files"); }
    void askingIdentity() override { add("who"); }
    void exchangeOpened() override { add("open"); }
    void frameSent(const Bytes& frame) override { add(LinkBench::tell(frame)); }
    void frameLost(const Bytes& frame) override { add("lost:" + LinkBench::tell(frame)); }
    void replyJudged(const Bytes& reply, bool good) override {
        add((good ? "good" : "bad") + std::to_string(reply.size()));
    }
    void exchangeClosed() override { add("closed"); }
    void recordStored(int index) override { add("stored" + std::to_string(index)); }
    void recordWatched(int index) override { add("watch" + std::to_string(index)); }
    void recordReleased(int index) override { add("release" + std::to_string(index)); }
    void recordWritten(int index, std::uint32_t value) override {
        add("write" + std::to_string(index) + "=" + std::to_string(value));
    }
    void withdrawingRecord(int index) override { add("withdraw" + std::to_string(index)); }
    void loadingPage(const Page& page) override { add("page" + page.name()); }
    void tellingPage(const Page& page, int index, ParamValue value) override {
        add("tell" + page.name() + std::to_string(index) + "=" + std::to_string(value));
    }
    void pageTold(const Page& page) override { add("told" + page.name()); }

  private:
    void add(const std::string& word) { words += (words.empty() ? "" : " ") + word; }
};

class Quiet : public Page {
  public:
    using Page::Page;
    Layout Arrange() override { return Column{}; }
    void SLabel_Change(int /*n*/, ParamValue /*value*/) override {}
};

TEST(Observer, IsToldWhatTheLinkDoesInItsOrder) {
    struct Row {
        const char* replies;  ///< to the read of record 1
        std::function<void(LinkBench&)> act;
        const char* words;
    };
    const Row rows[] = {
        {"g", [](LinkBench&) { Watch(0, 1); }, "watch1 open 0.1? good3 stored1 tellA1=5 toldA closed"},
        {"bg", [](LinkBench&) { Watch(0, 1); }, "watch1 open 0.1? bad3 0.1? good3 stored1 tellA1=5 toldA closed"},
        {"bbbbb", [](LinkBench&) { Watch(0, 1); },
         "watch1 open 0.1? bad3 0.1? bad3 0.1? bad3 0.1? bad3 0.1? bad3 closed"},
        {"s", [](LinkBench&) { Watch(0, 1); }, "watch1 open 0.1?"},
        {"g", [](LinkBench&) { Write(0, 2, 9); }, "write2=9 open 0.2=9 good1 stored2 tellA2=9 toldA closed"},
        {"g",
         [](LinkBench&) {
             Write(0, 2, 9);
             ParamWithdraw(2);
             ParamRelease(2);
         },
         "write2=9 withdraw2 release2 open 0.2? good3 stored2 tellA2=0 toldA closed"},
        {"g",
         [](LinkBench& bench) {
             Watch(0, 1);
             bench.line.there = false;
             Link().Comm1->PortOpen(false);
             LinkNextRecord();
         },
         "watch1 open lost:0.1?"},
        {"g", [](LinkBench&) { OpenPort(1); },
         "searching port who open i0.1? good2 closed who open i0.17? good2 closed"},
    };
    for (const Row& row : rows) {
        LinkBench bench;
        bench.board = {{{0, 1}, 5}};
        bench.start();
        bench.replies = {{"0.1?", row.replies}};
        LoadPage(std::make_unique<Quiet>("A"));
        Log log;
        row.act(bench);
        bench.run(70);
        EXPECT_EQ(log.words, row.words);
    }
}

TEST(Observer, HearsTheStartAndAPageThatIsLoaded) {
    LinkBench bench;
    bench.putFiles();
    Log log;
    LinkBench::load();
    EXPECT_TRUE(log.words.starts_with("searching port files who open i0.1? good2 closed who open i0.17? good2 closed"))
        << log.words;
    log.words.clear();
    LoadPage(std::make_unique<Quiet>("A"));
    EXPECT_EQ(log.words, "pageA");
}

}  // namespace
}  // namespace kestrel::testing
