// What the user has changed and no board has confirmed yet.
#include "link/changes.h"

#include <algorithm>

#include "link/history.h"
#include "link/param_table.h"
#include "link/recheck.h"
#include "platform/control.h"
#include "platform/module_state.h"
#include "platform/window.h"

namespace kestrel {

struct ChangeState {
    std::vector<Change> open;
    std::function<void()> onEnded;
};
template class Module<ChangeState>;

namespace {

ChangeState& state() { return stateOf<ChangeState>(); }

auto find(int bank, int index) {
    return std::find_if(state().open.begin(), state().open.end(),
                        [=](const Change& each) { return each.bank == bank && each.index == index; });
}

void end(std::vector<Change>::iterator change, Fate fate) {
    EndPast(change->bank, change->index, fate);
    state().open.erase(change);
    if (state().onEnded) state().onEnded();
}

/// What is left of a value in a record of this width.
ParamValue asHeld(int bank, int index, std::uint32_t value) {
    ParamRecord record = ParamTable(bank, index);
    StoreValue(record, value);
    return ValueOf(record.Value.data(), std::min(ValueNibble(record.Command), WrittenBytes - 1));
}

bool isDue(const Change& change) { return (ParamFlags(change.bank, change.index) & flag::WriteDue) != 0; }

bool isSuspended(const Change& change) {
    return isDue(change) && !(ParamFlags(change.bank, change.index) & flag::Pending);
}

template <class Choice>
int leave(const Window& page, Choice choice) {
    int left = 0;
    for (Change& each : state().open) {
        if (each.page != &page || !choice(each)) continue;
        each.control = nullptr;
        each.page = nullptr;
        each.pageCaption = page.Caption;
        ++left;
    }
    return left;
}

}  // namespace

const std::vector<Change>& Changes() { return state().open; }

void NoteWrite(int bank, int index, std::uint32_t value) {
    Control* const control = Control::acting();
    if (!control || !control->window()) return;  // a menu or a window acts: the page writes by itself
    const auto older = find(bank, index);
    if (older != state().open.end()) {
        EndPast(bank, index, Fate::Replaced);
        state().open.erase(older);
    }
    Change change;
    change.bank = bank;
    change.index = index;
    change.value = value;
    change.control = control;
    change.page = control->window();
    change.wanted = control->text();
    change.copy = std::any_of(state().open.begin(), state().open.end(), [&](const Change& each) {
        return each.control == control && each.value == value && !each.copy;
    });
    state().open.push_back(std::move(change));
    NotePast(*control, bank, index);
}

void SettleChange(int bank, int index) {
    const auto found = find(bank, index);
    if (found == state().open.end() || (ParamFlags(bank, index) & flag::WriteDue) || IsHeld(bank, index)) return;
    const Change change = *found;
    const bool isTaken = ParamRead(index, bank) == asHeld(bank, index, change.value);
    if (change.control && !isTaken) change.control->tellNotTaken({change.wanted, change.copy});
    end(find(bank, index), isTaken ? Fate::Confirmed : Fate::NotTaken);
}

void ForgetChange(int bank, int index) {
    if (const auto found = find(bank, index); found != state().open.end()) end(found, Fate::Withdrawn);
}

bool IsChange(int bank, int index) { return find(bank, index) != state().open.end(); }

bool HasChanges(const Window& page) {
    return std::any_of(state().open.begin(), state().open.end(),
                       [&page](const Change& each) { return each.page == &page; });
}

int LeaveChanges(const Window& page) {
    const int left = leave(page, [](const Change&) { return true; });
    std::erase_if(state().open, [](const Change& each) {
        const bool ends = !each.control && !isDue(each) && !IsHeld(each.bank, each.index);
        if (ends) EndPast(each.bank, each.index, Fate::Unknown);
        return ends;
    });
    return left;
}

int LeaveSuspendedChanges(const Window& page) { return leave(page, isSuspended); }

void OnChangeEnded(std::function<void()> handler) { state().onEnded = std::move(handler); }

}  // namespace kestrel
