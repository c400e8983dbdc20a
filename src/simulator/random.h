// Chance for the simulated machine: one generator a subject, all drawn from one seed.
// The results are the same on every platform, which the distributions of the standard library do not promise.
#pragma once

#include <cstdint>
#include <random>

namespace kestrel::simulator {

// Each subject has its own stream, so that using one more number in one leaves the others as they were.
enum class Stream : std::uint32_t { Replies = 1, Sales, Inputs, Alarms, Climate, Faults = 100 };

class Random {
  public:
    // `part` tells streams of one subject apart, the kinds of faults for instance.
    Random(std::uint64_t seed, Stream stream, std::uint32_t part = 0) {
        std::seed_seq sequence{static_cast<std::uint32_t>(seed), static_cast<std::uint32_t>(seed >> 32),
                               static_cast<std::uint32_t>(stream), part};
        generator_.seed(sequence);
    }

    // A whole number from low to high, both included; low <= high.
    std::int64_t between(std::int64_t low, std::int64_t high) {
        const auto range = static_cast<std::uint64_t>(high - low) + 1;
        return low + static_cast<std::int64_t>(generator_() % range);
    }

    std::uint8_t byte() { return static_cast<std::uint8_t>(between(0, 255)); }

    // True with the given probability, 0 to 1.
    bool chance(double probability) {
        constexpr double unit = 1.0 / 9007199254740992.0;  // 2^-53
        return static_cast<double>(generator_() >> 11) * unit < probability;
    }

  private:
    std::mt19937_64 generator_;
};

}  // namespace kestrel::simulator
