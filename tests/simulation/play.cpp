// Plays one plan from the start of the program to its end.
// See play.h.
#include "simulation/play.h"

#include <algorithm>
#include <memory>

#include "link/fan_out.h"
#include "link/link_engine.h"
#include "link/param_table.h"
#include "pages/registry.h"
#include "platform/trouble.h"
#include "shell/start_up.h"
#include "shell/windows.h"
#include "simulation/random_user.h"
#include "simulation/rest.h"
#include "simulation/small_worlds.h"
#include "simulation/stage.h"

namespace kestrel::testing {

namespace {

constexpr Micros Second = 1'000'000;
constexpr Micros ScriptStep = Second / 4;

struct Happening {
    Micros when;
    int number;  ///< of the act, or of the incident
    Fault fault;
    bool isAct;
    bool operator<(const Happening& other) const { return when < other.when; }
};

class Player {
  public:
    explicit Player(const Plan& plan) : plan_(plan), stage_(plan_), line_(plan_), user_(plan_) {
        ResetProgram();
        RegisterPages(withSmallPage(AllPages()));
        stage_.lines[1] = stage_.lines[2] = &line_;
        line_.onSend = [this](const Bytes& frame) { checks_.sending(frame); };
        line_.target = [] { return std::pair{CurrentBank, Link().ScanIndex}; };
        stage_.beforeArrival = [this](const Bytes& bytes) { checks_.beforeArrival(bytes); };
        stage_.beforeLoss = [this] { checks_.beforeLoss(); };
        stage_.afterEvent = [this] { afterEvent(); };
    }
    ~Player() { ResetProgram(); }

    Outcome outcome() {
        Outcome result;
        try {
            playAll();
        } catch (const CheckFailed& failure) {
            result.failedCheck = failure.check;
            result.detail = failure.detail;
        } catch (const EndedByRules& rule) {
            result.ended = rule.why;
        } catch (const ProcessEnded&) {
            if (!quitting_) result.ended = stage_.lastBox;
        } catch (const std::exception& error) {
            const bool byTheRules = spoiledDisk_ && dynamic_cast<const RunTimeError*>(&error);
            (byTheRules ? result.ended : result.failedCheck) = byTheRules ? error.what() : "no error leaves an event";
            result.detail = error.what();
        }
        result.hash = checks_.traceHash;
        result.played = stage_.now();
        result.counts = checks_.counts;
        return result;
    }

  private:
    void playAll() {
        if (plan_.rough) line_.strike(0, true);
        MDIForm_Load("Kestrel");
        checks_.started();
        stage_.started = true;
        line_.strike(stage_.now(), true);
        stage_.chunk = plan_.chunk * Micros{1000};
        begun_ = checks_.counts.events;
        for (std::size_t i = 0; plan_.stay && i < plan_.pages.size(); ++i) RandomUser::open(plan_.pages[i]);
        checks_.afterEvent();
        trouble();
        begun_ = -1;
        rest_.comeRight();
        checks_.compareAll();
        rest_.compareWithBoards();
        rest_.nothingWaits();
        rest_.comparePagesWithNewOnes();
        stage_.runUntil(stage_.now() + plan_.quietSeconds * Second);
        checks_.compareAll();
        rest_.compareWithBoards();
        ClosePages();
        checks_.afterEvent();
        rest_.onlyUnlikeListsAreLeft();
        stage_.runUntil(stage_.now() + 10 * Second);
        checks_.compareAll();
        quitting_ = true;
        MDIForm_Unload();
    }

    void afterEvent() {
        checks_.afterEvent();
        if (plan_.singleAt == 0 || plan_.single < Fault::Busy || begun_ < 0) return;
        if (checks_.counts.events - begun_ == plan_.singleAt) happen({stage_.now(), 1, plan_.single, false});
    }

    /// The user's acts and the incidents, in order of time.
    std::vector<Happening> agenda() const {
        std::vector<Happening> all;
        const Micros from = stage_.now();
        for (std::size_t i = 0; i < plan_.script.size(); ++i)
            all.push_back({from + static_cast<Micros>(i) * ScriptStep, static_cast<int>(i), Fault::Silent, true});
        for (const int number : plan_.acts) {
            auto random = chanceOf(plan_.seed, Chance::Act, static_cast<std::uint32_t>(number) + 1'000'000);
            all.push_back({from + random.between(0, plan_.seconds * Second), number, Fault::Silent, true});
        }
        for (std::size_t i = FirstIncident; i < FaultCount; ++i) {
            auto random = chanceOf(plan_.seed, Chance::Incident, static_cast<std::uint32_t>(i));
            const auto count = static_cast<int>(plan_.strength[i] * plan_.seconds / 60 + 0.9);
            for (int n = 0; n < count; ++n)
                all.push_back({from + random.between(0, plan_.seconds * Second), static_cast<int>(i) * 1000 + n,
                               static_cast<Fault>(i), false});
        }
        std::stable_sort(all.begin(), all.end());
        return all;
    }

    void trouble() {
        const Micros end = stage_.now() + plan_.seconds * Second;
        for (const Happening& next : agenda()) {
            stage_.runUntil(next.when);
            if (!next.isAct)
                happen(next);
            else if (!plan_.script.empty())
                actInSmallWorld(plan_.script[static_cast<std::size_t>(next.number)]);
            else
                user_.act(next.number);
            ++checks_.counts.acts;
            checks_.afterEvent();
        }
        stage_.runUntil(end);
    }

    /// Incidents are aimed: at any moment, while the program waits for a reply, or when half of one has come.
    void awaitItsState(const Dice& chance) {
        auto random = chance;
        const auto aim = random.between(0, 2);
        const Micros limit = stage_.now() + Second;
        const auto reached = [aim] {
            return aim == 0 || (!Link().LinkIdle && (aim == 1 || Link().Comm1->InBufferCount() > 0));
        };
        while (!reached() && stage_.stepUntil(limit)) continue;
    }

    void happen(const Happening& incident) {
        auto random = chanceOf(plan_.seed, Chance::Incident, static_cast<std::uint32_t>(incident.number));
        if (plan_.singleAt == 0) awaitItsState(random);
        if (incident.fault == Fault::Block) {
            const Micros length = random.between(500, 30'000) * 1000;
            line_.standStill(stage_.now(), length);
            stage_.letPass(length);
            checks_.blocked();
        } else if (incident.fault == Fault::Denied) {
            constexpr std::array<int, 3> Reasons = {error_number::SerialBadPort, error_number::SerialPortInUse,
                                                    error_number::SerialNoPermission};
            const bool denied = !stage_.openFailures.empty();
            stage_.openFailures.clear();
            const int reason = Reasons[static_cast<std::size_t>(random.between(0, 2))];
            if (!denied) stage_.openFailures[Link().ComPort] = {reason, "denied"};
        } else if (incident.fault == Fault::Disk) {
            spoiledDisk_ = true;
            stage_.unwritable = {stage_.directory.string()};
            if (random.chance(0.5)) stage_.put("English.lng", "a\r\n");
            if (random.chance(0.2)) stage_.unreadable.insert((stage_.directory / "Deutsch.lng").string());
        } else {
            line_.begin(stage_.now(), incident.fault, incident.number);
        }
    }

    const Plan plan_;
    Stage stage_;
    FaultLine line_;
    Checks checks_{stage_, line_};
    RandomUser user_;
    Rest rest_{plan_, stage_, line_};
    long begun_ = -1;  ///< events before the trouble
    bool spoiledDisk_ = false;
    bool quitting_ = false;
};

}  // namespace

Outcome play(const Plan& plan) {
    try {
        Rest::learn();
    } catch (const ProcessEnded&) {
        Outcome result;
        result.failedCheck = "the program starts on a line without faults";
        return result;
    }
    return std::make_unique<Player>(plan)->outcome();
}

Plan shorten(const Plan& plan, const std::string& failedCheck) {
    Plan best = plan;
    const auto tryThis = [&](const Plan& candidate) {
        if (play(candidate).failedCheck != failedCheck) return false;
        best = candidate;
        return true;
    };
    for (std::size_t i = 0; i < FaultCount; ++i) {
        if (best.strength[i] == 0) continue;
        Plan less = best;
        less.strength[i] = 0;
        tryThis(less);
    }
    for (std::size_t piece = best.acts.size(); piece > 0; piece /= 2)
        for (std::size_t from = 0; from < best.acts.size();) {
            Plan less = best;
            const auto first = less.acts.begin() + static_cast<std::ptrdiff_t>(from);
            less.acts.erase(first, first + static_cast<std::ptrdiff_t>(std::min(piece, less.acts.size() - from)));
            if (!tryThis(less)) from += piece;
        }
    return best;
}

}  // namespace kestrel::testing
