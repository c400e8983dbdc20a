// The bytes of one exchange: building a request and judging its reply.
// There is no start mark, no length and no sequence number; framing rests on knowing what to expect.
#pragma once

#include <cstdint>

#include "link/param_table.h"
#include "platform/serial_control.h"

namespace kestrel {

/// The request that is being built or answered.
struct Request {
    std::uint8_t Command = 0;  ///< with bit 7 set in a write
    std::uint8_t Addr0 = 0;
    std::uint8_t Addr1 = 0;
    std::uint8_t Addr2 = 0;
    Bytes Data;          ///< value bytes, at most four; sent in a write alone
    int n = 0;           ///< number of value bytes minus 1
    std::uint8_t K = 0;  ///< checksum of the frame that was built last
};

/// Builds the frame for a bank's board: direct for bank 0, routed for the others. Cuts the data to the request's
/// width and sets K.
Bytes BuildFrame(Request& request, int bank);

/// Whether the answer to this command is a read reply; the other kind is a one-byte acknowledgement.
constexpr bool AnswersWithValue(std::uint8_t command) { return command < 128; }

/// Whether enough bytes have come to judge the answer.
bool ReplyIsComplete(const Request& request, int bytesReceived);

struct Judgement {
    Bytes data;         ///< the value bytes: those received, or those written
    bool good = false;  ///< checksum or acknowledgement fits
};

/// Judges all that was received. The value is the first n + 1 bytes and the checksum the last byte, whatever lies
/// between.
Judgement JudgeReply(const Request& request, const Bytes& received);

/// Sum of the first `count` bytes, modulo 256.
std::uint8_t SumOf(const Bytes& bytes, std::size_t count);

/// The one-byte address of a slave board behind the master; bank 0 has none.
std::uint8_t BoardAddress(int bank);

}  // namespace kestrel
