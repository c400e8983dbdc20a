// Every file of the corpus through its target, as a plain test: what was once found is not to come back.
// A target that does not like what happens ends the process, which no test survives.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "fuzz/targets.h"

namespace kestrel::fuzz {
namespace {

struct Target {
    const char* name;
    void (*run)(const std::uint8_t* data, std::size_t size);
};

class Corpus : public ::testing::TestWithParam<Target> {};

TEST_P(Corpus, PassesWithEachFileAndEachOfItsBeginnings) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(KESTREL_CORPUS + std::string("/") + GetParam().name)) {
        std::ifstream in(entry.path(), std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(in), {});
        const std::size_t step = bytes.size() / 8 + 1;
        for (std::size_t cut = 0; cut < bytes.size(); cut += step)
            GetParam().run(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size() - cut);
        ++files;
    }
    EXPECT_GT(files, 2);
}

INSTANTIATE_TEST_SUITE_P(All, Corpus,
                         ::testing::Values(Target{"index", index}, Target{"language", language},
                                           Target{"configuration", configuration}, Target{"reply", reply},
                                           Target{"frame", frame}, Target{"options", options}),
                         [](const auto& target) { return std::string(target.param.name); });

}  // namespace
}  // namespace kestrel::fuzz
