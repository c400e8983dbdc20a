// The door by which everything that is not the link enters the logic: acts of the user, timers of pages, windows
// opened, activated and closed. An exchange on the line is whole to all of them.
#pragma once

#include <functional>

namespace kestrel {

/// So long at most an act waits for the end of an open exchange; milliseconds.
inline constexpr int PatienceMs = 150;

enum class Source {
    User,
    Continued,  ///< what an act of the user goes on with, such as after a question: before the acts that came since
    Program     ///< a timer of a page, or the end of a wait
};

/// Runs the act now; or, while an exchange is open, in its turn after the end of it, and after PatienceMs in any case.
/// What waits for its turn when a message box opens, and is the user's, waits for the end of the box.
/// `sender` is who acts: its destructor takes back what it has waiting, and may do so after the end of the session.
void FromOutside(const void* sender, std::function<void()> act, Source source = Source::User);
/// Takes back what the sender has waiting.
void ForgetActs(const void* sender);
/// Whether an act of the sender waits for its turn.
bool ActWaits(const void* sender);
/// Whether any does that could come in now; the link opens no new exchange before those.
bool AnyActWaits();

/// The link says so.
void ExchangeOpened();
void ExchangeEnded();
/// The last message box has closed.
void MessageClosed();

}  // namespace kestrel
