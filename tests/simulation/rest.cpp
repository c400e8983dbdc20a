// What must hold when the trouble is over.
// See rest.h.
#include "simulation/rest.h"

#include <algorithm>
#include <set>

#include "link/fan_out.h"
#include "link/link_engine.h"
#include "link/param_table.h"
#include "shell/windows.h"
#include "simulation/checks.h"
#include "simulation/random_user.h"
#include "simulation/say.h"
#include "support/world.h"

namespace kestrel::testing {

namespace {

constexpr Micros Second = 1'000'000;
constexpr Micros Ebb = 14 * Second;  ///< until late replies are in and boards are back
constexpr Micros FreshWithin = 5 * Second;
constexpr Micros PerRecord = Second / 20;
constexpr Micros LongestChunk = Second / 60;
constexpr Micros Hang = 60 * Second;
constexpr int LongestGate = 16;  ///< passes, where the index files name any refresh bytes

using Places = std::vector<std::pair<int, int>>;

/// Pages that by their rules show what the user did there, and not only what the boards hold.
bool showsTheUsersDoings(const Page& page) {
    static const std::set<std::string> names = {"FrmControls", "FrmOrologio", "FrmTestCedar"};
    return names.contains(page.name());
}

/// Has every watched record read once more, as the timers of pages do. All that are wanted then.
Places subscribeAnew() {
    Places wanted;
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

void dropFresh(Places& records) {
    std::erase_if(records, [](const auto& record) {
        const std::uint8_t flags = ParamFlags(record.first, record.second);
        return (flags & flag::Valid) || !(flags & flag::Pending);
    });
}

/// Subscriptions that pages leave behind since they release other records than they watch.
const std::set<std::pair<int, int>>& leftByUnlikeLists() {
    static const auto left = [] {
        std::set<std::pair<int, int>> places;
        World world;
        world.start();
        for (const auto& [name, factory] : AllPages()) {
            ShowPage(name);
            ClosePages();
        }
        for (int bank = 0; bank < Banks; ++bank)
            for (int index = 1; index < RecordCount(bank); ++index)
                if (ParamTable(bank, index).Watchers > 0) places.emplace(bank, index);
        return places;
    }();
    return left;
}

}  // namespace

void Rest::comeRight() {
    line_.strike(stage_.now(), false);
    stage_.openFailures.clear();
    stage_.unwritable.clear();
    stage_.chunk = std::min(stage_.chunk, LongestChunk);
    stage_.runUntil(stage_.now() + Ebb);
    Places stale = subscribeAnew();
    Checks::present()->afterEvent();
    const Micros each = PerRecord + stage_.chunk;
    const Micros limit = (FreshWithin + static_cast<Micros>(stale.size()) * each) * (plan_.strange ? LongestGate : 1);
    const Micros begun = stage_.now();
    for (bool wasIdle = false; !stale.empty() || !wasIdle; wasIdle = wasIdle || Link().LinkIdle) {
        if (stage_.now() - begun > limit)
            failCheck(
                "everything comes right after healing",
                say(stale.size(), " records", stale.empty() ? "" : ", " + place(stale[0].first, stale[0].second)));
        stage_.runUntil(stage_.now() + Second / 50);
        dropFresh(stale);
    }
}

void Rest::compareWithBoards() const {
    if (plan_.moving) return;
    for (int bank = 0; bank < Banks; ++bank)
        for (int index = 1; index < RecordCount(bank); ++index) {
            if (!ParamIsFresh(index, bank) || ParamTable(bank, index).Watchers == 0) continue;
            const ParamValue board = line_.machine.value(static_cast<simulator::Board>(bank), index);
            if (ParamRead(index, bank) != board)
                failCheck("at rest the mirror holds what the boards hold",
                          say(place(bank, index), " mirror ", ParamRead(index, bank), " board ", board));
        }
}

void Rest::nothingWaits() const {
    for (Page* page : LoadedPages()) {
        if (page->name() == "FrmControls") continue;  // which shows the mark
        for (const Control* control : controlsOf(*page))
            if (control->waiting() && control->usable())
                failCheck("no control waits at rest", page->name() + " " + control->accessibleName());
    }
}

void Rest::comparePagesWithNewOnes() {
    if (plan_.moving) return;
    for (Page* page : LoadedPages()) {
        if (showsTheUsersDoings(*page)) continue;
        const std::string name = page->name();
        const std::vector<std::string> shown = shownBy(*page);
        const SelectorPositions selected(*page);
        page->UserClose();
        ShowPage(name);
        Checks::present()->afterEvent();
        waitForValues();
        selected.chooseIn(*FindLoadedPage(name));
        Checks::present()->afterEvent();
        waitForValues();
        const std::vector<std::string> anew = shownBy(*FindLoadedPage(name));
        for (std::size_t i = 0; i < shown.size(); ++i)
            if (shown[i] != anew.at(i))
                failCheck("a page shows what a new one shows",
                          say(name, " control ", i, " \"", shown[i], "\" not \"", anew[i], "\""));
    }
}

void Rest::waitForValues() {
    const Micros limit = stage_.now() + Hang;
    while (UnsettledRecords() > 0 && stage_.now() < limit) stage_.runUntil(stage_.now() + Second / 50);
    stage_.runUntil(stage_.now() + FreshWithin);  // records that were fresh before are told once more
}

void Rest::learn() { leftByUnlikeLists(); }

void Rest::onlyUnlikeListsAreLeft() const {
    for (int bank = 0; bank < Banks; ++bank)
        for (int index = 1; index < RecordCount(bank); ++index)
            if (ParamTable(bank, index).Watchers > 0 && !leftByUnlikeLists().contains({bank, index}))
                failCheck("closed pages leave no subscription", place(bank, index));
}

}  // namespace kestrel::testing
