// A session writes nothing but the program's own configuration file: no settings store, no cache, no window state.
// The program runs with a home directory of its own, by every name under which a toolkit looks for one.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTest>
#include <fstream>
#include <iterator>
#include <map>

#include "board_process.h"
#include "driven_program.h"
#include "installation.h"

namespace kestrel::testing {
namespace {

namespace fs = std::filesystem;

constexpr int SessionWithin = 20000;
constexpr int LauncherWithin = 2000;

/// Every file and directory below, with the contents of the files.
std::map<std::string, std::string> everythingBelow(const fs::path& directory) {
    std::map<std::string, std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(directory)) {
        std::string& content = found[entry.path().lexically_relative(directory).string()];
        if (!entry.is_regular_file()) continue;
        std::ifstream in(entry.path(), std::ios::binary);
        content.assign(std::istreambuf_iterator<char>(in), {});
    }
    return found;
}

class Traces : public ::testing::TestWithParam<bool> {};

TEST_P(Traces, AreTheConfigurationFileAlone) {
    const Installation installation;
    BoardProcess board(installation.program());
    const QTemporaryDir home;
    QProcessEnvironment surroundings = QProcessEnvironment::systemEnvironment();
    // Where a session names no run-time directory the toolkit makes one in the temporary directory.
    for (const char* name : {"HOME", "TMPDIR", "XDG_RUNTIME_DIR"})
        surroundings.insert(QLatin1String(name), home.path());
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
        if (GetParam())
            surroundings.insert(QLatin1String(name), home.path());
        else
            surroundings.remove(QLatin1String(name));
    auto before = everythingBelow(installation.family());

    QProcess program;
    program.setProcessEnvironment(surroundings);
    program.start(QCoreApplication::applicationFilePath(),
                  {QLatin1String(DrivenArgument), QStringLiteral("work"),
                   QString::fromStdString(installation.program()), QString::fromStdString(board.device())});
    const bool ended = QTest::qWaitFor([&] { return program.state() == QProcess::NotRunning; }, SessionWithin);
    if (!ended) program.kill();
    program.waitForFinished();
    ASSERT_TRUE(ended) << program.readAllStandardError().toStdString();
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_FALSE(board.exchanges().isEmpty());

    EXPECT_TRUE(QTest::qWaitFor([&] { return installation.launcherRan(); }, LauncherWithin));
    EXPECT_TRUE(everythingBelow(home.path().toStdString()).empty())
        << "there is " << everythingBelow(home.path().toStdString()).begin()->first;
    auto after = everythingBelow(installation.family());
    after.erase(installation.launcherMark());
    before["kestrel/kestrel_endtoend_tests.ini"] = "Com=4\r\nLingua=English\r\n";
    EXPECT_EQ(after, before);
}

INSTANTIATE_TEST_SUITE_P(All, Traces, ::testing::Bool(),
                         [](const auto& row) { return row.param ? "DirectoriesNamed" : "HomeAlone"; });

}  // namespace
}  // namespace kestrel::testing
