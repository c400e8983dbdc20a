// Waiting for the line, for identification alone: until an exchange is over, until nothing comes any more.
// The only place where an event pumps events.
#pragma once

#include <functional>

namespace kestrel {

/// Begins something and delivers events until it is done, or until the time of an exchange is over.
void Await(const std::function<void()>& begin, const std::function<bool()>& isDone);

/// Waits until nothing has come for so long. What does come is dropped; a line that never rests is given up.
void LetLineRest(int milliseconds);

/// From now on the answer to a question that was given up may come.
void ExpectLateAnswer();
bool LateAnswerIsExpected();
/// Waits until none is.
void LetLateAnswersPass();

}  // namespace kestrel
