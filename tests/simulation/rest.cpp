// What must hold when the trouble is over.
// See rest.h.
#include "simulation/rest.h"

#include <algorithm>
#include <set>

#include "link/fan_out.h"
#include "link/link_engine.h"
#include "link/param_table.h"
#include "pages/beverage/recipe.h"
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
constexpr Micros LongestOrder = 1200 * Second;  ///< where every time of a recipe is the highest
constexpr int LongestGate = 16;                 ///< passes, where the index files name any refresh bytes

using Place = std::pair<int, int>;

/// Pages that by their rules show what the user did there, and not only what the boards hold.
bool showsTheUsersDoings(const Page& page) {
    static const std::set<std::string> names = {"FrmControls", "FrmOrologio", "FrmTestCedar"};
    return names.contains(page.name());
}

struct Run {
    int bank, first, last;
};
/// What boards change by themselves even where the machine does nothing: the outputs and the state of a test, which
/// runs out, and the clock.
constexpr std::array<Run, 3> MoveByThemselves = {{{0, 244, 248}, {1, 1292, 1297}, {2, 288, 290}}};

bool movesByItself(int bank, int index) {
    return std::any_of(MoveByThemselves.begin(), MoveByThemselves.end(),
                       [&](const Run& run) { return bank == run.bank && index >= run.first && index <= run.last; });
}

/// Its outputs go off when the test runs out: what the page showed a moment ago is no more.
bool showsARunningTest(const Page& page) {
    return page.name() == "FrmInOut" && (ParamRead(1297, 1) != 0 || ParamRead(290, 2) != 0);
}

template <class Visit>
void eachRecord(Visit&& visit) {
    for (int bank = 0; bank < Banks; ++bank)
        for (int index = 1; index < RecordCount(bank); ++index) visit(bank, index);
}

/// Has every watched record read once more, as the timers of pages do. All that are wanted then.
std::vector<Place> subscribeAnew() {
    std::vector<Place> wanted;
    eachRecord([&](int bank, int index) {
        const int watchers = ParamTable(bank, index).Watchers;
        CurrentBank = bank;
        for (int i = 0; i < watchers; ++i) ParamRelease(index);
        for (int i = 0; i < watchers; ++i) ParamWatch(index);
        if (ParamFlags(bank, index) & flag::Pending) wanted.emplace_back(bank, index);
    });
    return wanted;
}

void dropFresh(std::vector<Place>& records) {
    std::erase_if(records, [](const auto& record) {
        const std::uint8_t flags = ParamFlags(record.first, record.second);
        return (flags & flag::Valid) || !(flags & flag::Pending);
    });
}

/// A page took a write for a board that is not there: it waits for ever.
bool writeWaitsForAbsentBoard(int upTo[Banks]) {
    for (int bank = 0; bank < Banks; ++bank)
        for (int index = 1; !BoardPresent(bank) && index < upTo[bank]; ++index)
            if (ParamFlags(bank, index) & flag::Pending) return true;
    return false;
}

bool someWriteWaitsForAbsentBoard() {
    int all[Banks] = {ParamRecords, ParamRecords, ParamRecords};
    return writeWaitsForAbsentBoard(all);
}

/// The scan walks as many empty records of a board that is not there as its identity file has, and stays at one that
/// was written.
bool scanWaitsForAbsentBoard() {
    int reached[Banks] = {RecordCount(0), RecordCount(1), RecordCount(2)};
    return writeWaitsForAbsentBoard(reached);
}

/// Subscriptions that pages leave behind since they release other records than they watch.
const std::set<Place>& leftByUnlikeLists() {
    static std::set<Place> places;
    if (!places.empty()) return places;
    World world;
    world.start();
    const auto keep = [] {
        eachRecord([](int bank, int index) {
            if (ParamTable(bank, index).Watchers > 0) places.emplace(bank, index);
        });
    };
    for (const auto& [name, factory] : AllPages()) {
        ShowPage(name);
        ClosePages();
    }
    keep();
    // The page of doses keeps every selection that was chosen by its key.
    for (int selection = 0; selection < RecipeSelections; ++selection) EachParameterOfSelection(selection, WatchAll);
    keep();
    return places;
}

/// How many of these are watched: the payment page releases them twice, and so takes them from other pages.
int watchedOfTheTwiceReleased() {
    int count = 0;
    for (const int index : {84, 85, 330}) count += ParamTable(0, index).Watchers > 0 ? 1 : 0;
    return count;
}

}  // namespace

void Rest::comeRight() {
    line_.strike(stage_.now(), false);
    stage_.openFailures.clear();
    stage_.unwritable.clear();
    stage_.chunk = std::min(stage_.chunk, LongestChunk);
    stage_.runUntil(stage_.now() + Ebb);
    // The page of doses gives its order again whenever its argument is read, until it saw the order carried out.
    const Micros limit = stage_.now() + LongestOrder;
    const auto carriesOutAnOrder = [this] { return (line_.machine.value(simulator::Board::Master, 7) & 2) != 0; };
    while (carriesOutAnOrder() && stage_.now() < limit) stage_.runUntil(stage_.now() + Second);
    stage_.runUntil(stage_.now() + FreshWithin);
    readAll();
}

void Rest::readAll() {
    const Micros hang = stage_.now() + Hang;
    while (!Link().LinkIdle && stage_.stepUntil(hang)) continue;  // no cursor moves under an open exchange
    std::vector<Place> stale = subscribeAnew();
    Checks::present()->afterEvent();
    const Micros each = PerRecord + stage_.chunk;
    const Micros plain = FreshWithin + static_cast<Micros>(stale.size()) * each;
    const Micros begun = stage_.now();
    const long left = Checks::present()->counts.leftFrames;
    for (bool wasIdle = false; !stale.empty() || !wasIdle; wasIdle = wasIdle || Link().LinkIdle) {
        // A record whose reply was dropped, since a page moved the bank under it, is sent again when its gate opens.
        const bool waitsForItsGate = plan_.strange || Checks::present()->counts.leftFrames > left;
        const Micros limit = waitsForItsGate ? plain * LongestGate : plain;
        if (scanWaitsForAbsentBoard()) throw EndedByRules{"a write waits for a board that is not there"};
        if (stage_.now() - begun > limit && Checks::present()->repeatsAStrayFrame())
            throw EndedByRules{"a request is repeated for another bank, to which a page moved"};
        if (stage_.now() - begun > limit)
            failCheck("everything comes right after healing",
                      say(stale.size(), " records", stale.empty() ? "" : ", " + place(stale[0].first, stale[0].second),
                          "; the scan is at ", place(CurrentBank, Link().ScanIndex),
                          Link().LinkIdle ? ", idle" : ", waiting"));
        stage_.runUntil(stage_.now() + Second / 50);
        dropFresh(stale);
    }
}

void Rest::compareWithBoards() const {
    if (plan_.moving) return;
    eachRecord([this](int bank, int index) {
        if (movesByItself(bank, index) || !ParamIsFresh(index, bank) || ParamTable(bank, index).Watchers == 0) return;
        const ParamValue board = line_.machine.value(static_cast<simulator::Board>(bank), index);
        if (ParamRead(index, bank) != board && !Checks::present()->isMisfiled(bank, index))
            failCheck("at rest the mirror holds what the boards hold",
                      say(place(bank, index), " mirror ", ParamRead(index, bank), " board ", board));
    });
}

void Rest::nothingWaits() const {
    for (Page* page : LoadedPages()) {
        if (page->name() == "FrmControls") continue;  // which shows the mark
        for (const Control* control : controlsOf(*page))
            if (control->waiting() && control->usable() && !someWriteWaitsForAbsentBoard())
                failCheck("no control waits at rest", page->name() + " " + control->accessibleName());
    }
}

void Rest::comparePagesWithNewOnes() {
    if (plan_.moving) return;
    Counts& counts = Checks::present()->counts;
    const long moved = counts.movedBanks;
    for (Page* page : LoadedPages()) {
        ++counts.pagesExcused;
        if (showsTheUsersDoings(*page) || showsARunningTest(*page)) continue;
        readAll();  // once more: some values are shown within limits that come behind them
        const std::string name = page->name();
        const std::vector<std::string> shown = shownBy(*page);
        const SelectorPositions selected(*page);
        const int watched = watchedOfTheTwiceReleased();
        page->UserClose();
        ShowPage(name);
        Checks::present()->afterEvent();
        readAll();
        selected.chooseIn(*FindLoadedPage(name));
        Checks::present()->afterEvent();
        readAll();
        readAll();
        if (watchedOfTheTwiceReleased() != watched || counts.movedBanks > moved) continue;
        if (selected != SelectorPositions(*FindLoadedPage(name))) continue;  // its frame is closed
        --counts.pagesExcused;
        ++counts.pagesCompared;
        const std::vector<std::string> anew = shownBy(*FindLoadedPage(name));
        for (std::size_t i = 0; i < shown.size(); ++i)
            if (!shown[i].empty() && shown[i] != anew.at(i))
                failCheck("a page shows what a new one shows",
                          say(name, " control ", i, " \"", shown[i], "\" not \"", anew[i], "\""));
    }
}

void Rest::learn() { leftByUnlikeLists(); }

void Rest::onlyUnlikeListsAreLeft() const {
    eachRecord([](int bank, int index) {
        if (ParamTable(bank, index).Watchers > 0 && !leftByUnlikeLists().contains({bank, index}))
            failCheck("closed pages leave no subscription", place(bank, index));
    });
}

}  // namespace kestrel::testing
