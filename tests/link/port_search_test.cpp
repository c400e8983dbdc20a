// Finding the port that a board stands behind.
// A mistake here and the technician gets "unavailable" with a working cable, or the menu lies about the port in use.
#include "link/port_search.h"

#include <gtest/gtest.h>

#include "link/link_engine.h"
#include "link_bench.h"
#include "platform/errors.h"

namespace kestrel::testing {
namespace {

const Pieces Good = {{2000, {0x41, 0x41}}};

/// The bench's own board is on port 1 for the start, and gone when the search begins.
struct SearchBench : LinkBench {
    std::array<ScriptedLine, 5> devices;
    std::vector<int> probed;

    /// A device on the port whose probe is answered so; nothing means silence.
    void device(int port, const Pieces& reply) {
        ScriptedLine& device = devices[static_cast<std::size_t>(port)];
        device.answer = [this, port, reply](const Bytes& frame) {
            if (frame != Bytes(5, 0)) return answer(frame);
            probed.push_back(port);
            return reply;
        };
        platform.lines[port] = &device;
    }
    void search(int port) {
        if (!Link().Timer1.Enabled) start();
        for (int i = 1; i <= 4; ++i)
            if (!platform.lines.contains(i) || i == 1) device(i, {});
        OpenPort(port);
    }
    static std::string menu() {
        std::string states;
        for (int i = 1; i <= 4; ++i) states += portEntry(i).Checked ? "x" : portEntry(i).Enabled ? "o" : "-";
        return states;
    }
};

TEST(PortSearch, GoesUpwardFromTheWantedPortAndThenFromTheFirst) {
    struct Row {
        int wanted, working;
        std::vector<int> probed;
        const char* menu;
    };
    for (const Row& row : {Row{3, 3, {3}, "ooxo"}, Row{3, 4, {3, 4}, "oo-x"}, Row{3, 2, {3, 4, 1, 2}, "-x--"},
                           Row{2, 2, {2}, "oxoo"}, Row{4, 3, {4, 1, 2, 3}, "--x-"}}) {
        SearchBench bench;
        bench.device(row.working, Good);
        bench.search(row.wanted);
        EXPECT_EQ(bench.probed, row.probed);
        EXPECT_EQ(bench.menu(), row.menu);
        EXPECT_EQ(Link().ComPort, row.working);
        EXPECT_EQ(LinkBench::portEntry(row.working).Detail.get(), "/dev/port" + std::to_string(row.working));
        EXPECT_TRUE(bench.platform.messages.empty());
        EXPECT_TRUE(bench.platform.written.empty()) << "the winner is not saved";
    }
}

TEST(PortSearch, OnlyTwoEqualBytesWithinHalfASecondAreABoard) {
    struct Row {
        Pieces reply;
        bool board;
    };
    for (const Row& row : {Row{Good, true}, Row{{{1000, {0}}, {499'000, {0}}}, true}, Row{{{501'000, {1, 1}}}, false},
                           Row{{{1000, {1}}}, false}, Row{{{1000, {1, 2}}}, false}, Row{{{1000, {1, 1, 1}}}, false}}) {
        SearchBench bench;
        bench.device(2, row.reply);
        bench.device(3, Good);
        bench.search(2);
        EXPECT_EQ(Link().ComPort, row.board ? 2 : 3);
        EXPECT_EQ(LinkBench::portEntry(2).Detail.get(), row.board ? "/dev/port2" : "/dev/port2: no board answers");
    }
}

TEST(PortSearch, APortThatGoesAwayInItsProbeKeepsNoOtherFromBeingTried) {
    SearchBench bench;
    bench.device(3, Good);
    bench.device(2, {});
    bench.devices[2].answer = [&](const Bytes&) {
        bench.devices[2].there = false;
        return Pieces{};
    };
    bench.search(2);
    EXPECT_EQ(bench.probed, std::vector{3});
    EXPECT_EQ(bench.menu(), "o-xo");
    bench.run(2000);
    EXPECT_TRUE(bench.platform.portOpen());
    EXPECT_EQ(LinkBench::notice(), "") << "the loss of a port that was left is nobody's";
}

TEST(PortSearch, WithoutAnyPortEachIsTriedTwiceAndTheReasonsAreShown) {
    for (const bool lastIsForbidden : {true, false}) {
        SearchBench bench;
        if (lastIsForbidden)
            bench.platform.openFailures[4] = {error_number::SerialNoPermission, "/dev/port4: no permission"};
        EXPECT_THROW(bench.search(2), ProcessEnded);
        EXPECT_EQ(bench.probed, (lastIsForbidden ? std::vector{2, 3, 1, 2, 3} : std::vector{2, 3, 4, 1, 2, 3, 4}));
        EXPECT_EQ(bench.menu(), "----");
        ASSERT_EQ(bench.platform.messages.size(), 1U);
        const Message& message = bench.platform.messages[0];
        EXPECT_EQ(message.title, lastIsForbidden ? "ERROR  8010" : "ERROR  68") << "the number of the last failure";
        EXPECT_EQ(message.text, "Check serial !\nSerial device unavailable\nor Board Not Ready");
        EXPECT_EQ(message.icon, Message::Icon::Critical);
        EXPECT_TRUE(message.isAboutTheLine);
        EXPECT_EQ(message.detail, std::string("/dev/port1: no board answers\n/dev/port2: no board answers\n"
                                              "/dev/port3: no board answers\n/dev/port4: ") +
                                      (lastIsForbidden ? "no permission" : "no board answers"));
    }
}

TEST(PortSearch, NothingGoesIntoThePortTriedLastWhileTheBoxStands) {
    SearchBench bench;
    bench.start();
    Write(0, 1, 9);
    Watch(0, 1);
    bench.platform.whileMessageIsOpen = [&] {
        EXPECT_FALSE(bench.platform.portOpen());
        bench.run(5000);
    };
    EXPECT_THROW(bench.search(2), ProcessEnded);
    EXPECT_EQ(bench.probed.size(), 7U) << "and no other frame";
}

}  // namespace
}  // namespace kestrel::testing
