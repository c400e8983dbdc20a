// Parameters of the boards that the test pages share.
// Alder is the hot-drink board, Cedar the sector board; each has a command register that is written after its mailbox.
#pragma once

namespace kestrel {

namespace alder {
inline constexpr int Bank = 1;
inline constexpr int Command = 1;
inline constexpr int Mailbox = 2;  ///< first of MailboxBytes
inline constexpr int MailboxBytes = 5;
inline constexpr int BoilerReading = 1288;
inline constexpr int Inputs1 = 1289;
inline constexpr int Inputs2 = 1290;
inline constexpr int Inputs3 = 1291;
inline constexpr int OutputEcho = 1292;  ///< first of MailboxBytes
inline constexpr int TestState = 1297;   ///< bit TestModeBit
}  // namespace alder

namespace cedar {
inline constexpr int Bank = 2;
inline constexpr int ReadingOffset = 52;  ///< 5 stands for no correction
inline constexpr int Command = 284;
inline constexpr int GroupMailbox = 285;  ///< also takes the test time
inline constexpr int BitMailbox = 286;
inline constexpr int TankReading = 287;
inline constexpr int GroupEcho = 288;
inline constexpr int BitEcho = 289;
inline constexpr int TestState = 290;  ///< bits TestModeBit and ZeroingBit
inline constexpr int ZeroingBit = 1;
}  // namespace cedar

inline constexpr int TestModeBit = 0;

/// What a command register takes; 0 stands for no command.
namespace command {
inline constexpr unsigned None = 0;
inline constexpr unsigned TestTime = 1;    ///< the mailbox holds the test time
inline constexpr unsigned Outputs = 2;     ///< the mailbox holds the outputs
inline constexpr unsigned ZeroMotors = 3;  ///< of the sector board
}  // namespace command

}  // namespace kestrel
