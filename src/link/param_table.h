// The mirror of the numbered parameters of up to three boards, and the cursor that pages and scan share.
// Pages and the link engine meet here and nowhere else.
#pragma once

#include <array>
#include <cstdint>

namespace kestrel {

inline constexpr int Banks = 3;
inline constexpr int ParamRecords = 33001;  ///< a bank: records 0 to 33000; record 0 is never loaded
inline constexpr int ValueBytes = 16;       ///< that the widest command byte can name; the boards use 1, 2 and 4
inline constexpr int WrittenBytes = 4;      ///< that a write or a reply always sets

/// A value of a parameter as a number: the value bytes, low byte first. Never negative.
using ParamValue = std::int64_t;

/// One record, but for its flags, which stand in a table of their own: the scan looks at nothing else of most records.
struct ParamRecord {
    std::uint8_t Addr2 = 0;     ///< third address byte of the frame header
    std::uint8_t Addr1 = 0;     ///< second address byte
    std::uint8_t Command = 0;   ///< low nibble: number of value bytes minus 1
    std::uint8_t Period = 0;    ///< low nibble: reload value, high nibble: countdown; 0 is a one-shot record
    std::uint8_t Watchers = 0;  ///< number of subscribers
    std::uint8_t Addr0 = 0;     ///< first address byte
    std::array<std::uint8_t, ValueBytes> Value{};  ///< least significant first
};

/// Bits of a record's flags.
namespace flag {
inline constexpr std::uint8_t Valid = 1;       ///< the mirror holds the board's value
inline constexpr std::uint8_t Pending = 2;     ///< the scan must visit this record
inline constexpr std::uint8_t Watched = 4;     ///< the record is in use
inline constexpr std::uint8_t OneVisit = 96;   ///< either bit makes a reply clear Pending; nobody sets them
inline constexpr std::uint8_t WriteDue = 128;  ///< the next frame for this record must be a write
}  // namespace flag

/// The bank that pages write to and that the scan walks; a reply is filed under whatever it holds at that moment.
/// A new mirror begins with 0.
extern int CurrentBank;

/// A record of the mirror. An index out of 0..33000 or a bank out of 0..2 is a run-time error, here and below.
ParamRecord& ParamTable(int bank, int index);
std::uint8_t& ParamFlags(int bank, int index);

/// Whether the last identification exchange with the bank's board succeeded.
bool BoardPresent(int bank);
void SetBoardPresent(int bank, bool present);

/// Number of records of the last index file read for the bank: the length that the scan walks.
int RecordCount(int bank);
void SetRecordCount(int bank, int count);

/// Puts a value into the mirror of CurrentBank and queues its write. Does not look at presence, width or subscribers.
/// Parameter number 0 is a programming error.
void ParamWrite(int index, std::uint32_t value);
/// Takes a write back that has not gone out, or is held, in CurrentBank: whoever gave the order wants it no more. The
/// bytes stay in the mirror until the next reply; a watched record is read for it, and a write that was held back is
/// forgotten.
void ParamWithdraw(int index);
/// The value as the mirror has it, fresh or not: before the first reply, the index file's preload.
ParamValue ParamRead(int index, int bank);
/// Whether the mirror holds the board's value.
bool ParamIsFresh(int index, int bank);
/// Subscribes in CurrentBank; does nothing when its board is absent. Parameter number 0 is a programming error.
void ParamWatch(int index);
/// Takes one subscription in CurrentBank back; does nothing when its board is absent or nobody subscribed.
void ParamRelease(int index);

/// Puts a value into a record's bytes, low byte first: four bytes.
void StoreValue(ParamRecord& record, std::uint32_t value);
/// Number of value bytes minus 1 that a command byte names.
constexpr int ValueNibble(std::uint8_t command) { return command & 15; }
/// The number that count + 1 bytes make, low byte first; held at the largest number when it would pass it.
ParamValue ValueOf(const std::uint8_t* bytes, int highest);

/// First record from `index` up to before `end` that is pending, or `end`.
int NextPending(int bank, int index, int end);

}  // namespace kestrel
