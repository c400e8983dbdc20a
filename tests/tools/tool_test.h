// A tool of the build run in a directory of its own: its files, its exit status and what it said.
// Shared by the tests of the tools.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace kestrel::testing {

using Arguments = std::vector<std::string>;

inline std::string fileContent(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

class ToolTest : public ::testing::Test {
  protected:
    using Tool = int (*)(const Arguments& arguments, std::ostream& out, std::ostream& err);

    explicit ToolTest(Tool tool) : tool_(tool) {
        std::filesystem::remove_all(directory);
        std::filesystem::create_directories(directory);
    }
    ~ToolTest() override { std::filesystem::remove_all(directory); }

    std::string path(const std::string& name) const { return (directory / name).string(); }
    /// Writes a file and gives its path.
    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream(path(name), std::ios::binary) << text;
        return path(name);
    }
    std::string content(const std::string& name) const { return fileContent(path(name)); }
    auto filesIn(const std::string& name) const {
        return std::distance(std::filesystem::directory_iterator(path(name)), std::filesystem::directory_iterator());
    }
    /// The exit status.
    int run(const Arguments& arguments) {
        out.str("");
        err.str("");
        return tool_(arguments, out, err);
    }
    /// Expects of each command line, its words parted by blanks, that it is refused in one line.
    void expectBadUsage(const std::vector<std::string>& commandLines) {
        for (const std::string& line : commandLines) {
            std::istringstream words(line);
            EXPECT_EQ(run({std::istream_iterator<std::string>(words), {}}), 2) << line;
            const std::string said = err.str();
            EXPECT_TRUE(said.size() > 1 && said.find('\n') == said.size() - 1) << line << said;
            EXPECT_EQ(out.str(), "") << line;
        }
    }

    const std::filesystem::path directory =
        std::filesystem::path(::testing::TempDir()) /
        (std::string("kestrel_") + ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::ostringstream out, err;

  private:
    Tool tool_;
};

}  // namespace kestrel::testing
