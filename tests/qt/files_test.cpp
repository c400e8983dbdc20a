// Files: a saved configuration is whole or untouched, whatever goes wrong, and a failure says what and why.
// Each test works in a directory of its own.
#include "platform/qt/files.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <csignal>
#include <fstream>
#include <iterator>

#include "platform/trouble.h"

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
    EXPECT_EQ(numberOf([&] { writeWholeFile(directory / "none" / "x", "x"); }), error_number::FileAccess);
    EXPECT_EQ(numberOf([&] { listFilesEnding(directory / "none", ".lng"); }), error_number::PathNotFound);
    EXPECT_EQ(numberOf([&] { enterDirectory(directory / "none"); }), error_number::PathNotFound);
}

TEST_F(Files, ThatMayNotBeTouchedStayAsTheyAre) {
    if (geteuid() == 0) GTEST_SKIP() << "everything is permitted to the superuser";
    writeWholeFile(file, "old");
    fs::permissions(file, fs::perms::none);
    EXPECT_EQ(numberOf([&] { readWholeFile(file); }), error_number::FileAccess);
    fs::permissions(file, fs::perms(0444));
    EXPECT_EQ(numberOf([&] { writeWholeFile(file, "new"); }), error_number::FileAccess);
    EXPECT_EQ(readWholeFile(file), "old");
}

TEST_F(Files, AreListedByEndingInOrderOfName) {
    for (const char* name : {"b.lng", "a.lng", "C.lng", "d.lng.old", "lng"}) std::ofstream(directory / name) << "x";
    fs::create_directory(directory / "folder.lng");
    EXPECT_EQ(listFilesEnding(directory, ".lng"), (std::vector<std::string>{"C.lng", "a.lng", "b.lng"}));
    EXPECT_TRUE(listFilesEnding(directory, ".inx").empty());
}

}  // namespace
}  // namespace kestrel::qt
