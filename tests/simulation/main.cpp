// Plays many simulated runs and tells what was found: of a failure the check and the plan in one line, which plays it
// again to the letter; and the table of what was counted.
#include <chrono>
#include <cstdio>
#include <exception>
#include <map>
#include <string>

#include "simulation/play.h"
#include "simulation/small_worlds.h"

namespace kestrel::testing {

namespace {

constexpr double MicrosPerDay = 86'400e6;

struct Options {
    std::uint64_t first = 1, last = 200;
    double days = 0;  ///< to be played at least; what the trouble leaves is spent with all pages closed
    bool smallWorlds = false;
    bool keepGoing = false;
    std::string plan;
    bool shorten = false;
};

class Report {
  public:
    explicit Report(bool keepGoing) : keepGoing_(keepGoing) {}

    /// True when the run is to go on.
    bool take(const Plan& plan, const Outcome& outcome) {
        counts_.add(outcome.counts);
        played_ += outcome.played;
        hash_ = hash_ * 31 + outcome.hash;
        ++runs_;
        if (!outcome.ended.empty()) ++ended_[outcome.ended.substr(0, outcome.ended.find('\n'))];
        if (!outcome.failed()) return true;
        ++failures_;
        std::printf("FAILED: %s\n  %s\n  after %.6f s of: %s\n", outcome.failedCheck.c_str(), outcome.detail.c_str(),
                    static_cast<double>(outcome.played) / 1e6, plan.text().c_str());
        return keepGoing_;
    }

    void print(double wall) const {
        std::printf("%ld runs, %ld failed, %.2f machine-days in %.1f s: %.0f times life; trace %016llx\n", runs_,
                    failures_, days(), wall, static_cast<double>(played_) / 1e6 / wall,
                    static_cast<unsigned long long>(hash_));
        const struct {
            const char* what;
            long count;
        } rows[] = {{"events", counts_.events},
                    {"acts of the user and incidents", counts_.acts},
                    {"message boxes", counts_.boxes},
                    {"frames", counts_.frames},
                    {"accepted replies", counts_.accepted},
                    {"time-outs", counts_.timeouts},
                    {"repeats", counts_.repeats},
                    {"(a) edits overwritten by a reply under way", counts_.overwrittenEdits},
                    {"(b) replies filed after a page moved the bank", counts_.movedBanks},
                    {"(c) late replies taken for another's", counts_.lateReplies},
                    {"(d) spoiled bytes taken for a reply", counts_.blindReplies},
                    {"writes left behind by a closed page", counts_.orphanWrites}};
        for (const auto& row : rows)
            std::printf(
                "  %-48s %12ld  %10.1f per million frames\n", row.what, row.count,
                counts_.frames ? 1e6 * static_cast<double>(row.count) / static_cast<double>(counts_.frames) : 0);
        for (const auto& [why, count] : ended_) std::printf("  ended by the rules: %-28s %12ld\n", why.c_str(), count);
    }

    double days() const { return static_cast<double>(played_) / MicrosPerDay; }
    bool failed() const { return failures_ > 0; }

  private:
    bool keepGoing_;
    Counts counts_;
    Micros played_ = 0;
    std::uint64_t hash_ = 0;
    long runs_ = 0, failures_ = 0;
    std::map<std::string, long> ended_;
};

int playOne(const Options& options) {
    Plan plan = Plan::parse(options.plan);
    const Outcome outcome = play(plan);
    Report report(true);
    report.take(plan, outcome);
    if (options.shorten && outcome.failed())
        std::printf("shortened: %s\n", shorten(plan, outcome.failedCheck).text().c_str());
    if (play(plan).hash != outcome.hash) std::printf("FAILED: the same plan played otherwise the second time\n");
    report.print(1);
    return report.failed() ? 1 : 0;
}

int playMany(const Options& options) {
    const auto begun = std::chrono::steady_clock::now();
    Report report(options.keepGoing);
    bool goOn = true;
    if (options.smallWorlds)
        for (const Plan& plan : smallWorlds())
            if (goOn) goOn = report.take(plan, play(plan));
    for (std::uint64_t seed = options.first; goOn && seed <= options.last; ++seed) {
        Plan plan = Plan::draw(seed);
        const auto left = static_cast<double>(options.last - seed + 1);
        const double share = (options.days - report.days()) / left * 86'400 - plan.seconds;
        if (share > 0) plan.quietSeconds = static_cast<int>(share);
        goOn = report.take(plan, play(plan));
    }
    report.print(std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count());
    return report.failed() ? 1 : 0;
}

constexpr const char* Usage =
    "Usage: kestrel_simulation [--seeds FIRST-LAST] [--days N] [--small-worlds] [--keep-going]\n"
    "       kestrel_simulation --plan LINE [--shorten]\n";

Options read(int count, char** arguments) {
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string name = arguments[i];
        const auto value = [&] {
            return i + 1 < count ? std::string(arguments[++i]) : throw std::invalid_argument(name);
        };
        if (name == "--seeds") {
            const std::string range = value();
            options.first = std::stoull(range);
            const auto dash = range.find('-');
            options.last = dash == std::string::npos ? options.first : std::stoull(range.substr(dash + 1));
        } else if (name == "--days") {
            options.days = std::stod(value());
        } else if (name == "--plan") {
            options.plan = value();
        } else if (name == "--small-worlds") {
            options.smallWorlds = true;
        } else if (name == "--keep-going") {
            options.keepGoing = true;
        } else if (name == "--shorten") {
            options.shorten = true;
        } else {
            throw std::invalid_argument(name);
        }
    }
    return options;
}

}  // namespace

}  // namespace kestrel::testing

int main(int count, char** arguments) {
    using namespace kestrel::testing;
    try {
        const Options options = read(count, arguments);
        return options.plan.empty() ? playMany(options) : playOne(options);
    } catch (const std::exception& trouble) {
        std::fprintf(stderr, "kestrel_simulation: %s\n%s", trouble.what(), Usage);
        return 2;
    }
}
