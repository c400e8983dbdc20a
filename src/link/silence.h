// Who does not answer, and since when: what a board has told is old from then on, until it is heard again.
// A board is silent when it is asked and gives no good reply for a while; an interruption silences all of them at once.
#pragma once

#include <functional>
#include <string>

namespace kestrel {

/// So long without an answer makes a board silent; seconds.
inline constexpr int SilenceSeconds = 3;

/// A frame went out to the board of this bank, or tried to.
void NoteAsked(int bank);
/// It gave a good reply.
void NoteHeard(int bank);
/// The line was interrupted.
void NoteInterruption();
/// The link is stopped: nobody waits for an answer.
void StopListening();

/// Whole seconds for which a board that is being asked has given no answer; 0 where it answers or nobody asks.
int SecondsWithoutAnswer(int bank);
/// The time of day since when what the board told is old, such as "10:32"; empty where it is not.
const std::string& OldSince(int bank);

/// Runs once a second while the line is in use, and at once at an interruption.
void OnLineNews(std::function<void()> handler);

}  // namespace kestrel
