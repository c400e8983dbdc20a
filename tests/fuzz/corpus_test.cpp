// Every seed through its target, cut short and with single bytes changed: what was once found is not to come back.
// A target that does not like what happens ends the process, which no test survives.
#include <gtest/gtest.h>

#include <map>

#include "fuzz/seeds.h"
#include "fuzz/targets.h"

namespace kestrel::fuzz {
namespace {

TEST(Corpus, EachTargetComesBackFromEachSeedHoweverItIsCutOrChanged) {
    const std::map<std::string, void (*)(const std::uint8_t*, std::size_t)> targets = {
        {"index", index},      {"language", language}, {"configuration", configuration},
        {"reply", reply},      {"frame", frame},       {"options", options},
        {"settings", settings}};
    std::size_t runs = 0;
    for (const Seed& seed : seeds()) {
        const auto run = [&](const std::string& bytes) {
            targets.at(seed.target)(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++runs;
        };
        const std::size_t step = seed.bytes.size() / 24 + 1;
        for (std::size_t at = 0; at < seed.bytes.size(); at += step) {
            run(seed.bytes.substr(0, seed.bytes.size() - at));
            for (const char other : {'\0', '\n', '\xFF', static_cast<char>(seed.bytes[at] + 1)}) {
                std::string changed = seed.bytes;
                changed[at] = other;
                run(changed);
            }
        }
    }
    EXPECT_GT(runs, 5 * seeds().size());
}

}  // namespace
}  // namespace kestrel::fuzz
