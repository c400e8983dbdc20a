// Plays one plan from the start of the program to its end.
#include "simulation/play.h"

#include <map>
#include <memory>

#include "link/link_engine.h"
#include "pages/registry.h"
#include "platform/errors.h"
#include "shell/session.h"
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

/// What happens when: an act of the user, or an incident with its name; and its number.
using Agenda = std::multimap<Micros, std::pair<std::string, int>>;

class Player {
  public:
    explicit Player(const Plan& plan) : plan_(plan), stage_(plan_), line_(plan_), user_(plan_, checks_.ledger) {
        RegisterPages(withSmallPage(AllPages()));
        stage_.lines[1] = stage_.lines[2] = &line_;
        stage_.checks = &checks_;
        line_.onSend = [this](const Bytes& frame) { checks_.sending(frame); };
        line_.onHeard = [this](const simulator::Exchange& exchange) { checks_.ledger.heard(exchange); };
        stage_.beforeArrival = [this](const Bytes& bytes) { checks_.beforeArrival(bytes); };
        stage_.beforeLoss = [this] { checks_.beforeLoss(); };
        stage_.afterEvent = [this] { afterEvent(); };
    }

    Outcome outcome() {
        Outcome result;
        try {
            playAll();
        } catch (const CheckFailed& failure) {
            result.failedCheck = failure.check;
            result.detail = failure.detail;
        } catch (const ProcessEnded&) {
            if (!quitting_) result.ended = stage_.lastBox;
            if (quitting_ && stage_.portOpen()) result.failedCheck = "the port is closed at the end";
        } catch (const std::exception& error) {
            const bool byTheRules = stage_.diskIsSpoiled() && dynamic_cast<const RunTimeError*>(&error);
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
        if (plan_.rough) line_.strike(true);
        line_.machine().setBoardSilent(static_cast<simulator::Board>(plan_.late), plan_.late > 0);
        MDIForm_Load("Kestrel");
        line_.machine().setBoardSilent(static_cast<simulator::Board>(plan_.late), false);
        checks_.started();
        stage_.started = true;
        line_.strike(true);
        line_.setLatency(plan_.chunk * simulator::millisecond);
        for (std::size_t i = 0; plan_.stay && i < plan_.pages.size(); ++i) RandomUser::open(plan_.pages[i]);
        checks_.afterEvent();
        trouble();
        rest_.comeRight();
        checks_.ledger.atRest();
        stage_.runUntil(stage_.now() + plan_.quiet * Second);
        checks_.compareAll();
        rest_.compareWithBoards();
        rest_.awaitIdle();
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
        if (begun_ > 0 && checks_.counts[Events] == begun_ + plan_.event) happen(plan_.single, 0);
    }

    Agenda agenda() const {
        Agenda all;
        const auto add = [&](std::uint32_t part, int number, const std::string& incident) {
            auto random = chanceOf(plan_.seed, Chance::When, part * 1'000'000 + static_cast<std::uint32_t>(number));
            all.insert({stage_.now() + random.between(0, plan_.seconds * Second), {incident, number}});
        };
        for (int i = 0; i < std::ssize(plan_.script); ++i) all.insert({stage_.now() + i * ScriptStep, {"", i}});
        for (const int number : plan_.acts) add(0, number, "");
        for (std::uint32_t kind = 0; kind < allIncidents().size(); ++kind) {
            const auto found = plan_.incidents.find(allIncidents()[kind]);
            if (found == plan_.incidents.end()) continue;
            for (int n = 0; n < found->second * plan_.seconds / 60; ++n) add(kind + 1, n, found->first);
        }
        return all;
    }

    void trouble() {
        const Micros end = stage_.now() + plan_.seconds * Second;
        if (plan_.event > 0) begun_ = checks_.counts[Events];
        for (const auto& [when, what] : agenda()) {
            const auto& [incident, number] = what;
            stage_.runUntil(when);
            if (!incident.empty()) {
                awaitItsState(number);
                happen(incident, number);
            } else if (!plan_.script.empty()) {
                actInSmallWorld(plan_.script[static_cast<std::size_t>(number)]);
            } else {
                user_.act(number);
            }
            ++checks_.counts[Acts];
            checks_.afterEvent();
        }
        stage_.runUntil(end);
        user_.letGo();
        checks_.afterEvent();
        begun_ = 0;
    }

    /// Incidents are aimed: at any moment, while the program waits for a reply, or when half of one has come.
    void awaitItsState(int number) {
        const Micros limit = stage_.now() + Second;
        const auto reached = [aim = number % 3] {
            return aim == 0 || (!Link().LinkIdle && (aim == 1 || Link().Comm1->InBufferCount() > 0));
        };
        while (!reached() && stage_.stepUntil(limit)) continue;
    }

    void happen(const std::string& incident, int number) {
        auto random = chanceOf(plan_.seed, Chance::Incident, static_cast<std::uint32_t>(number));
        if (incident == LoopBlocked) {
            if (!line_.present()) return;  // a device that comes and goes meanwhile is not noticed
            const Micros length = random.between(500, 30'000) * 1000;
            line_.standStill(stage_.now(), length);
            stage_.letPass(length);
            checks_.blocked();
        } else if (incident == WindowClosed) {
            quitting_ = true;
            MDIForm_Unload();
        } else if (!stage_.begin(incident, random)) {
            line_.begin(stage_.now(), incident);
        }
    }

    const Plan plan_;
    Stage stage_;
    FaultLine line_;
    Session session_;
    Checks checks_{stage_, line_};
    RandomUser user_;
    Rest rest_{plan_, stage_, line_, checks_};
    long begun_ = 0;  ///< events before the trouble, where one incident strikes at an event
    bool quitting_ = false;
};

}  // namespace

Outcome play(const Plan& plan) {
    try {
        Rest::learn();
    } catch (const ProcessEnded&) {
        return {.failedCheck = "the program starts on a line without faults", .detail = "", .ended = ""};
    }
    return std::make_unique<Player>(plan)->outcome();
}

Plan shorten(const Plan& plan, const std::string& failedCheck) {
    Plan best = plan;
    const auto tryWithout = [&](auto&& drop) {
        Plan less = best;
        drop(less);
        if (play(less).failedCheck == failedCheck) best = less;
    };
    for (const auto& fault : plan.faults) tryWithout([&](Plan& less) { less.faults.erase(fault.first); });
    for (const auto& fault : plan.incidents) tryWithout([&](Plan& less) { less.incidents.erase(fault.first); });
    for (auto i = std::ssize(plan.acts) - 1; i >= 0; --i)
        tryWithout([i](Plan& less) { less.acts.erase(less.acts.begin() + i); });
    return best;
}

}  // namespace kestrel::testing
