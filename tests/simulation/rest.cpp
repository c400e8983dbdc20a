// What must hold when the trouble is over.
#include "simulation/rest.h"

#include <algorithm>
#include <set>

#include "link/link_engine.h"
#include "link/loaded_pages.h"
#include "link/param_table.h"
#include "link/recheck.h"
#include "pages/beverage/recipe.h"
#include "platform/outside.h"
#include "shell/windows.h"
#include "simulation/random_user.h"
#include "support/world.h"

namespace kestrel::testing {

namespace {

constexpr Micros Second = 1'000'000;
constexpr Micros Ebb = 14 * Second;  ///< until late replies are in and boards are back
constexpr int OpeningsTried = 10;    ///< the user may say no to other boards
constexpr Micros FreshWithin = 5 * Second;
constexpr Micros PerRecord = Second / 20;
constexpr int LongestChunk = 16;  ///< milliseconds
constexpr Micros Hang = 60 * Second;
constexpr Micros LongestOrder = 1200 * Second;  ///< where every time of a recipe is the highest
constexpr int LongestGate = 16;                 ///< passes, where the index files name any refresh bytes

/// The payment page releases these twice, and so takes them from other pages.
constexpr std::array<int, 3> TwiceReleased = {84, 85, 330};
const std::set<std::string> ShowTheTwiceReleased = {"FrmOpzioni", "FrmPagamento", "FrmPrezzi"};

using Records = std::set<std::pair<int, int>>;

/// Pages that by their rules show what the user did there, and not only what the boards hold; and a running test, whose
/// outputs go off when it runs out.
bool showsMoreThanTheBoards(const Page& page) {
    static const std::set<std::string> names = {"FrmOrologio", "FrmTestCedar"};
    const bool testing = ParamRead(1297, 1) != 0 || ParamRead(290, 2) != 0;
    return names.contains(page.name()) || (page.name() == "FrmInOut" && testing);
}

/// What boards change by themselves even where the machine does nothing: the clock, and the outputs and the state of a
/// test, which runs out.
bool movesByItself(int bank, int index) {
    constexpr std::array<std::array<int, 2>, 3> Ranges = {{{244, 248}, {1292, 1297}, {288, 290}}};
    const auto [first, last] = Ranges[static_cast<std::size_t>(bank)];
    return index >= first && index <= last;
}

template <class Visit>
void eachRecord(Visit&& visit) {
    for (int bank = 0; bank < Banks; ++bank)
        for (int index = 1; index < RecordCount(bank); ++index) visit(bank, index);
}

void addWatched(Records& records) {
    eachRecord([&](int bank, int index) {
        if (ParamTable(bank, index).Watchers > 0) records.emplace(bank, index);
    });
}

/// Has every watched record read once more, as the timers of pages do. All that are wanted then.
Records subscribeAnew() {
    Records wanted;
    eachRecord([&](int bank, int index) {
        const int watchers = ParamTable(bank, index).Watchers;
        CurrentBank = bank;
        for (int i = 0; i < watchers; ++i) ParamRelease(index);
        for (int i = 0; i < watchers; ++i) ParamWatch(index);
        if (BoardPresent(bank) && (ParamFlags(bank, index) & flag::Pending)) wanted.emplace(bank, index);
    });
    return wanted;
}

void dropFresh(Records& records) {
    std::erase_if(records, [](const auto& record) {
        const std::uint8_t flags = ParamFlags(record.first, record.second);
        return (flags & flag::Valid) || !(flags & flag::Pending);
    });
}

/// Subscriptions that pages leave behind since they release other records than they watch.
const Records& leftByUnlikeLists() {
    static const Records records = [] {
        Records left;
        World world;
        world.start();
        for (const auto& [name, factory] : AllPages()) {
            ShowPage(name);
            ClosePages();
        }
        addWatched(left);
        // The page of doses keeps every selection that was chosen by its key.
        for (int selection = 0; selection < RecipeSelections; ++selection) EachParameterOfSelection(selection, Watch);
        addWatched(left);
        return left;
    }();
    return records;
}

std::ptrdiff_t watchedOfTheTwiceReleased() {
    return std::count_if(TwiceReleased.begin(), TwiceReleased.end(),
                         [](int index) { return ParamTable(0, index).Watchers > 0; });
}

}  // namespace

void Rest::learn() { leftByUnlikeLists(); }

void Rest::comeRight() {
    letTheTroubleEbb();
    openTheLine();
    readAll();
    checks.compareAll();
    compareWithBoards();
    nothingWaits();
    if (!plan.moving) comparePagesWithNewOnes();
}

void Rest::letTheTroubleEbb() {
    line.strike(false);
    stage.openFailures.clear();
    stage.unwritable.clear();
    line.setLatency(std::min(plan.chunk, LongestChunk) * simulator::millisecond);
    stage.runUntil(stage.now() + Ebb);
    // The page of doses gives its order again whenever its argument is read, until it saw the order carried out.
    const Micros limit = stage.now() + LongestOrder;
    const auto carriesOutAnOrder = [this] { return (line.memory(0, 7) & 2) != 0; };
    while (carriesOutAnOrder() && stage.now() < limit) stage.runUntil(stage.now() + Second);
    stage.runUntil(stage.now() + FreshWithin);
}

/// Another machine is there, or one was taken for another: the user plugs in the right one, or the same once more.
void Rest::openTheLine() {
    if (!LineIsClosed()) return;
    for (int tries = 0; LineIsClosed() && tries < OpeningsTried; ++tries) {
        line.begin(stage.now(), line.plugged() != checks.home() ? CablesChanged : "port");
        stage.runUntil(stage.now() + Ebb);
    }
    require(!LineIsClosed(), "the line is open to the pages at rest");
    // What was held goes out behind the answer of the user.
    const Micros limit = stage.now() + FreshWithin;
    while (WritesAreHeld() && stage.stepUntil(limit)) continue;
    stage.runUntil(stage.now() + FreshWithin);
}

void Rest::awaitIdle() {
    const Micros hang = stage.now() + Hang;
    while ((!Link().LinkIdle || AnyActWaits()) && stage.stepUntil(hang)) continue;
}

void Rest::close(Page& page) {
    awaitIdle();
    const std::string name = page.name();
    const Micros limit = stage.now() + FreshWithin;
    page.UserClose();
    while (FindLoadedPage(name) && stage.stepUntil(limit)) continue;
    require(!FindLoadedPage(name), "a page that is closed goes", name);
}

void Rest::readAll() {
    awaitIdle();  // no cursor moves under an open exchange
    Records stale = subscribeAnew();
    checks.afterEvent();
    const Micros each = PerRecord + LongestChunk * simulator::millisecond;
    const Micros plain = stage.now() + FreshWithin + std::ssize(stale) * each;
    const Micros gated = plain + (plain - stage.now()) * (LongestGate - 1);
    const long left = checks.counts[LeftFrames];
    for (bool wasIdle = false; !stale.empty() || !wasIdle; wasIdle = wasIdle || Link().LinkIdle) {
        // A record whose reply was dropped, since a page moved the bank under it, is sent again when its gate opens.
        const bool waitsForItsGate = plan.strange || checks.counts[LeftFrames] > left;
        const bool tooLate = stage.now() > (waitsForItsGate ? gated : plain);
        require(!tooLate, "everything comes right after healing", stale.size(), " records, first ",
                Place{stale.begin()->first, stale.begin()->second}, " flags ",
                int{ParamFlags(stale.begin()->first, stale.begin()->second)}, "; the scan is at ",
                Place{CurrentBank, Link().ScanIndex}, Link().LinkIdle ? ", idle" : ", waiting");
        stage.runUntil(stage.now() + Second / 50);
        dropFresh(stale);
    }
}

void Rest::compareWithBoards() const {
    if (plan.moving) return;
    eachRecord([this](int bank, int index) {
        if (movesByItself(bank, index) || !ParamIsFresh(index, bank) || ParamTable(bank, index).Watchers == 0) return;
        const ParamValue board = line.memory(bank, index);
        require(ParamRead(index, bank) == board || checks.isMisfiled(bank, index),
                "at rest the mirror holds what the boards hold", Place{bank, index}, " mirror ", ParamRead(index, bank),
                " board ", board);
    });
}

void Rest::nothingWaits() const {
    const bool takenAway = watchedOfTheTwiceReleased() < std::ssize(TwiceReleased);
    for (Page* page : LoadedPages()) {
        if (takenAway && ShowTheTwiceReleased.contains(page->name())) continue;  // it hears of them no more
        for (const Control* control : controlsOf(*page))
            require(!control->waiting() || !control->usable(), "no control waits at rest", page->name(), " ",
                    control->accessibleName());
    }
}

void Rest::comparePagesWithNewOnes() {
    for (Page* page : LoadedPages())
        ++checks.counts[!showsMoreThanTheBoards(*page) && showsWhatANewOneShows(*page) ? PagesCompared : PagesExcused];
}

/// False where the two cannot be compared.
bool Rest::showsWhatANewOneShows(Page& page) {
    const long moved = checks.counts[MovedBanks];
    readAll();  // once more: some values are shown within limits that come behind them
    const std::string name = page.name();
    const std::vector<std::string> shown = shownBy(page);
    const SelectorPositions selected(page);
    const auto watched = watchedOfTheTwiceReleased();
    close(page);
    awaitIdle();
    Page& fresh = ShowPage(name);
    checks.afterEvent();
    readAll();
    awaitIdle();
    selected.chooseIn(fresh);
    checks.afterEvent();
    readAll();
    readAll();
    if (watchedOfTheTwiceReleased() != watched || checks.counts[MovedBanks] > moved) return false;
    if (checks.isMisfiledForGood()) return false;
    if (selected != SelectorPositions(fresh)) return false;  // its frame is closed
    const std::vector<std::string> anew = shownBy(fresh);
    for (std::size_t i = 0; i < shown.size(); ++i)
        require(shown[i].empty() || shown[i] == anew.at(i), "a page shows what a new one shows", name, " control ", i,
                " \"", shown[i], "\" not \"", anew.at(i), "\"");
    return true;
}

void Rest::onlyUnlikeListsAreLeft() const {
    Records left;
    addWatched(left);
    for (const auto& record : left)
        require(leftByUnlikeLists().contains(record), "closed pages leave no subscription",
                Place{record.first, record.second});
}

}  // namespace kestrel::testing
