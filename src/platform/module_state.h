// The module's side of its state: for the one .cpp file that defines the struct, which says
// `template class Module<State>;` after it.
#pragma once

#include <utility>

#include "platform/errors.h"
#include "platform/module.h"

namespace kestrel {

[[noreturn]] void refuseWithoutSession();

/// Null where there is no session.
template <class State>
inline State* stateInForce = nullptr;

template <class State>
State& stateOf() {
    if (!stateInForce<State>) refuseWithoutSession();
    return *stateInForce<State>;
}

template <class State>
Module<State>::Module() {
    if (stateInForce<State>) throw ProgrammingError("There is a session already");
    stateInForce<State> = new State;
}

template <class State>
void Module<State>::renew() {
    delete std::exchange(stateInForce<State>, nullptr);
    stateInForce<State> = new State;
}

/// Nothing of the module is to be called while its state goes.
template <class State>
Module<State>::~Module() {
    delete stateInForce<State>;
    stateInForce<State> = nullptr;
}

}  // namespace kestrel
