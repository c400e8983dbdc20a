// Plays many simulated runs and tells what was found: of a failure the check and the plan in one line, which plays it
// again to the letter; and the table of what was counted.
#include <csignal>
#include <cstdio>
#include <ctime>
#include <iostream>
#include <limits>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>

#include "command_line/command_line.h"
#include "command_line/program_text.h"
#include "simulation/play.h"
#include "simulation/small_worlds.h"
#include "simulation/terminal.h"
#include "simulator/commands.h"

namespace kestrel::testing {

namespace {

constexpr double MicrosPerDay = 86'400e6;
constexpr std::uint64_t PlayedTwice = 5;  ///< every fifth seed

/// By Count. The hazards (a) to (d) are those that the rules of the link themselves contain; in an exchange that ends
/// within 150 ms (a) and (b) are failures.
constexpr std::array<const char*, CountKinds> NamesOfCounts = {
    "events",
    "acts of the user and incidents",
    "message boxes",
    "frames",
    "accepted replies",
    "time-outs",
    "repeats",
    "(a) edits overwritten by an exchange over 150 ms",
    "(b) replies filed after a page moved the bank",
    "(b) banks moved in an exchange over 150 ms",
    "(c) late replies taken for another's",
    "(d) spoiled bytes taken for a reply",
    "writes left behind by a closed page",
    "pages compared at rest with new ones",
    "pages at rest that a known cause excused",
    "wanted and confirmed",
    "wanted, then something else",
    "not taken, and told",
    "given up, or dropped by the user",
    "lost, of a key that shows no value",
    "wanted, and a board lied",
    "wanted, and confirmed by a false reply",
    "wanted, and overwritten by a slow reply",
};

volatile std::sig_atomic_t stopped = 0;

class Report {
  public:
    void take(const Plan& plan, const Outcome& outcome) {
        for (std::size_t i = 0; i < CountKinds; ++i) counts_[i] += outcome.counts[i];
        played_ += outcome.played;
        hash_ = hash_ * 31 + outcome.hash;
        ++runs_;
        if (!outcome.ended.empty()) ++ended_[outcome.ended.substr(0, outcome.ended.find('\n'))];
        if (outcome.failedCheck.empty()) return;
        ++failures_;
        std::printf("FAILED: %s\n  %s\n  after %.6f s of: %s\n", outcome.failedCheck.c_str(), outcome.detail.c_str(),
                    static_cast<double>(outcome.played) / 1e6, plan.text().c_str());
    }

    void print() const {
        const double seconds = static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
        std::printf(
            "%ld runs, %ld failed, %.2f machine-days in %.1f s of a processor: %.0f times life; trace %016llx\n", runs_,
            failures_, days(), seconds, static_cast<double>(played_) / 1e6 / seconds,
            static_cast<unsigned long long>(hash_));
        const double millionFrames = static_cast<double>(std::max(counts_[Frames], 1L)) / 1e6;
        for (std::size_t i = 0; i < CountKinds; ++i)
            std::printf("  %-48s %12ld  %10.1f per million frames\n", NamesOfCounts[i], counts_[i],
                        static_cast<double>(counts_[i]) / millionFrames);
        for (const auto& [why, count] : ended_) std::printf("  ended by the rules: %-28s %12ld\n", why.c_str(), count);
    }

    double days() const { return static_cast<double>(played_) / MicrosPerDay; }
    bool failed() const { return failures_ > 0; }

  private:
    Counts counts_{};
    Micros played_ = 0;
    std::uint64_t hash_ = 0;
    long runs_ = 0, failures_ = 0;
    std::map<std::string, long> ended_;
};

struct Work {
    std::uint64_t first = 1, last = 200;  ///< seeds
    std::uint64_t days = 0;
    std::optional<Plan> plan;
    bool smallWorlds = false, terminal = false, keepsGoing = false, shortens = false;
};

std::uint64_t number(const std::string& text, std::uint64_t highest = std::numeric_limits<std::uint64_t>::max()) {
    const auto found = simulator::parseNumber(text, highest);
    if (!found) throw std::invalid_argument("\"" + text + "\" is not a whole number");
    return *found;
}

ProgramText programFor(Work& work) {
    return {"kestrel_simulation",
            "the whole program against every fault of the line, in virtual time",
            {"[OPTION]..."},
            "A long run can be stopped by SIGINT or SIGTERM, and tells then what was played.\n",
            {
                {"--seeds", "FIRST-LAST", "the plans of these seeds (default: 1-200)",
                 [&work](const std::string& text) {
                     const auto dash = text.find('-');
                     work.first = number(text.substr(0, dash));
                     work.last = number(text.substr(dash + 1));
                 }},
                {"--days", "N",
                 "machine-days to be played at least; what the trouble leaves passes\nwith the pages left open",
                 [&work](const std::string& text) { work.days = number(text, 1'000'000); }},
                {"--small-worlds", "", "every act and fault of a small world first", setTo(work.smallWorlds, true)},
                {"--terminal", "", "kestrelctl in place of the window program", setTo(work.terminal, true)},
                {"--keep-going", "", "play on after a failure", setTo(work.keepsGoing, true)},
                {"--plan", "LINE", "this plan alone, as a failure tells it",
                 [&work](const std::string& text) { work.plan = Plan::parse(text); }},
                {"--shorten", "", "look for a shorter plan with the same failure", setTo(work.shortens, true)},
            },
            {}};
}

void playPlan(const Work& work, Report& report) {
    const Outcome outcome = play(*work.plan);
    report.take(*work.plan, outcome);
    if (work.shortens && !outcome.failedCheck.empty())
        std::printf("shortened: %s\n", shorten(*work.plan, outcome.failedCheck).text().c_str());
}

void playSeeds(const Work& work, Report& report) {
    const auto goesOn = [&] { return !stopped && (work.keepsGoing || !report.failed()); };
    if (work.smallWorlds)
        for (const Plan& plan : smallWorlds())
            if (goesOn()) report.take(plan, play(plan));
    for (std::uint64_t seed = work.first; seed <= work.last && goesOn(); ++seed) {
        Plan plan = Plan::draw(seed);
        if (work.terminal) {
            report.take(plan, playTerminal(seed));
            continue;
        }
        const double share =
            (static_cast<double>(work.days) - report.days()) / static_cast<double>(work.last - seed + 1) * 86'400 -
            plan.seconds;
        plan.quiet = static_cast<int>(std::max(share, 0.0));
        Outcome outcome = play(plan);
        if (seed % PlayedTwice == 0 && play(plan).hash != outcome.hash)
            outcome.failedCheck = "the same plan plays the same way";
        report.take(plan, outcome);
    }
}

}  // namespace

}  // namespace kestrel::testing

int main(int count, char** arguments) {
    using namespace kestrel::testing;
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    for (const int signal : {SIGINT, SIGTERM}) std::signal(signal, [](int) { stopped = 1; });
    Work work;
    return kestrel::runTool(programFor(work), {arguments + 1, arguments + count}, std::cout, std::cerr, [&] {
        Report report;
        work.plan ? playPlan(work, report) : playSeeds(work, report);
        report.print();
        return report.failed() ? 1 : 0;
    });
}
