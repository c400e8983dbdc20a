// Orders to a board.
#include "pages/common/mailbox.h"

#include <algorithm>

#include "link/recheck.h"

namespace kestrel {

namespace {

/// The mirror of a write that is held has what the board had.
bool isOwed(const MailboxValue& written) {
    const int bank = BankOf(written.setting.board);
    if (IsHeld(bank, written.setting.number)) return true;
    return (ParamFlags(bank, written.setting.number) & flag::WriteDue) != 0 &&
           ParamRead(written.setting) == ParamValue{written.value};
}

/// Freshness alone would not do: a write that was lost on the line is followed by a read, which brings back what the
/// mailbox held before, and a reply filed under the wrong bank looks fresh while the write is still due.
bool boardHasTaken(const MailboxValue& written) {
    const bool owed = (ParamFlags(BankOf(written.setting.board), written.setting.number) & flag::WriteDue) != 0;
    return !owed && ParamIsFresh(written.setting) && ParamRead(written.setting) == ParamValue{written.value};
}

}  // namespace

/// A write of another value is someone else's: several pages use the same mailboxes.
void WithdrawWrite(const MailboxValue& written) {
    if (!isOwed(written)) return;
    const int before = CurrentBank;
    CurrentBank = BankOf(written.setting.board);
    ParamWithdraw(written.setting.number);
    CurrentBank = before;
}

void Handshake::give(unsigned command, std::span<const MailboxValue> mailbox) {
    withdraw();
    mailbox_.assign(mailbox.begin(), mailbox.end());
    command_ = command;
    commandWaits_ = true;
    for (const MailboxValue& each : mailbox_) ParamWrite(each.setting, each.value);
}

void Handshake::mailboxCame() {
    if (!commandWaits_ || !isTaken()) return;
    commandWaits_ = false;
    ParamWrite(register_, command_);
}

void Handshake::withdraw() {
    for (const MailboxValue& each : mailbox_) WithdrawWrite(each);
    if (!mailbox_.empty() && !commandWaits_) WithdrawWrite({register_, command_});
    mailbox_.clear();
    commandWaits_ = false;
}

bool Handshake::isUnderWay() const {
    if (mailbox_.empty()) return false;
    return commandWaits_ || isOwed({register_, command_});
}

bool Handshake::isTaken() const { return std::ranges::all_of(mailbox_, boardHasTaken); }

}  // namespace kestrel
