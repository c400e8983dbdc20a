// Who does not answer, and since when.
#include "link/silence.h"

#include <array>
#include <utility>

#include "link/loaded_pages.h"
#include "link/param_table.h"
#include "link/recheck.h"
#include "platform/module_state.h"
#include "platform/platform.h"
#include "platform/timer.h"

namespace kestrel {

namespace {

constexpr int TickMs = 1000;
constexpr int TicksWithoutFrame = 3;  ///< after which nobody asks any more

struct Ear {
    bool isAsked = false;  ///< and has not answered
    int seconds = 0;       ///< since it was
    std::string askedAt;   ///< about
    std::string oldSince;
};

void tick_Timer();

}  // namespace

struct SilenceState {
    SilenceState() { tick.OnTimer(tick_Timer); }

    std::array<Ear, Banks> boards;
    int ticksSinceFrame = 0;
    int ticksSinceReply = 0;  ///< of any board, while they are asked
    std::function<void()> onNews;
    Timer tick{TickMs, Timer::OfTheLink};
};
template class Module<SilenceState>;

namespace {

SilenceState& state() { return stateOf<SilenceState>(); }

Ear& earOf(int bank) { return state().boards.at(static_cast<std::size_t>(bank)); }

bool isInterrupted() { return LineIsClosed() || IsReadingAgain(); }

void judge(int bank) {
    Ear& ear = earOf(bank);
    const bool lineIsSilent = state().ticksSinceReply >= SilenceSeconds;
    const bool isOld = BoardPresent(bank) && (isInterrupted() || lineIsSilent || ear.seconds >= SilenceSeconds);
    if (!isOld)
        ear.oldSince.clear();
    else if (ear.oldSince.empty())
        ear.oldSince = ear.askedAt.empty() ? TimeOfDayText(platform().localTime()) : ear.askedAt;
    for (Page* page : LoadedPages()) page->setOldSince(bank, ear.oldSince);
}

void tellAll() {
    for (int bank = 0; bank < Banks; ++bank) judge(bank);
    if (state().onNews) state().onNews();
}

void tick_Timer() {
    SilenceState& here = state();
    bool anyAsked = false;
    for (int bank = 0; bank < Banks; ++bank) anyAsked = anyAsked || (BoardPresent(bank) && earOf(bank).isAsked);
    if (++here.ticksSinceFrame < TicksWithoutFrame) {
        here.ticksSinceReply = anyAsked ? here.ticksSinceReply + 1 : 0;
        for (Ear& ear : here.boards) {
            if (!ear.isAsked) continue;
            if (ear.seconds++ == 0) ear.askedAt = TimeOfDayText(platform().localTime());
        }
    } else if (!isInterrupted()) {
        here.tick.Enabled = false;
    }
    tellAll();
}

}  // namespace

void NoteAsked(int bank) {
    earOf(bank).isAsked = true;
    state().ticksSinceFrame = 0;
    state().tick.Enabled = true;
}

void NoteHeard(int bank) {
    Ear& ear = earOf(bank);
    state().ticksSinceReply = 0;
    ear.isAsked = false;
    ear.seconds = 0;
    ear.askedAt.clear();
    if (!ear.oldSince.empty()) tellAll();
}

void NoteInterruption() {
    state().tick.Enabled = true;
    tellAll();
}

void StopListening() { state().tick.Enabled = false; }

int SecondsWithoutAnswer(int bank) { return state().ticksSinceFrame < TicksWithoutFrame ? earOf(bank).seconds : 0; }

const std::string& OldSince(int bank) { return earOf(bank).oldSince; }

void OnLineNews(std::function<void()> handler) { state().onNews = std::move(handler); }

}  // namespace kestrel
