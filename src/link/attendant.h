// What the link has to say to the user, and to ask. It has neither words nor windows of its own.
#pragma once

#include <string>
#include <vector>

namespace kestrel {

/// How many changes of a page.
struct PageChanges {
    std::string page;  ///< its caption
    int count = 0;
};

/// Speaks with the user; abstract because texts and windows stand above the link. Every call may let events go on.
class LinkAttendant {
  public:
    virtual ~LinkAttendant() = default;
    /// The line was interrupted with changes that have not gone out. True: send them; false: drop them.
    virtual bool wantsHeldSent(const std::vector<PageChanges>& held) = 0;
    /// Other boards are on the line than those that the tables are for. True: start anew with them.
    virtual bool wantsToStartAnew() = 0;
    virtual void startAnew() = 0;
    /// Changes of pages that are gone have not reached their boards, or nobody knows whether they did.
    virtual void tellLeft(const std::vector<PageChanges>& left) = 0;
};

/// The caller keeps it alive.
void SetAttendant(LinkAttendant* attendant);
/// The one that was set. Asking before is a programming error.
LinkAttendant& Attendant();

}  // namespace kestrel
