// Closing waits for what is due: as the user closes a page or the program ends, the changes of all pages may still go
// out for a while. What cannot go stays suspended, and the user is told.
#pragma once

#include <functional>

#include "link/page.h"

namespace kestrel {

/// So long at most; milliseconds.
inline constexpr int LeavingMs = 1500;

/// Unloads the page when all changes have ended, at once where there are none: it may be the last that has subscribed
/// to what another page writes. Its controls are dead meanwhile.
void CloseWhenSettled(Page& page);
/// Carries out `then`, as an act of its own, when the page's changes have ended or the time is over: at once where it
/// has none. What is left is told. Its controls are dead meanwhile.
void WhenSettled(Page& page, std::function<void()> then);
/// A page that waits to be closed is wanted again.
void StayOpen(Page& page);
/// Calls `then` when the changes of all loaded pages have ended, or after LeavingMs. What is left by then is told when
/// `tells`. A second call while the first one waits does nothing.
void EndWhenSettled(std::function<void()> then, bool tells);
/// To be called as a page is unloaded: the changes that are left or suspended by it are told, as an event of its own.
void LeavePage(Page& page);

}  // namespace kestrel
