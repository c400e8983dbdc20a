// The border between the toolkit and the logic: every call from Qt into a model goes through deliver().
// Trouble that reaches this border is at the top: it is shown and ends the run in good order.
#pragma once

#include <exception>
#include <utility>

namespace kestrel::qt {

/// Shows the trouble in a message box and ends the process with status 1.
[[noreturn]] void endByTrouble(const std::exception_ptr& trouble);
/// Trouble has been met and is being shown: the logic is called no more.
bool isEnding();

template <class Call>
void deliver(Call&& call) noexcept {
    if (isEnding()) return;
    try {
        std::forward<Call>(call)();
    } catch (...) {
        endByTrouble(std::current_exception());
    }
}

}  // namespace kestrel::qt
