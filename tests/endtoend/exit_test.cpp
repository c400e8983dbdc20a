// Every way out of the program leaves the serial port free and starts the family's launcher exactly when it should.
// A technician who cannot open the port again has to pull the adapter.
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <ostream>

#include "board_process.h"
#include "driven_program.h"
#include "installation.h"
#include "session.h"

namespace kestrel::testing {
namespace {

constexpr int StartWithin = 15'000;
constexpr int EndWithin = 10'000;

bool isPortFree(const std::string& device) {
    QSerialPort port;
    port.setPortName(QString::fromStdString(std::filesystem::canonical(device)));
    return port.open(QIODevice::ReadWrite);
}

/// Every file and directory below, with the contents of the files.
std::map<std::string, std::string> everythingBelow(const std::filesystem::path& directory) {
    std::map<std::string, std::string> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
        std::string& content = found[entry.path().lexically_relative(directory).string()];
        if (!entry.is_regular_file()) continue;
        std::ifstream in(entry.path(), std::ios::binary);
        content.assign(std::istreambuf_iterator<char>(in), {});
    }
    return found;
}

class Exit : public ::testing::Test {
  protected:
    void startDriven(const char* act, BoardProcess& board,
                     const QString& executable = QCoreApplication::applicationFilePath()) {
        program.start(executable,
                      {QLatin1String(DrivenArgument), QLatin1String(act),
                       QString::fromStdString(installation.program()), QString::fromStdString(board.device())});
    }
    void startReal(BoardProcess& board) {
        program.start(
            QStringLiteral(KESTREL_INSTALLATION "/kestrel"),
            {QStringLiteral("--directory"), QString::fromStdString(installation.program()), QStringLiteral("--com"),
             u"1="_qs + QString::fromStdString(board.device()), QStringLiteral("--open"), QStringLiteral("FrmTempi")});
        EXPECT_TRUE(program.waitForStarted());
    }
    /// Status of the program that has ended by itself, or -1.
    int status(int within) {
        const bool ended = QTest::qWaitFor([this] { return program.state() == QProcess::NotRunning; }, within) &&
                           program.exitStatus() == QProcess::NormalExit;
        if (!ended) program.kill();
        program.waitForFinished();
        return ended ? program.exitCode() : -1;
    }
    bool launcherRuns(int within = 500) {
        return QTest::qWaitFor([this] { return installation.launcherRan(); }, within);
    }

    Installation installation;
    QProcess program;
};

struct WayOut {
    const char* act;
    QStringList board;  ///< more arguments of the board program
    int status;
    bool launcher;
};

void PrintTo(const WayOut& way, std::ostream* out) { *out << way.act; }

class ExitByAct : public Exit, public ::testing::WithParamInterface<WayOut> {};

TEST_P(ExitByAct, LeavesThePortFree) {
    BoardProcess board(installation.program(), GetParam().board);
    startDriven(GetParam().act, board);
    EXPECT_EQ(status(StartWithin), GetParam().status) << program.readAllStandardError().toStdString();
    EXPECT_TRUE(isPortFree(board.device()));
    EXPECT_FALSE(board.exchanges().isEmpty()) << "the port had been in use";
    EXPECT_EQ(GetParam().launcher ? launcherRuns(EndWithin) : launcherRuns(), GetParam().launcher);
}

const QStringList Healthy;
const QStringList Slow{QStringLiteral("--fault"), QStringLiteral("slow=1")};
const QStringList Alone{QStringLiteral("--no-hot-drink"), QStringLiteral("--no-sector")};

INSTANTIATE_TEST_SUITE_P(Exit, ExitByAct,
                         ::testing::Values(WayOut{"menu", Healthy, 0, true}, WayOut{"close", Healthy, 0, true},
                                           WayOut{"close-identifying", Slow, 0, true},
                                           WayOut{"signal-identifying", Slow, 0, false},
                                           WayOut{"trouble", Healthy, 1, false}),
                         [](const auto& row) { return QString::fromLatin1(row.param.act).remove(u'-').toStdString(); });

TEST_F(Exit, BySignalWhileAMessageBoxIsOpen) {
    BoardProcess board(installation.program());
    startDriven("signal-in-box", board);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !board.exchanges().isEmpty(); }, StartWithin));
    board.tell("silent 0 on");
    EXPECT_EQ(status(StartWithin), 0);
    EXPECT_TRUE(isPortFree(board.device()));
    EXPECT_FALSE(launcherRuns());
}

/// What a program leaves, by whatever name a toolkit looks for a place for a settings store, a cache or a window's
/// state.
class Traces : public Exit, public ::testing::WithParamInterface<bool> {
  protected:
    Traces() {
        QProcessEnvironment surroundings = QProcessEnvironment::systemEnvironment();
        // Where a session names no run-time directory the toolkit makes one in the temporary directory.
        for (const char* name : {"HOME", "TMPDIR", "XDG_RUNTIME_DIR"})
            surroundings.insert(QLatin1String(name), home.path());
        for (const char* name : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
            if (GetParam())
                surroundings.insert(QLatin1String(name), home.path());
            else
                surroundings.remove(QLatin1String(name));
        program.setProcessEnvironment(surroundings);
    }
    auto everythingAtHome() const { return everythingBelow(home.path().toStdString()); }

    const QTemporaryDir home;
    const std::string saved = "Com=4\r\nLingua=English\r\n";
};

TEST_P(Traces, AreTheConfigurationFileAlone) {
    BoardProcess board(installation.program());
    auto before = everythingBelow(installation.family());
    startDriven("work", board);
    EXPECT_EQ(status(StartWithin), 0) << program.readAllStandardError().toStdString();
    EXPECT_TRUE(launcherRuns(EndWithin));
    EXPECT_TRUE(everythingAtHome().empty());
    auto after = everythingBelow(installation.family());
    after.erase(installation.launcherMark());
    before["kestrel/kestrel_endtoend_tests.ini"] = saved;
    EXPECT_EQ(after, before);
}

/// Who may write in the directories of the system does not do so by choosing a language.
TEST_P(Traces, OfAnInstalledProgramAreTheUsersFileAlone) {
    for (const char* directory : {"bin", "share"}) std::filesystem::create_directory(installation.family() / directory);
    std::filesystem::create_directory_symlink("../kestrel", installation.family() / "share/kestrel");
    const auto command = installation.family() / "bin/command";
    std::filesystem::copy(QCoreApplication::applicationFilePath().toStdString(), command);
    BoardProcess board(installation.program());
    const auto before = everythingBelow(installation.family());
    startDriven("work", board, QString::fromStdString(command.string()));
    EXPECT_EQ(status(StartWithin), 0) << program.readAllStandardError().toStdString();
    EXPECT_FALSE(launcherRuns());
    EXPECT_TRUE(everythingBelow(installation.family()) == before) << "nothing is written there";
    auto left = everythingAtHome();
    const std::string place = GetParam() ? "kestrel" : ".config/kestrel";
    EXPECT_EQ(left[place + "/command.ini"], saved);
    std::erase_if(left, [&](const auto& entry) { return (place + "/command.ini").starts_with(entry.first); });
    EXPECT_TRUE(left.empty()) << left.begin()->first;
}

INSTANTIATE_TEST_SUITE_P(Exit, Traces, ::testing::Bool(),
                         [](const auto& row) { return row.param ? "DirectoriesNamed" : "HomeAlone"; });

TEST_F(Exit, AfterALanguageIsSavedInADirectoryThatTakesNoNewFile) {
    constexpr uid_t Nobody = 65534;
    using std::filesystem::perms;
    const auto configuration = installation.configuration("kestrel_endtoend_tests");
    std::ofstream(configuration) << "Com=4\r\nLingua=Italiano\r\n";
    BoardProcess board(installation.program());
    const auto everybody = perms::owner_all | perms::group_all | perms::others_all;
    for (const auto& path : {installation.family(), configuration, std::filesystem::canonical(board.device())})
        std::filesystem::permissions(path, everybody);
    std::filesystem::permissions(installation.program(), perms(0555));
    program.setChildProcessModifier([] {
        if (geteuid() == 0 && setuid(Nobody) != 0) _exit(-1);
    });
    startDriven("work", board);
    EXPECT_EQ(status(StartWithin), 0) << program.readAllStandardError().toStdString();
    std::filesystem::permissions(installation.program(), everybody);
    std::ifstream saved(configuration, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(saved), {}), "Com=4\r\nLingua=English\r\n");
}

TEST_F(Exit, WithOneLineThatNamesAPathThatIsNoText) {
    const std::string odd = "\xD6l";
    const std::string into = "cd '" + installation.family().string() + "' && mkdir -p '" + odd + "' && ";
    const std::string kestrel = "exec '" KESTREL_INSTALLATION "/kestrel' --demo ";
    for (const std::string& command :
         {kestrel + "--directory " + odd, kestrel + "--tour " + odd, "cd " + odd + "&& " + kestrel + "--tour t",
          "cp '" KESTREL_INSTALLATION "/kestrel' kestrel/*.lng " + odd + " && " + odd + "/kestrel --demo --tour t"}) {
        const std::string script = (installation.family() / "script").string();
        std::ofstream(script) << into << command << "\n";
        program.start(QStringLiteral("/bin/sh"), {QString::fromStdString(script)});
        EXPECT_EQ(status(StartWithin), 1) << command;
        const std::string said = program.readAllStandardError().toStdString();
        EXPECT_NE(said.find(odd), std::string::npos) << command << ": " << said;
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    }
    std::filesystem::remove_all(installation.family() / odd);
}

TEST_F(Exit, ToTheDemoWhenNoBoardAnswers) {
    BoardProcess board(installation.program(), {QStringLiteral("--fault"), QStringLiteral("silent=1")});
    startDriven("demo", board);
    EXPECT_EQ(status(StartWithin), 0);
    EXPECT_TRUE(isPortFree(board.device()));
    const auto mark = installation.program() / DemoMark;
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(mark); }, EndWithin));
    EXPECT_FALSE(launcherRuns());
}

TEST_F(Exit, BySignalAfterASuspensionThatNoBurstFollowed) {
    BoardProcess board(installation.program());
    startReal(board);
    const auto pid = static_cast<pid_t>(program.processId());
    ASSERT_GT(pid, 0);
    const QStringList filling{QStringLiteral("hot-drink"), QStringLiteral("1144")};
    ASSERT_TRUE(QTest::qWaitFor([&] { return !board.exchanges(filling).isEmpty(); }, StartWithin));
    constexpr int Frames = 12;
    for (int i = 0; i < (isLongRun() ? 10 : 1); ++i) {
        kill(pid, SIGSTOP);
        QTest::qWait(isLongRun() ? 5000 : 2000);
        const qsizetype before = board.exchanges().size();
        kill(pid, SIGCONT);
        EXPECT_TRUE(QTest::qWaitFor([&] { return board.exchanges().size() > before + Frames; }, EndWithin));
        const auto heard = [&](qsizetype frame) {
            return board.exchanges()[before + frame].split(u' ', Qt::SkipEmptyParts).first().toDouble();
        };
        EXPECT_GT(heard(Frames) - heard(0), 0.025 * Frames) << "seconds";
    }
    kill(pid, SIGTERM);
    EXPECT_EQ(status(EndWithin), 0);
    EXPECT_TRUE(isPortFree(board.device()));
}

class ExitBySignal : public Exit, public ::testing::WithParamInterface<int> {};

TEST_P(ExitBySignal, LeavesThePortFree) {
    BoardProcess board(installation.program(), Alone);
    startReal(board);
    const QStringList lastOfIdentification{QStringLiteral("identity"), QStringLiteral("18")};
    ASSERT_TRUE(QTest::qWaitFor([&] { return !board.exchanges(lastOfIdentification).isEmpty(); }, StartWithin));
    kill(static_cast<pid_t>(program.processId()), GetParam());
    EXPECT_EQ(status(EndWithin), 0);
    EXPECT_TRUE(isPortFree(board.device()));
    EXPECT_FALSE(launcherRuns()) << "who ends the session wants no new program";
}

INSTANTIATE_TEST_SUITE_P(Exit, ExitBySignal, ::testing::Values(SIGTERM, SIGINT, SIGHUP),
                         [](const auto& row) { return std::string("Signal") + std::to_string(row.param); });

}  // namespace
}  // namespace kestrel::testing
