// The door by which everything that is not the link enters the logic.
#include "platform/outside.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>

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

struct Door {
    bool exchangeIsOpen = false;
    long exchanges = 0;  ///< that have been opened
    std::deque<Waiting> waiting;
    Timer turn{NextTurnMs, Timer::OfTheLink};  ///< lets them in as an event of their own, once the exchange has ended
    Timer patience{PatienceMs, Timer::OfTheLink};  ///< runs from the oldest on
};

std::unique_ptr<Door>& instance() {
    static std::unique_ptr<Door> door;
    return door;
}

void letIn();

Door& door() {
    if (!instance()) {
        instance() = std::make_unique<Door>();
        instance()->turn.OnTimer([] {
            door().turn.Enabled = false;
            if (!door().exchangeIsOpen) letIn();
        });
        instance()->patience.OnTimer(letIn);
    }
    return *instance();
}

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

void FromOutside(const void* sender, std::function<void()> act, Source source) {
    Door& here = door();
    if (!here.exchangeIsOpen && (here.waiting.empty() || source == Source::Continued)) return act();
    if (!AnyActWaits()) here.patience.Enabled = false;  // it may still run for one that was taken back
    here.waiting.insert(source == Source::Continued ? here.waiting.begin() : here.waiting.end(),
                        {sender, std::move(act), source});
    here.patience.Enabled = true;
}

void ForgetActs(const void* sender) {
    if (instance()) std::erase_if(door().waiting, [sender](const Waiting& each) { return each.sender == sender; });
}

bool ActWaits(const void* sender) {
    return instance() && std::any_of(door().waiting.begin(), door().waiting.end(),
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
    if (!instance() || !AnyActWaits()) return;
    door().turn.Enabled = true;
    door().patience.Enabled = false;
    door().patience.Enabled = true;
}

void ResetOutside() { instance().reset(); }

}  // namespace kestrel
