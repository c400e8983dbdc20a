// Plays many simulated runs and tells what was found: of a failure the check and the plan in one line, which plays it
// again to the letter; and the table of what was counted.
#include <csignal>
#include <cstdio>
#include <ctime>
#include <exception>
#include <map>
#include <numeric>
#include <string>

#include "simulation/play.h"
#include "simulation/small_worlds.h"

namespace kestrel::testing {

namespace {

constexpr double MicrosPerDay = 86'400e6;
constexpr std::uint64_t PlayedTwice = 5;  ///< every fifth seed

volatile std::sig_atomic_t stopped = 0;

struct Options {
    std::uint64_t first = 1, last = 200;
    double days = 0;  ///< to be played at least; what the trouble leaves passes with the pages left open
    bool smallWorlds = false;
    int fivePages = 0;  ///< hours that five pages stay open in each run, to measure the speed
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

    void print(double seconds) const {
        std::printf(
            "%ld runs, %ld failed, %.2f machine-days in %.1f s of a processor: %.0f times life; trace %016llx\n", runs_,
            failures_, days(), seconds, static_cast<double>(played_) / 1e6 / seconds,
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
                    {"(b) frames behind which a page moved the bank", counts_.leftFrames},
                    {"(c) late replies taken for another's", counts_.lateReplies},
                    {"(d) spoiled bytes taken for a reply", counts_.blindReplies},
                    {"writes left behind by a closed page", counts_.orphanWrites},
                    {"pages compared at rest with new ones", counts_.pagesCompared},
                    {"pages at rest that a known cause excused", counts_.pagesExcused}};
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
    const Plan plan = Plan::parse(options.plan);
    const Outcome outcome = play(plan);
    Report report(true);
    report.take(plan, outcome);
    if (options.shorten && outcome.failed())
        std::printf("shortened: %s\n", shorten(plan, outcome.failedCheck).text().c_str());
    report.print(1);
    return report.failed() ? 1 : 0;
}

/// The five busiest pages, and a user who does something every ten seconds.
void keepFivePagesOpen(Plan& plan, int hours) {
    plan.stay = true;
    plan.seconds = hours * 3600;
    plan.hotDrinkBoard = plan.sectorBoard = true;
    plan.pages = {"FrmDosi", "FrmInOut", "FrmPagamento", "FrmTotali", "FrmTempi"};
    plan.actsPerMinute = 6;
    plan.acts.resize(static_cast<std::size_t>(hours) * 60 * static_cast<std::size_t>(plan.actsPerMinute));
    std::iota(plan.acts.begin(), plan.acts.end(), 0);
}

int playMany(const Options& options) {
    const std::clock_t begun = std::clock();
    Report report(options.keepGoing);
    bool goOn = true;
    if (options.smallWorlds)
        for (const Plan& plan : smallWorlds())
            if (goOn) goOn = report.take(plan, play(plan));
    for (const int signal : {SIGINT, SIGTERM}) std::signal(signal, [](int) { stopped = 1; });
    for (std::uint64_t seed = options.first; goOn && !stopped && seed <= options.last; ++seed) {
        Plan plan = Plan::draw(seed);
        if (options.fivePages > 0) keepFivePagesOpen(plan, options.fivePages);
        const auto left = static_cast<double>(options.last - seed + 1);
        const double share = (options.days - report.days()) / left * 86'400 - plan.seconds;
        if (share > 0) plan.quietSeconds = static_cast<int>(share);
        Outcome outcome = play(plan);
        if (seed % PlayedTwice == 0 && play(plan).hash != outcome.hash)
            outcome.failedCheck = "the same plan plays the same way";
        goOn = report.take(plan, outcome);
    }
    report.print(static_cast<double>(std::clock() - begun) / CLOCKS_PER_SEC);
    return report.failed() ? 1 : 0;
}

constexpr const char* Usage =
    "Usage: kestrel_simulation [--seeds FIRST-LAST] [--days N] [--small-worlds] [--five-pages HOURS] [--keep-going]\n"
    "       kestrel_simulation --plan LINE [--shorten]\n"
    "A long run can be stopped by SIGINT or SIGTERM, and tells then what was played.\n";

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
        } else if (name == "--five-pages") {
            options.fivePages = std::stoi(value());
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
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    try {
        const Options options = read(count, arguments);
        return options.plan.empty() ? playMany(options) : playOne(options);
    } catch (const std::exception& trouble) {
        std::fprintf(stderr, "kestrel_simulation: %s\n%s", trouble.what(), Usage);
        return 2;
    }
}
