// What bars and stepped switches share.
#include "platform/movable.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <vector>

#include "platform/module_state.h"
#include "platform/platform.h"

namespace kestrel {

struct OpenGestures {
    std::vector<Movable*> all;
};
template class Module<OpenGestures>;

namespace {

/// Copies, since an end may open and close pages.
std::vector<Movable*> openGestures() {
    return stateInForce<OpenGestures> ? stateOf<OpenGestures>().all : std::vector<Movable*>();
}

template <class Which, class End>
void endAll(Which&& which, End&& end) {
    for (Movable* each : openGestures()) {
        const std::vector<Movable*> left = openGestures();
        if (std::find(left.begin(), left.end(), each) != left.end() && which(*each)) end(*each);
    }
}

}  // namespace

Movable::Movable() {
    settle_.OnTimer([this] { UserCommit(); });
}

Movable::~Movable() { end(); }

int Movable::shownValue() const { return preview_ ? bounded(*preview_) : handedOver_.value_or(value()); }

void Movable::UserMove(int value) {
    handedOver_ = value;
    userAct([this, value] {
        handedOver_.reset();
        if (!takesActs() || !moveTo(value)) show();
    });
}

void Movable::UserRestore(const std::string& held) {
    int value = 0;
    const auto [end, trouble] = std::from_chars(held.data(), held.data() + held.size(), value);
    if (trouble == std::errc() && end == held.data() + held.size()) UserMove(value);
}

void Movable::preview(long long value) {
    if (!takesActs()) return;
    open();
    preview_ = bounded(value);
    show();
}

void Movable::open() {
    std::vector<Movable*>& all = stateOf<OpenGestures>().all;
    if (std::find(all.begin(), all.end(), this) == all.end()) all.push_back(this);
}

void Movable::end() {
    settle_.Enabled = false;
    stepsOn_ = 0;
    preview_.reset();
    if (stateInForce<OpenGestures>) std::erase(stateOf<OpenGestures>().all, this);
}

void Movable::UserHold(long long value) {
    settle_.Enabled = false;
    preview(value);
}

void Movable::UserStepTo(long long value) {
    UserHold(value);
    UserSettle();
}

void Movable::UserStepBy(int amount) { UserStepTo(static_cast<long long>(shownValue()) + amount); }

void Movable::UserStepOn(int amount) {
    const int times = pace(stepsOn_++);
    UserHold(static_cast<long long>(shownValue()) + static_cast<long long>(amount) * times);
}

void Movable::UserSettle() {
    stepsOn_ = 0;
    settle_.Enabled = isMoving();
}

void Movable::UserCommit() {
    if (!isMoving() || MessageIsOpen()) return UserSettle();
    const int value = *preview_;
    end();
    UserMove(value);
}

void Movable::UserDrop() {
    if (!isMoving()) return;
    end();
    show();
}

void Movable::UserFinish() { isHeld() ? UserDrop() : UserCommit(); }

void FinishGestures(const Window* page) {
    endAll([page](const Movable& each) { return !page || each.window() == page; }, std::mem_fn(&Movable::UserFinish));
}

void FinishGesturesBeside(const Control& acting) {
    endAll([&acting](const Movable& each) { return &each != &acting && each.window() == acting.window(); },
           std::mem_fn(&Movable::UserFinish));
}

void DropHeldGestures() { endAll(std::mem_fn(&Movable::isHeld), std::mem_fn(&Movable::UserDrop)); }

void DropLockedGestures() {
    endAll([](const Movable& each) { return !each.usable(); }, std::mem_fn(&Movable::UserDrop));
}

}  // namespace kestrel
