// Files: a saved configuration is whole or untouched, whatever goes wrong, and a failure says what and why.
// Each test works in a directory of its own.
#include "qt/io/files.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <csignal>
#include <fstream>
#include <iterator>

#include "platform/errors.h"

namespace kestrel::qt {
namespace {

namespace fs = std::filesystem;

class Files : public ::testing::Test {
  protected:
    bool standsAlone() const { return std::distance(fs::directory_iterator(directory), {}) == 1; }
    static int numberOf(const std::function<void()>& act) {
        try {
            act();
        } catch (const RunTimeError& error) {
            EXPECT_NE(std::string(error.what()).find('/'), std::string::npos) << "must name the file: " << error.what();
            return error.number();
        }
        return 0;
    }

    /// What the call gives in a process that has no right beyond the permissions.
    static int asOrdinaryUser(const std::function<int()>& act) {
        constexpr uid_t Nobody = 65534;
        const pid_t user = fork();
        if (user == 0) _exit(geteuid() != 0 || setuid(Nobody) == 0 ? act() : -1);
        int status = -1;
        waitpid(user, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    QTemporaryDir temporary;
    fs::path directory{temporary.path().toStdString()};
    fs::path file = directory / "kestrel.ini";
};

TEST_F(Files, AreReplacedWholeAndKeepTheirPermissions) {
    writeWholeFile(file, "Com=1\r\nLingua=old\r\n");
    fs::permissions(file, fs::perms(0640));
    const std::string everyByte("\0\xFF\r\n\x1A z", 8);
    writeWholeFile(file, everyByte);
    EXPECT_EQ(readWholeFile(file), everyByte);
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
    EXPECT_TRUE(standsAlone());
}

TEST_F(Files, StandUntouchedWhenTheDiskIsFull) {
    writeWholeFile(file, "old");
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    const rlimit tight{1000, usual.rlim_max};
    setrlimit(RLIMIT_FSIZE, &tight);
    EXPECT_EQ(numberOf([&] { writeWholeFile(file, std::string(5000, 'n')); }), error_number::FileAccess);
    setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(readWholeFile(file), "old");
    EXPECT_TRUE(standsAlone()) << "nothing else may be left";
}

TEST_F(Files, ThatCannotBeUsedSayWhy) {
    fs::create_directory(directory / "folder");
    EXPECT_EQ(numberOf([&] { readWholeFile(directory / "none" / "x"); }), error_number::FileNotFound);
    EXPECT_EQ(numberOf([&] { readWholeFile(directory / "folder"); }), error_number::FileAccess);
    EXPECT_EQ(numberOf([&] { writeWholeFile(directory / "folder", "x"); }), error_number::FileAccess);
    writeWholeFile(file, "x");
    EXPECT_EQ(numberOf([&] { writeWholeFile(file / "x", "x"); }), error_number::FileAccess);
    EXPECT_EQ(numberOf([&] { writeWholeFile(file / "x" / "y", "x"); }), error_number::FileAccess);
    EXPECT_EQ(numberOf([&] { listFilesEnding(directory / "none", ".lng"); }), error_number::PathNotFound);
    EXPECT_EQ(numberOf([&] { enterDirectory(directory / "none"); }), error_number::PathNotFound);
}

TEST_F(Files, AreWrittenWherePermissionsLetThemAndElseStayAsTheyAre) {
    struct Row {
        int directory, file;
        int reading, writing;  ///< numbers of the trouble
    };
    for (const Row& row : {Row{0777, 0000, error_number::FileAccess, error_number::FileAccess},
                           Row{0777, 0444, 0, error_number::FileAccess}, Row{0555, 0666, 0, 0},
                           Row{0555, 0444, 0, error_number::FileAccess}}) {
        SCOPED_TRACE(std::to_string(row.directory) + " " + std::to_string(row.file));
        writeWholeFile(file, "old and long");
        fs::permissions(file, fs::perms(row.file));
        fs::permissions(directory, fs::perms(row.directory));
        EXPECT_EQ(asOrdinaryUser([&] { return numberOf([&] { readWholeFile(file); }); }), row.reading);
        EXPECT_EQ(asOrdinaryUser([&] { return canBeWritten(file) ? 1 : 0; }), row.writing ? 0 : 1);
        EXPECT_EQ(asOrdinaryUser([&] { return numberOf([&] { writeWholeFile(file, "new"); }); }), row.writing);
        fs::permissions(directory, fs::perms::all);
        fs::permissions(file, fs::perms::all);
        EXPECT_EQ(readWholeFile(file), row.writing ? "old and long" : "new");
        EXPECT_TRUE(standsAlone());
    }
}

TEST_F(Files, AreListedByEndingInOrderOfName) {
    for (const char* name : {"b.lng", "a.lng", "C.lng", "d.lng.old", "lng", "\xD6l.txt", "\xD6l.lng"})
        std::ofstream(directory / name) << "x";
    fs::create_directory(directory / "folder.lng");
    EXPECT_EQ(listFilesEnding(directory, ".lng"), (std::vector<std::string>{"C.lng", "a.lng", "b.lng"}));
    EXPECT_TRUE(listFilesEnding(directory, ".inx").empty());
    fs::remove_all(directory);  // the toolkit cannot remove a file whose name is no text
}

}  // namespace
}  // namespace kestrel::qt
