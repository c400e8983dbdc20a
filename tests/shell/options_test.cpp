// The command line: what a user may type, and what he is told when it cannot be followed.
// A wrong word must never start the program on another port or directory than the one that was meant.
#include "shell/options.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace kestrel {
namespace {

/// The words of the line, parted by blanks.
Options parsed(const std::string& line) {
    std::istringstream words(line);
    return parseOptions({std::istream_iterator<std::string>(words), {}});
}

TEST(Options, TakeTheirValueAfterBlankOrEqualsSign) {
    for (const char* line : {"--com 2=/dev/a=b --theme dark --directory /tmp --tour out",
                             "--com=2=/dev/a=b --theme=dark --directory=/tmp/../tmp/ --tour=out"}) {
        const Options options = parsed(line);
        EXPECT_EQ(options.devices.at(2), "/dev/a=b");
        EXPECT_EQ(options.theme, Theme::Dark);
        EXPECT_EQ(options.directory, std::filesystem::canonical("/tmp"))
            << "the directory's parent must be found by its path";
        EXPECT_EQ(options.tour, std::filesystem::current_path() / "out");
    }
}

TEST(Options, MayNameSeveralPagesAndPortsWhoseDevicesAreFoundFromAnyDirectory) {
    const Options options = parsed("--com 1=ttyUSB0 --com 4=./line --open FrmDosi --open=FrmTempi");
#ifdef _WIN32
    const std::map<int, std::string> devices{{1, "ttyUSB0"}, {4, "./line"}};  // names, and no files
#else
    const std::map<int, std::string> devices{{1, "/dev/ttyUSB0"}, {4, std::filesystem::absolute("./line")}};
#endif
    EXPECT_EQ(options.devices, devices);
    EXPECT_EQ(options.pages, (std::vector<std::string>{"FrmDosi", "FrmTempi"}));
}

TEST(Options, AskForHelpOrVersionWhateverElseIsThere) {
    EXPECT_TRUE(parsed("--demo --com 1=/dev/x --help --nonsense").help);
    EXPECT_TRUE(parsed("--version --nonsense").version);
}

std::string refusalOf(const std::string& line) {
    try {
        parsed(line);
        return "";
    } catch (const BadOption& error) {
        return error.what();
    }
}

#ifndef _WIN32  // where a directory that is worked in cannot be removed
TEST(Options, AreRefusedWhereTheWorkingDirectoryOfARelativePathIsGone) {
    const std::filesystem::path before = std::filesystem::current_path();
    const auto gone = std::filesystem::temp_directory_path() / ("kestrel-gone-" + std::to_string(getpid()));
    std::filesystem::create_directory(gone);
    std::filesystem::current_path(gone);
    std::filesystem::remove(gone);
    for (const char* line : {"--tour here", "--com 1=./line"}) EXPECT_THROW(parsed(line), BadOption) << line;
    std::filesystem::current_path(before);
}
#endif

TEST(Options, ThatAreRefusedGetOneLineThatNamesWhatIsWrong) {
    // What the line must name stands in brackets.
    for (std::string line :
         {"[--quick]", "[--quick]=1", "[-demo]", "[FrmDosi]", "[--demo]=yes", "[--tour]", "[--open]=", "--theme [blue]",
          "--directory [/no/such/place]", "--directory [/dev/null]", "--com [0=/dev/x]", "--com [5=/dev/x]",
          "--com [12=/dev/x]", "--com [/dev/x]", "--com [1=]", "[--directory] /tmp --directory /",
          "--demo [--com] 1=/dev/x", "--tour out [--open] FrmDosi"}) {
        const auto first = line.find('[');
        const std::string named = line.substr(first + 1, line.find(']') - first - 1);
        line.erase(line.find(']'), 1).erase(first, 1);
        const std::string text = refusalOf(line);
        EXPECT_NE(text.find(named), std::string::npos) << line << ": " << text;
        EXPECT_EQ(text.find('\n'), std::string::npos) << text;
    }
    EXPECT_NE(refusalOf("--com 1=/dev/x --com 1=/dev/y").find("port 1"), std::string::npos);
    EXPECT_NE(refusalOf("--fault drop=0.1").find("--demo"), std::string::npos);
    EXPECT_THROW(parseOptions({""}), BadOption);
}

}  // namespace
}  // namespace kestrel
