// After an interruption of the line the boards are asked who they are before anything else. Where they are the same,
// all that is watched is read again, and what the user changed meanwhile is held until he has said whether to send it;
// where they are others, the line stays closed to the pages.
#pragma once

#include "link/identification.h"

namespace kestrel {

/// What a present board said of itself at the start of the program.
void RememberIdentity(int bank, const BoardIdentity& identity);

/// The port was lost, is another device, or another port was chosen: nothing goes out any more but questions who is
/// there. Pages are told, so that they give up their orders.
void InterruptLine();
/// What the board of the bank said of itself.
const BoardIdentity& KnownIdentity(int bank);
/// Other boards than before answer.
bool IsOtherMachine();
/// Whether identities are being asked, or the line is closed to the pages: no record goes out.
bool LineIsClosed();
/// The tick of the scan, with no exchange open: the next question of a recheck.
void RecheckTick();

/// Whether all that is watched is being read again after an interruption.
bool IsReadingAgain();
/// Whether a write that is due is held back: its record is read in its place.
bool WritesAreHeld();
/// The write of the record that is due is held; its mark is taken away.
void HoldWrite(int bank, int index);
bool IsHeld(int bank, int index);
/// The write that is held, if any, was taken back.
void DropHeldWrite(int bank, int index);
/// A reply was stored in the record.
void NoteRead(int bank, int index);

}  // namespace kestrel
