// Plays many simulated runs and tells what was found: the plan of the first failure in one line, and the table of
// counted hazards. Without options it plays what the tests play.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "simulation/play.h"

using namespace kestrel::testing;

int main(int argc, char** argv) {
    if (argc > 1 && std::string(argv[1]).starts_with("seed=")) {
        const Plan plan = Plan::parse(argv[1]);
        const Outcome o = play(plan);
        std::printf("%s\n%s: %s (%s) hash %016llx events %ld\n", plan.text().c_str(), o.failedCheck.c_str(),
                    o.detail.c_str(), o.ended.c_str(), (unsigned long long)o.hash, o.counts.events);
        if (o.failed() && argc > 2) std::printf("%s\n", shorten(plan, o.failedCheck).text().c_str());
        return o.failed();
    }
    const int first = argc > 1 ? std::atoi(argv[1]) : 1, last = argc > 2 ? std::atoi(argv[2]) : 20;
    const auto begun = std::chrono::steady_clock::now();
    Counts all;
    Micros played = 0;
    int failed = 0;
    for (int seed = first; seed <= last; ++seed) {
        const Plan plan = Plan::draw(static_cast<std::uint64_t>(seed));
        const Outcome o = play(plan);
        all.add(o.counts);
        played += o.played;
        if (o.failed()) {
            ++failed;
            std::printf("FAILED %s: %s\n  at %.6f  %s\n", o.failedCheck.c_str(), o.detail.c_str(),
                        static_cast<double>(o.played) / 1e6, plan.text().c_str());
        } else if (!o.ended.empty())
            std::printf("seed %d ended: %s\n", seed, o.ended.c_str());
    }
    const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
    std::printf(
        "%d failed; %.1f s played in %.2f s (%.0f times life); events %ld frames %ld accepted %ld timeouts %ld repeats "
        "%ld boxes %ld a %ld b %ld c %ld d %ld orphans %ld\n",
        failed, static_cast<double>(played) / 1e6, wall, static_cast<double>(played) / 1e6 / wall, all.events,
        all.frames, all.accepted, all.timeouts, all.repeats, all.boxes, all.overwrittenEdits, all.movedBanks,
        all.lateReplies, all.blindReplies, all.orphanWrites);
    return failed > 0;
}
