// Orders to a board: a mailbox of a few parameters, and a command that may follow only when the board has taken all of
// it. Orders drive motors, valves and heaters: each runs as it was given or not at all, and never after it was given
// up.
#pragma once

#include <span>
#include <vector>

#include "link/settings.h"

namespace kestrel {

struct MailboxValue {
    Setting setting;
    unsigned value;
};

/// Takes the write of this value back if it has not gone out; CurrentBank stays where it is.
void WithdrawWrite(const MailboxValue& written);

/// The orders that one page gives to one command register, of which the newest counts.
class Handshake {
  public:
    explicit Handshake(const Setting& commandRegister) : register_(commandRegister) {}

    /// Writes the mailbox. What is left of the order before is taken back.
    void give(unsigned command, std::span<const MailboxValue> mailbox);
    /// To be called when a parameter of the mailbox has come: gives the command, once, when the board has taken all.
    void mailboxCame();
    /// Gives the order up: nothing of it that has not gone out goes out any more.
    void withdraw();
    /// Its command waits for the mailbox, or has yet to go out.
    bool isUnderWay() const;
    bool isUnderWayWith(unsigned command) const { return command_ == command && isUnderWay(); }

  private:
    bool isTaken() const;

    const Setting register_;
    unsigned command_ = 0;
    bool commandWaits_ = false;  ///< for the board to take the mailbox
    std::vector<MailboxValue> mailbox_;
};

}  // namespace kestrel
