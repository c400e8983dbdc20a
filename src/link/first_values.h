// How far a page is with its first values: what it asked for as it was loaded, and has not heard of.
// Values that the mirror had already count as come; a board that is absent is not waited for.
#pragma once

namespace kestrel {

class Page;

/// While one lives, what is subscribed is what this page waits for.
class AwaitingFirstValues {
  public:
    explicit AwaitingFirstValues(Page& page);
    ~AwaitingFirstValues();
    AwaitingFirstValues(const AwaitingFirstValues&) = delete;
    AwaitingFirstValues& operator=(const AwaitingFirstValues&) = delete;
};

/// A record was subscribed.
void NoteSubscribed(int bank, int index);
/// A reply was stored in the record.
void NoteArrived(int bank, int index);
/// The page goes.
void ForgetFirstValues(const Page& page);

}  // namespace kestrel
