// The command line: what a user may type, and what he is told when it cannot be followed.
// A wrong word must never start the program on another port or directory than the one that was meant.
#include "shell/options.h"

#include <gtest/gtest.h>

namespace kestrel {
namespace {

using Arguments = std::vector<std::string>;

TEST(Options, WithoutArgumentsWorksOnRealPortsBesideTheProgram) {
    const Options options = parseOptions({});
    EXPECT_FALSE(options.demo);
    EXPECT_TRUE(options.directory.empty());
    EXPECT_TRUE(options.devices.empty());
    EXPECT_EQ(options.theme, Theme::System);
}

TEST(Options, TakeTheirValueAfterBlankOrEqualsSign) {
    for (const Arguments& arguments :
         {Arguments{"--com", "2=/dev/a=b", "--theme", "dark", "--directory", "/tmp", "--tour", "out"},
          Arguments{"--com=2=/dev/a=b", "--theme=dark", "--directory=/tmp/../tmp/", "--tour=out"}}) {
        const Options options = parseOptions(arguments);
        EXPECT_EQ(options.devices.at(2), "/dev/a=b");
        EXPECT_EQ(options.theme, Theme::Dark);
        EXPECT_EQ(options.directory, "/tmp") << "the directory's parent must be found by its path";
        EXPECT_EQ(options.tour, std::filesystem::current_path() / "out");
    }
}

TEST(Options, MayNameSeveralPortsAndPages) {
    const Options options =
        parseOptions({"--com", "1=/dev/x", "--com", "4=/dev/y", "--open", "FrmDosi", "--open=FrmTempi"});
    EXPECT_EQ(options.devices, (std::map<int, std::string>{{1, "/dev/x"}, {4, "/dev/y"}}));
    EXPECT_EQ(options.pages, (Arguments{"FrmDosi", "FrmTempi"}));
}

TEST(Options, NameDevicesSoThatTheyAreFoundFromAnyDirectory) {
    const Options options = parseOptions({"--com", "1=ttyUSB0", "--com", "2=./line"});
    EXPECT_EQ(options.devices.at(1), "/dev/ttyUSB0");
    EXPECT_TRUE(options.devices.at(2).starts_with("/")) << options.devices.at(2);
}

TEST(Options, AskForHelpOrVersionWhateverElseIsThere) {
    EXPECT_TRUE(parseOptions({"--demo", "--com", "1=/dev/x", "--help", "--nonsense"}).help);
    EXPECT_TRUE(parseOptions({"--version", "--nonsense"}).version);
}

struct Refused {
    const char* what;
    Arguments arguments;
    const char* named;  ///< what the message must name
};

class RefusedOptions : public ::testing::TestWithParam<Refused> {};

TEST_P(RefusedOptions, GetOneLineThatNamesWhatIsWrong) {
    try {
        parseOptions(GetParam().arguments);
        FAIL() << "was taken";
    } catch (const BadOption& error) {
        const std::string text = error.what();
        EXPECT_NE(text.find(GetParam().named), std::string::npos) << text;
        EXPECT_EQ(text.find('\n'), std::string::npos) << text;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Options, RefusedOptions,
    ::testing::Values(Refused{"Unknown", {"--quick"}, "--quick"}, Refused{"UnknownWithValue", {"--quick=1"}, "--quick"},
                      Refused{"SingleDash", {"-demo"}, "-demo"}, Refused{"Stray", {"FrmDosi"}, "FrmDosi"},
                      Refused{"Empty", {""}, "\"\""}, Refused{"ValueForFlag", {"--demo=yes"}, "--demo"},
                      Refused{"ValueMissing", {"--tour"}, "--tour"}, Refused{"ValueEmpty", {"--open="}, "--open"},
                      Refused{"ThemeUnknown", {"--theme", "blue"}, "blue"},
                      Refused{"DirectoryMissing", {"--directory", "/no/such/place"}, "/no/such/place"},
                      Refused{"DirectoryIsFile", {"--directory", "/dev/null"}, "/dev/null"},
                      Refused{"PortZero", {"--com", "0=/dev/x"}, "0=/dev/x"},
                      Refused{"PortFive", {"--com", "5=/dev/x"}, "5=/dev/x"},
                      Refused{"PortOfTwoDigits", {"--com", "12=/dev/x"}, "12=/dev/x"},
                      Refused{"PortAlone", {"--com", "/dev/x"}, "/dev/x"},
                      Refused{"DeviceEmpty", {"--com", "1="}, "1="},
                      Refused{"PortTwice", {"--com", "1=/dev/x", "--com", "1=/dev/y"}, "port 1"},
                      Refused{"DirectoryTwice", {"--directory", "/tmp", "--directory", "/"}, "--directory"},
                      Refused{"DemoOnPort", {"--demo", "--com", "1=/dev/x"}, "--com"},
                      Refused{"FaultOfRealMachine", {"--fault", "drop=0.1"}, "--demo"},
                      Refused{"TourAndPage", {"--tour", "out", "--open", "FrmDosi"}, "--open"}),
    [](const auto& row) { return row.param.what; });

}  // namespace
}  // namespace kestrel
