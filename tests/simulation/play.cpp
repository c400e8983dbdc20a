// Plays one plan from the start of the program to its end.
// See play.h.
#include "simulation/play.h"

#include <algorithm>
#include <map>
#include <memory>

#include "link/fan_out.h"
#include "link/link_engine.h"
#include "link/param_table.h"
#include "pages/registry.h"
#include "platform/trouble.h"
#include "shell/start_up.h"
#include "shell/windows.h"
#include "simulation/random_user.h"
#include "support/world.h"

namespace kestrel::testing {

namespace {

constexpr Micros Second = 1'000'000;
constexpr Micros PerRecord = Second / 20;
constexpr Micros Ebb = 14 * Second;  ///< until late replies are in and boards are back
constexpr Micros FreshWithin = 5 * Second;
constexpr Micros LongestChunk = 16'000;
constexpr Micros Hang = 60 * Second;

/// The machine under the program, which tells the checks what is about to happen and answers boxes by chance.
class Stage : public VirtualPlatform {
  public:
    explicit Stage(const Plan& plan) : plan_(plan), answersChance_(chanceOf(plan.seed, Chance::Answer)) {
        install(KESTREL_INSTALLATION);
        put("kestrel.ini", "Com=1\r\nLingua=Italiano\r\n");
    }

    std::unique_ptr<TimerBackend> makeTimer(std::function<void()> onExpiry) override {
        // The timer that asks has just been switched on: of the link's own, the one that was off until now.
        const LinkState& link = Link();
        const Timer* const timers[] = {&link.Timer1, &link.Timer2, &link.Timer3, &link.Timer4, &link.ReopenTimer};
        auto role = Checks::Role::Other;
        for (std::size_t i = 0; i < std::size(timers); ++i) {
            if (known_[i] || !timers[i]->Enabled) continue;
            known_[i] = true;
            role = static_cast<Checks::Role>(i);
        }
        return VirtualPlatform::makeTimer([role, onExpiry = std::move(onExpiry)] {
            if (Checks::present()) Checks::present()->beforeTimer(role);
            onExpiry();
        });
    }

    Message::Answer showMessage(const Message& message) override {
        static const std::set<std::string> titles = {"ERROR", "Serial", "Wrong file", "Kestrel", "Error"};
        const bool question = message.buttons == Message::Buttons::YesNo;
        if (!question && !titles.contains(message.title) && !message.title.starts_with("ERROR "))
            failCheck("boxes have known texts", message.title + ": " + message.text);
        require(!boxOpen_, "one box at a time");
        boxOpen_ = true;
        lastBox = message.text;
        if (Checks::present()) ++Checks::present()->counts.boxes;
        for (auto events = answersChance_.between(0, 60); events > 0 && following && !Checks::present()->isSearching();
             --events)
            step();
        boxOpen_ = false;
        if (message.buttons == Message::Buttons::Ok) return Message::Answer::Ok;
        const bool first = answersChance_.chance(0.7);
        if (question) return first ? Message::Answer::Yes : Message::Answer::No;
        return first ? Message::Answer::Retry : Message::Answer::Cancel;
    }

    bool following = false;  ///< events go on under a box
    std::string lastBox;

  private:
    const Plan& plan_;
    simulator::Random answersChance_;
    std::array<bool, 5> known_{};
    bool boxOpen_ = false;
};

struct Incident {
    Micros when;
    int number;  ///< of the act, or of the incident
    Fault fault;
    bool isAct;
    bool operator<(const Incident& other) const { return when < other.when; }
};

/// Pages that by their rules show what the user did there, and not only what the boards hold.
bool showsTheUsersDoings(const Page& page) {
    static const std::set<std::string> names = {"FrmControls", "FrmOrologio", "FrmTestCedar"};
    return names.contains(page.name());
}

class Player {
  public:
    explicit Player(const Plan& plan) : plan_(plan), stage_(plan), line_(plan_), user_(plan_) {
        ResetProgram();
        RegisterPages(AllPages());
        stage_.lines[1] = stage_.lines[2] = &line_;
        line_.onSend = [this](const Bytes& frame) { checks_.sending(frame); };
        line_.target = [] { return std::pair{CurrentBank, Link().ScanIndex}; };
        stage_.beforeArrival = [this](const Bytes& bytes) { checks_.beforeArrival(bytes); };
        stage_.beforeLoss = [this] { checks_.beforeLoss(); };
        stage_.afterEvent = [this] { checks_.afterEvent(); };
    }
    ~Player() { ResetProgram(); }

    Outcome outcome() {
        Outcome result;
        try {
            start();
            trouble();
            heal();
            quiet();
            quit();
        } catch (const CheckFailed& failure) {
            result.failedCheck = failure.check;
            result.detail = failure.detail;
        } catch (const ProcessEnded&) {
            if (!quitting_) result.ended = stage_.lastBox;
        } catch (const RunTimeError& error) {
            if (spoiledDisk_)
                result.ended = error.what();
            else
                result.failedCheck = "no run-time error leaves an event", result.detail = error.what();
        } catch (const std::exception& error) {
            result.failedCheck = "no error leaves an event";
            result.detail = error.what();
        }
        result.hash = checks_.traceHash;
        result.played = stage_.now();
        result.counts = checks_.counts;
        return result;
    }

  private:
    void start() {
        if (plan_.rough) line_.strike(0, true);
        MDIForm_Load("Kestrel");
        checks_.started();
        stage_.following = true;
        line_.strike(stage_.now(), true);
        stage_.chunk = plan_.chunk * Micros{1000};
    }

    /// The user's acts and the incidents, in order of time.
    std::vector<Incident> agenda(Micros from) const {
        std::vector<Incident> all;
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
        for (const Incident& next : agenda(stage_.now())) {
            stage_.runUntil(next.when);
            if (next.isAct)
                user_.act(next.number);
            else
                happen(next);
            ++checks_.counts.acts;
            checks_.afterEvent();
        }
        stage_.runUntil(end);
    }

    void happen(const Incident& incident) {
        auto random = chanceOf(plan_.seed, Chance::Incident, static_cast<std::uint32_t>(incident.number));
        if (incident.fault == Fault::Block) {
            stage_.letPass(random.between(500, 30'000) * 1000);
            checks_.blocked();
        } else if (incident.fault == Fault::Denied) {
            static const std::array<int, 3> reasons = {error_number::SerialBadPort, error_number::SerialPortInUse,
                                                       error_number::SerialNoPermission};
            const bool denied = !stage_.openFailures.empty();
            stage_.openFailures.clear();
            const int reason = reasons[static_cast<std::size_t>(random.between(0, 2))];
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

    /// Counts those that have not been fresh yet, of the records that were wanted when everything healed.
    static std::size_t stillStale(std::vector<std::pair<int, int>>& records) {
        std::erase_if(records, [](const auto& record) {
            const std::uint8_t flags = ParamFlags(record.first, record.second);
            return (flags & flag::Valid) || !(flags & flag::Pending);
        });
        return records.size();
    }

    void heal() {
        line_.strike(stage_.now(), false);
        stage_.openFailures.clear();
        stage_.unwritable.clear();
        stage_.chunk = std::min<Micros>(stage_.chunk, LongestChunk);
        stage_.runUntil(stage_.now() + Ebb);
        std::vector<std::pair<int, int>> stale = subscribeAnew();
        checks_.afterEvent();
        const Micros begun = stage_.now();
        const Micros limit = FreshWithin + static_cast<Micros>(stale.size()) * (PerRecord + stage_.chunk);
        for (bool wasIdle = false; stillStale(stale) > 0 || !wasIdle; wasIdle = wasIdle || Link().LinkIdle) {
            if (stage_.now() - begun > limit)
                failCheck("everything comes right after healing", std::to_string(stale.size()) + " records, bank " +
                                                                      std::to_string(stale[0].first) + " record " +
                                                                      std::to_string(stale[0].second));
            stage_.runUntil(stage_.now() + Second / 50);
        }
        checks_.compareAll();
        compareWithBoards();
        comparePages();
    }

    /// Has every watched record read once more, as the timers of pages do. All that are wanted then.
    static std::vector<std::pair<int, int>> subscribeAnew() {
        std::vector<std::pair<int, int>> wanted;
        for (int bank = 0; bank < Banks; ++bank)
            for (int index = 1; index < RecordCount(bank); ++index) {
                const int watchers = ParamTable(bank, index).Watchers;
                CurrentBank = bank;
                for (int i = 0; i < watchers; ++i) ParamRelease(index);
                for (int i = 0; i < watchers; ++i) ParamWatch(index);
                if (ParamFlags(bank, index) & flag::Pending) wanted.emplace_back(bank, index);
            }
        return wanted;
    }

    void compareWithBoards() const {
        for (int bank = 0; bank < Banks; ++bank)
            for (int index = 1; index < RecordCount(bank); ++index) {
                if (!ParamIsFresh(index, bank) || ParamTable(bank, index).Watchers == 0 || plan_.moving) continue;
                const ParamValue board = line_.machine.value(static_cast<simulator::Board>(bank), index);
                if (ParamRead(index, bank) != board)
                    failCheck("at rest the mirror holds what the boards hold",
                              "bank " + std::to_string(bank) + " record " + std::to_string(index) + " mirror " +
                                  std::to_string(ParamRead(index, bank)) + " board " + std::to_string(board));
            }
    }

    /// No control waits for its board any more, and a page that lived through it all shows what a new one shows.
    void comparePages() {
        std::vector<std::string> names;
        for (Page* page : LoadedPages()) {
            if (!showsTheUsersDoings(*page)) names.push_back(page->name());
            for (const Control* control : controlsOf(*page))
                if (control->waiting() && control->usable() && page->name() != "FrmControls")
                    failCheck("no control waits at rest", page->name() + " " + control->accessibleName());
        }
        if (plan_.moving) return;
        for (const std::string& name : names) {
            Page& old = *FindLoadedPage(name);
            const std::vector<std::string> shown = shownBy(old);
            const SelectorPositions selected(old);
            old.UserClose();
            checks_.afterEvent();
            ShowPage(name);
            checks_.afterEvent();
            comeToRest();
            selected.chooseIn(*FindLoadedPage(name));
            checks_.afterEvent();
            comeToRest();
            const std::vector<std::string> anew = shownBy(*FindLoadedPage(name));
            for (std::size_t i = 0; i < shown.size(); ++i)
                if (shown[i] != anew.at(i))
                    failCheck("a page shows what a new one shows",
                              name + ": " + shown[i] + " not " + anew[i] + " (" + std::to_string(i) + ")");
        }
    }

    void comeToRest() {
        const Micros limit = stage_.now() + Hang;
        while (UnsettledRecords() > 0 && stage_.now() < limit) stage_.runUntil(stage_.now() + Second / 50);
        stage_.runUntil(stage_.now() + FreshWithin);  // records that were fresh before are told once more
    }

    void quiet() {
        ClosePages();
        checks_.afterEvent();
        stage_.runUntil(stage_.now() + plan_.quietSeconds * Second);
    }

    void quit() {
        quitting_ = true;
        MDIForm_Unload();
    }

    const Plan plan_;
    Stage stage_;
    FaultLine line_;
    Checks checks_{stage_, line_};
    RandomUser user_;
    bool spoiledDisk_ = false;
    bool quitting_ = false;
};

}  // namespace

Outcome play(const Plan& plan) { return std::make_unique<Player>(plan)->outcome(); }

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
