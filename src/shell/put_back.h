// Puts a change of the user's back, by the road of his own acts: the page is opened and read again, and where its
// control still holds what he made of it, he sets it to what it held before. No value is ever written past the page.
#pragma once

namespace kestrel {

/// Begins; it ends when the control has been set, or says why not. Does nothing while another one is under way.
void PutBack(int number);
/// The newest change that has not been put back and is no putting back itself; with none, nothing happens.
void PutBackLast();
bool IsPuttingBack();

}  // namespace kestrel
