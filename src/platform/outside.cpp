// The door by which everything that is not the link enters the logic.
#include "platform/outside.h"

#include <algorithm>
#include <deque>
#include <functional>

#include "platform/module_state.h"
#include "platform/platform.h"
#include "platform/timer.h"

namespace kestrel {

namespace {

constexpr int NextTurnMs = 1;

struct Waiting {
    const void* sender;
    std::function<void()> act;
    Source source;

    bool mayComeIn() const { return source != Source::User || !MessageIsOpen(); }
};

void letIn();

}  // namespace

struct Door {
    Door();

    bool exchangeIsOpen = false;
    long exchanges = 0;  ///< that have been opened
    std::deque<Waiting> waiting;
    Timer turn{NextTurnMs, Timer::OfTheLink};  ///< lets them in as an event of their own, once the exchange has ended
    Timer patience{PatienceMs, Timer::OfTheLink};  ///< runs from the oldest on
};
template class Module<Door>;

namespace {

Door& door() { return stateOf<Door>(); }

/// Those that wait now; an act that asks the user something lets later ones in meanwhile.
void letIn() {
    door().patience.Enabled = false;
    const long exchange = door().exchanges;
    for (auto left = door().waiting.size(); left > 0; --left) {
        // An act asked the user something, and the line went on meanwhile.
        if (door().exchangeIsOpen && door().exchanges != exchange) {
            door().patience.Enabled = true;
            return;
        }
        auto& waiting = door().waiting;
        const auto first = std::find_if(waiting.begin(), waiting.end(), std::mem_fn(&Waiting::mayComeIn));
        if (first == waiting.end()) return;
        const Waiting next = std::move(*first);
        waiting.erase(first);
        next.act();
    }
}

}  // namespace

Door::Door() {
    turn.OnTimer([this] {
        turn.Enabled = false;
        if (!exchangeIsOpen) letIn();
    });
    patience.OnTimer(letIn);
}

void FromOutside(const void* sender, std::function<void()> act, Source source) {
    Door& here = door();
    if (!here.exchangeIsOpen && (here.waiting.empty() || source == Source::Continued)) return act();
    if (!AnyActWaits()) here.patience.Enabled = false;  // it may still run for one that was taken back
    here.waiting.insert(source == Source::Continued ? here.waiting.begin() : here.waiting.end(),
                        {sender, std::move(act), source});
    here.patience.Enabled = true;
}

void ForgetActs(const void* sender) {
    if (Door* const here = stateInForce<Door>)
        std::erase_if(here->waiting, [sender](const Waiting& each) { return each.sender == sender; });
}

bool ActWaits(const void* sender) {
    const Door* const here = stateInForce<Door>;
    return here && std::any_of(here->waiting.begin(), here->waiting.end(),
                               [sender](const Waiting& each) { return each.sender == sender; });
}

bool AnyActWaits() {
    const auto& waiting = door().waiting;
    return std::any_of(waiting.begin(), waiting.end(), std::mem_fn(&Waiting::mayComeIn));
}

void ExchangeOpened() {
    if (!door().exchangeIsOpen) ++door().exchanges;
    door().exchangeIsOpen = true;
}

void ExchangeEnded() {
    door().exchangeIsOpen = false;
    if (AnyActWaits()) door().turn.Enabled = true;
}

void MessageClosed() {
    if (!AnyActWaits()) return;
    door().turn.Enabled = true;
    door().patience.Enabled = false;
    door().patience.Enabled = true;
}

}  // namespace kestrel
