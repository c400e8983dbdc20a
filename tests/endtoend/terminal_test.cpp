// kestrelctl over a pseudo-terminal: from one machine to another, killed on the way, and on a port that is taken.
// A clone that was interrupted must come to its end when it is run again.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QTest>
#include <fstream>

#include "board_process.h"
#include "installation.h"

namespace kestrel::testing {
namespace {

class TerminalLine : public ::testing::Test {
  protected:
    static constexpr int Longest = 120'000;  ///< milliseconds, on a machine with much else to do

    TerminalLine() {
        for (const char* order : {"set 1 1199 101", "set 1 1143 44", "set 1 1148 44", "set 2 53 21", "set 2 268 21",
                                  "set 1 1439 51", "set 1 1440 51", "set 2 58 77", "set 2 273 77"})
            one.tell(order);
        EXPECT_EQ(one.value(2, 273), 77);
    }

    QStringList commandOn(const char* port, const QStringList& words) const {
        return words +
               QStringList{QStringLiteral("--port"),      path(port),
                           QStringLiteral("--group"),     QStringLiteral("times,temperatures"),
                           QStringLiteral("--directory"), QString::fromStdString(installation.program().string())};
    }
    /// The exit status.
    int run(const char* port, const QStringList& words) {
        QProcess process;
        process.start(program, commandOn(port, words));
        EXPECT_TRUE(process.waitForFinished(Longest));
        said = process.readAllStandardOutput() + process.readAllStandardError();
        return process.exitCode();
    }
    QString path(const char* name) const { return QString::fromStdString((installation.program() / name).string()); }

    const QString program = QStringLiteral(KESTREL_INSTALLATION "/kestrelctl");
    Installation installation;
    BoardProcess one{installation.program(), {}, "one"};
    BoardProcess other{installation.program(), {QStringLiteral("--seed"), QStringLiteral("2")}, "other"};
    QByteArray said;
};

TEST_F(TerminalLine, BringsTheSettingsOfOneMachineToAnotherHoweverOftenItIsKilled) {
    const QString file = path("settings.txt");
    ASSERT_EQ(run("one", {QStringLiteral("read"), file}), 0) << said.toStdString();
    EXPECT_EQ(run("other", {QStringLiteral("compare"), file}), 1) << said.toStdString();
    for (const int milliseconds : {300, 900, 1800, 2400, 3000, 3300, 3600, 4200}) {
        QProcess process;
        process.start(program, commandOn("other", {QStringLiteral("write"), QStringLiteral("--yes"), file}));
        ASSERT_TRUE(process.waitForStarted(Longest));
        QTest::qWait(milliseconds);
        process.kill();
        process.waitForFinished(Longest);
    }
    EXPECT_EQ(run("other", {QStringLiteral("write"), QStringLiteral("--yes"), file}), 0) << said.toStdString();
    EXPECT_EQ(run("other", {QStringLiteral("compare"), file}), 0) << said.toStdString();
    for (const auto& [board, parameter, value] : {std::tuple{1, 1199, 101}, {1, 1148, 44}, {2, 268, 21}, {2, 58, 77}})
        EXPECT_EQ(other.value(board, parameter), value);
}

TEST_F(TerminalLine, StopsAWriteAtAPulledPlugAndSaysWhatItKnows) {
    const QString file = path("settings.txt");
    ASSERT_EQ(run("one", {QStringLiteral("read"), file}), 0) << said.toStdString();
    QProcess process;
    process.start(program, commandOn("other", {QStringLiteral("write"), QStringLiteral("--yes"), file,
                                               QStringLiteral("--wait"), QStringLiteral("20")}));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !other.writes().isEmpty(); }, Longest));
    other.tell("unplug");
    QTest::qWait(1500);
    const auto written = other.writes().size();
    other.tell("plug");
    EXPECT_TRUE(process.waitForFinished(Longest));
    EXPECT_EQ(other.writes().size(), written) << "after an interruption another machine may stand there";
    EXPECT_EQ(process.exitCode(), 1) << process.readAllStandardError().toStdString();
    EXPECT_TRUE(process.readAllStandardOutput().contains("not written"));
    EXPECT_EQ(run("other", {QStringLiteral("write"), QStringLiteral("--yes"), file}), 0) << said.toStdString();
}

TEST_F(TerminalLine, EndsWhenNobodyReadsWhatItTells) {
    QProcess shell;
    shell.start(QStringLiteral("sh"), {QStringLiteral("-c"), program + QStringLiteral(" watch 'price[1]' --port ") +
                                                                 path("one") + QStringLiteral(" >/dev/full")});
    EXPECT_TRUE(shell.waitForFinished(Longest));
    EXPECT_EQ(shell.exitCode(), 2);
}

TEST_F(TerminalLine, RefusesAPortThatIsNotThereOrTakenAndEndsAtASignalWithWhatItHas) {
    EXPECT_EQ(run("none", {QStringLiteral("read"), path("x")}), 2);
    EXPECT_TRUE(said.contains("not there")) << said.toStdString();
    QProcess first;
    first.start(program, {QStringLiteral("read"), path("part.txt"), QStringLiteral("--port"), path("one"),
                          QStringLiteral("--directory"), QString::fromStdString(installation.program().string())});
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            return one.exchanges({QStringLiteral("read"), QStringLiteral("30")}).size() > 0;
        },
        Longest));
    EXPECT_EQ(run("one", {QStringLiteral("read"), path("x")}), 2);
    EXPECT_TRUE(said.contains("in use by")) << said.toStdString();
    first.terminate();
    EXPECT_TRUE(first.waitForFinished(Longest));
    EXPECT_EQ(first.exitCode(), 1);
    std::ifstream part(path("part.txt").toStdString());
    const std::string text((std::istreambuf_iterator<char>(part)), {});
    EXPECT_NE(text.find("complete\tno"), std::string::npos) << text.substr(0, 300);
    EXPECT_NE(text.find("price[1]\t0.50\t50"), std::string::npos);
    EXPECT_NE(text.find("sector.options\t-\t-"), std::string::npos);
}

}  // namespace
}  // namespace kestrel::testing
