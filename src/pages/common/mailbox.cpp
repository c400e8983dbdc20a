// Orders to a board.
#include "pages/common/mailbox.h"

#include <algorithm>

#include "link/param_table.h"
#include "link/recheck.h"

namespace kestrel {

namespace {

/// The mirror of a write that is held has what the board had.
bool isOwed(int bank, const MailboxValue& written) {
    if (IsHeld(bank, written.parameter)) return true;
    return (ParamFlags(bank, written.parameter) & flag::WriteDue) != 0 &&
           ParamRead(written.parameter, bank) == ParamValue{written.value};
}

/// Freshness alone would not do: a write that was lost on the line is followed by a read, which brings back what the
/// mailbox held before, and a reply filed under the wrong bank looks fresh while the write is still due.
bool boardHasTaken(int bank, const MailboxValue& written) {
    const bool owed = (ParamFlags(bank, written.parameter) & flag::WriteDue) != 0;
    return !owed && ParamIsFresh(written.parameter, bank) &&
           ParamRead(written.parameter, bank) == ParamValue{written.value};
}

}  // namespace

/// A write of another value is someone else's: several pages use the same mailboxes.
void WithdrawWrite(int bank, const MailboxValue& written) {
    if (!isOwed(bank, written)) return;
    const int before = CurrentBank;
    CurrentBank = bank;
    ParamWithdraw(written.parameter);
    CurrentBank = before;
}

void Handshake::give(unsigned command, std::span<const MailboxValue> mailbox) {
    withdraw();
    mailbox_.assign(mailbox.begin(), mailbox.end());
    command_ = command;
    commandWaits_ = true;
    CurrentBank = bank_;
    for (const MailboxValue& each : mailbox_) ParamWrite(each.parameter, each.value);
}

void Handshake::mailboxCame() {
    if (!commandWaits_ || !isTaken()) return;
    commandWaits_ = false;
    CurrentBank = bank_;
    ParamWrite(register_, command_);
}

void Handshake::withdraw() {
    for (const MailboxValue& each : mailbox_) WithdrawWrite(bank_, each);
    if (!mailbox_.empty() && !commandWaits_) WithdrawWrite(bank_, {register_, command_});
    mailbox_.clear();
    commandWaits_ = false;
}

bool Handshake::isUnderWay() const {
    if (mailbox_.empty()) return false;
    return commandWaits_ || isOwed(bank_, {register_, command_});
}

bool Handshake::isTaken() const {
    return std::ranges::all_of(mailbox_, [this](const MailboxValue& each) { return boardHasTaken(bank_, each); });
}

}  // namespace kestrel
