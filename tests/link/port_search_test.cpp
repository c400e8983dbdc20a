// Finding the port that a board stands behind.
// A mistake here and the technician gets "unavailable" with a working cable, or the menu lies about the port in use.
#include "link/port_search.h"

#include <gtest/gtest.h>

#include "link/index_files.h"
#include "link/link_engine.h"
#include "link/param_table.h"
#include "link_bench.h"
#include "platform/trouble.h"

namespace kestrel::testing {
namespace {

class PortSearchTest : public ::testing::Test {
  protected:
    /// A device on the port whose probe is answered so; nothing means silence.
    void device(int port, const std::vector<ScriptedLine::Piece>& reply) {
        bench.platform.lines[port] = &devices[static_cast<std::size_t>(port)];
        devices[static_cast<std::size_t>(port)].answer = [this, port, reply](const Bytes& frame) {
            EXPECT_EQ(frame, Bytes(5, 0));
            probed.push_back(port);
            return reply;
        };
    }
    void configured(const std::string& line) { bench.platform.put("kestrel.ini", line + "\r\nLingua=Italiano\r\n"); }
    void search(int port = 0) {
        bench.start();  // sets up the menu and the link with the bench's own board on port 1
        for (int i = 1; i <= 4; ++i)
            if (!bench.platform.lines.contains(i) || i == 1) device(i, {});
        OpenPort(port);
    }
    static std::string menu() {
        std::string states;
        for (int i = 1; i <= 4; ++i) {
            const MenuItem& entry = LinkBench::portEntry(i);
            states += entry.Checked ? "x" : entry.Enabled ? "o" : "-";
        }
        return states;
    }
    LinkBench bench;
    std::array<ScriptedLine, 5> devices;
    std::vector<int> probed;
};

const std::vector<ScriptedLine::Piece> Good = {{2000, {0x41, 0x41}}};

TEST_F(PortSearchTest, GoesUpwardFromTheWantedPortAndThenFromTheFirst) {
    struct Row {
        int wanted, working;
        std::vector<int> probed;
        const char* menu;
    };
    for (const Row& row : {Row{3, 3, {3}, "ooxo"}, Row{3, 4, {3, 4}, "oo-x"}, Row{3, 2, {3, 4, 1, 2}, "-x--"},
                           Row{2, 2, {2}, "oxoo"}, Row{4, 3, {4, 1, 2, 3}, "--x-"}}) {
        LinkBench::reset();
        bench.platform.lines = {{1, &bench.line}};
        configured("Com=1");
        device(row.working, Good);
        probed.clear();
        search(row.wanted);
        EXPECT_EQ(probed, row.probed);
        EXPECT_EQ(menu(), row.menu);
        EXPECT_EQ(Link().ComPort, row.working);
        EXPECT_EQ(LinkBench::portEntry(row.working).Detail.get(), "/dev/port" + std::to_string(row.working));
        EXPECT_TRUE(bench.platform.messages.empty());
        EXPECT_EQ(bench.platform.file("kestrel.ini"), "Com=1\r\nLingua=Italiano\r\n") << "the winner is not saved";
    }
}

TEST_F(PortSearchTest, OnlyTwoEqualBytesWithinHalfASecondAreABoard) {
    struct Row {
        std::vector<ScriptedLine::Piece> reply;
        bool board;
    };
    for (const Row& row : {Row{Good, true}, Row{{{1000, {0}}, {499'000, {0}}}, true}, Row{{{501'000, {1, 1}}}, false},
                           Row{{{1000, {1}}}, false}, Row{{{1000, {1, 2}}}, false}, Row{{{1000, {1, 1, 1}}}, false}}) {
        LinkBench::reset();
        bench.platform.lines = {{1, &bench.line}};
        device(2, row.reply);
        device(3, Good);
        search(2);
        EXPECT_EQ(Link().ComPort, row.board ? 2 : 3);
        const std::string detail = LinkBench::portEntry(2).Detail;
        EXPECT_EQ(detail, row.board ? "/dev/port2" : "/dev/port2: no board answers");
    }
}

TEST_F(PortSearchTest, WithoutAnyPortEachIsTriedTwiceAndTheReasonsAreShown) {
    bench.platform.openFailures[4] = {error_number::SerialNoPermission, "/dev/port4: no permission"};
    EXPECT_THROW(search(2), ProcessEnded);
    EXPECT_EQ(probed, (std::vector<int>{2, 3, 1, 2, 3}));
    EXPECT_EQ(menu(), "----");
    ASSERT_EQ(bench.platform.messages.size(), 1U);
    const Message& message = bench.platform.messages[0];
    EXPECT_EQ(message.title, "ERROR  8010") << "the number of the last failure";
    EXPECT_EQ(message.text, "Check serial !\nSerial device unavailable\nor Board Not Ready");
    EXPECT_EQ(message.icon, Message::Icon::Critical);
    EXPECT_EQ(message.detail,
              "/dev/port1: no board answers\n/dev/port2: no board answers\n"
              "/dev/port3: no board answers\n/dev/port4: no permission");

    bench.platform.openFailures.clear();
    LinkBench::reset();
    bench.platform.lines = {{1, &bench.line}};
    EXPECT_THROW(search(1), ProcessEnded);
    EXPECT_EQ(bench.platform.messages.back().title, "ERROR  68") << "devices without boards";

    bench.platform.openFailures[1] = {8022, "no trouble of a port"};
    LinkBench::reset();
    EXPECT_THROW(search(1), RunTimeError) << "what is no trouble of a port ends the search";
}

TEST_F(PortSearchTest, TheConfiguredPortIsTheLastCharacterOfTheFirstLine) {
    configured("Com=12");
    bench.platform.lines = {{1, &devices[1]}, {2, &bench.line}};
    bench.start();
    EXPECT_EQ(Link().ComPort, 2);
    EXPECT_TRUE(devices[1].sent.empty());
}

TEST_F(PortSearchTest, AMissingConfigurationMeansPortOneAndIsWrittenIfItCanBe) {
    for (const bool readOnly : {false, true}) {
        LinkBench::reset();
        bench.platform.files.erase("/family/kestrel/kestrel.ini");
        if (readOnly) bench.platform.unwritable = {"/family/kestrel"};
        bench.start();
        EXPECT_EQ(Link().ComPort, 1);
        EXPECT_TRUE(Link().LinkIdle);
        const bool written = bench.platform.files.contains("/family/kestrel/kestrel.ini");
        EXPECT_NE(written, readOnly);
        EXPECT_TRUE(!written || bench.platform.file("kestrel.ini") == "Com=1\r\n");
    }
}

TEST_F(PortSearchTest, APortThatDoesNotExistIsAClearError) {
    for (const std::string line : {"Com=9", "Com=0", "Com=5", "Com="}) {
        LinkBench::reset();
        configured(line);
        try {
            bench.start();
            ADD_FAILURE() << line;
        } catch (const RunTimeError& error) {
            EXPECT_NE(std::string(error.what()).find("port"), std::string::npos) << error.what();
        }
        EXPECT_TRUE(bench.line.sent.empty()) << line;
    }
}

TEST_F(PortSearchTest, APortChosenInTheMiddleOfAnExchangeGetsTheRestOfTheWork) {
    ScriptedLine other;
    other.answer = [this](const Bytes& frame) { return bench.answer(frame); };
    bench.platform.lines[2] = &other;
    bench.board[{0, 1}] = 77;
    bench.start();
    Watch(0, 1);
    bench.run(42);
    ASSERT_FALSE(Link().LinkIdle);
    OpenPort(2);
    bench.run(3000);
    EXPECT_EQ(bench.sent(), (Strings{"0.1?"})) << "the reply of the old port answers nothing";
    ASSERT_EQ(other.sent.size(), 2U);
    EXPECT_EQ(LinkBench::tell(other.sent[1].frame), "0.1?");
    EXPECT_EQ(ParamRead(1, 0), 77);
    EXPECT_TRUE(Link().LinkIdle);
}

}  // namespace
}  // namespace kestrel::testing
