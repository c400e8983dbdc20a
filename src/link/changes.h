// What the user has changed and no board has confirmed yet. A write is what the user meant: each change ends confirmed,
// replaced, told as not taken, or dropped by the user's own word.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace kestrel {

class Control;
class Window;

struct Change {
    int bank = 0;
    int index = 0;
    std::uint32_t value = 0;
    Control* control = nullptr;  ///< on which the user acted; null once its page is gone
    const Window* page = nullptr;
    std::string pageCaption;  ///< as it read when the page went
    std::string wanted;       ///< what the control showed then
    bool copy = false;        ///< of a value that the same act wrote elsewhere before
};

/// In the order in which they were made.
const std::vector<Change>& Changes();

/// A value was queued for a record of the mirror; it is a change where the user acts at this moment, and replaces an
/// older one of the same record.
void NoteWrite(int bank, int index, std::uint32_t value);
/// A reply or an acknowledgement has set the record: the change is confirmed, or the control is told that it was not
/// taken. A record whose write is still due, or is held, leaves it open.
void SettleChange(int bank, int index);
/// The write was taken back.
void ForgetChange(int bank, int index);
/// Whether a user's act has written the record, with no end yet.
bool IsChange(int bank, int index);
/// Whether a change of the page waits for its end.
bool HasChanges(const Window& page);
/// The page goes: its changes keep its caption alone. Those that went out and had no answer end here. How many stay
/// open or end so.
int LeaveChanges(const Window& page);
/// The same for those changes of a page that stays whose writes another page has suspended, since it gave up the last
/// subscription to their records as it went.
int LeaveSuspendedChanges(const Window& page);

/// Runs whenever a change has ended.
void OnChangeEnded(std::function<void()> handler);

}  // namespace kestrel
