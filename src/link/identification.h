// Asking a board who it is: once a bank, at start-up, with synchronous exchanges that pump events.
// The answers tell whether the board is there, whether the program is made for it, and which index file is its own.
#pragma once

#include <string>

namespace kestrel {

struct IdentRecord;

/// Numbers of the identity records.
namespace ident {
inline constexpr int Probe = 1, Software = 11, Kind = 12, TypeLow = 13, TypeHigh = 14, Release = 17, Revision = 18;
}

/// What a board reports of itself; meaningful only when the board is present afterwards.
struct BoardIdentity {
    int release = 0;
    int software = 0;
    int kind = 0;
    int boardType = 0;
    bool operator==(const BoardIdentity&) const = default;
};

/// Asks the board of the bank, which must be CurrentBank, and settles BoardPresent. What is said on a line that spoils
/// replies counts when it has been said twice. A silent master asks the user to try again.
BoardIdentity AskIdentity(int bank);
/// Why the program is not made for a master of this identity; empty where it is.
std::string Incompatibility(const BoardIdentity& identity);
/// AskIdentity; a master for which the program is not made shows a message and ends the process.
BoardIdentity IdentifyBoard(int bank);

/// Opens the exchange that asks for one identity record of CurrentBank's board; the answer's first byte counts.
void SendIdentityQuestion(const IdentRecord& record);

/// Revision of the master's software, a version gate for pages; 0 until it has been identified.
int BoardRevision();
void SetBoardRevision(int revision);

/// Revision of the hot-drink board in tenths, as the options page last heard it; 0 until then.
int PowerBoardRevision();
void SetPowerBoardRevision(int tenths);

}  // namespace kestrel
