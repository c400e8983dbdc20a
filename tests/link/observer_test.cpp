// What somebody who looks on is told of an exchange: monitors and logs know nothing else of it.
// Simulated runs look on too, but not at these words: they have the frames from the line itself.
#include "link/observer.h"

#include <gtest/gtest.h>

#include "link/link_engine.h"
#include "link/port_search.h"
#include "link_bench.h"

namespace kestrel::testing {
namespace {

class Log : public LinkObserver {
  public:
    Log() { SetObserver(this); }
    ~Log() override { SetObserver(nullptr); }

    std::string words;

    void searchingPort() override { words += " searching"; }
    void portOpened() override { words += " port"; }
    void askingIdentity() override { words += " who"; }
    void exchangeOpened() override { words += " open"; }
    void frameSent(const Bytes& frame) override { words += " " + LinkBench::tell(frame); }
    void frameLost(const Bytes& frame) override { words += " lost:" + LinkBench::tell(frame); }
    void replyJudged(const Bytes& reply, bool good) override {
        words += (good ? " good" : " bad") + std::to_string(reply.size());
    }
    void exchangeClosed() override { words += " closed"; }
    void recordStored(int index) override { words += " stored" + std::to_string(index); }
};

TEST(Observer, IsToldOfExchangesInTheirOrder) {
    struct Row {
        const char* replies;  ///< to record 1
        void (*act)(LinkBench&);
        const char* words;
    };
    for (const Row& row : {Row{"g", [](LinkBench&) { Watch(0, 1); }, " open 0.1? good3 stored1 closed"},
                           Row{"bg", [](LinkBench&) { Watch(0, 1); }, " open 0.1? bad3 0.1? good3 stored1 closed"},
                           Row{"s", [](LinkBench&) { Watch(0, 1); }, " open 0.1?"},
                           Row{"g", [](LinkBench&) { Write(0, 2, 9); }, " open 0.2=9 good1 stored2 closed"},
                           Row{"g",
                               [](LinkBench& bench) {
                                   Watch(0, 1);
                                   bench.line.there = false;
                                   Link().Comm1->PortOpen(false);
                                   LinkNextRecord();
                               },
                               " open lost:0.1?"},
                           Row{"g", [](LinkBench&) { OpenPort(1); },
                               " searching port who open i0.1? good2 closed who open i0.17? good2 closed"}}) {
        LinkBench bench;
        bench.start();
        bench.replies = {{"0.1?", row.replies}};
        Log log;
        row.act(bench);
        bench.run(70);
        EXPECT_EQ(log.words, row.words);
    }
}

}  // namespace
}  // namespace kestrel::testing
