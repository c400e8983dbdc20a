// The bytes of one exchange.
#include "link/frames.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "platform/errors.h"

namespace kestrel {

namespace {

constexpr std::uint8_t RoutedRead = 241;
constexpr int RoutedWriteOfOneByte = 242;
/// From this command byte on a frame carries data; the limit on the reply's side is one higher.
constexpr std::uint8_t FirstCommandWithData = 127;
constexpr std::array<std::uint8_t, Banks> Addresses = {0, 0x49, 0x56};

void append(Bytes& frame, const Bytes& data) { frame.insert(frame.end(), data.begin(), data.end()); }

}  // namespace

std::uint8_t BoardAddress(int bank) {
    if (bank < 0 || bank >= Banks) throw RunTimeError(error_number::SubscriptOutOfRange, "Subscript out of range");
    return Addresses[static_cast<std::size_t>(bank)];
}

std::uint8_t SumOf(const Bytes& bytes, std::size_t count) {
    const auto end = bytes.begin() + static_cast<std::ptrdiff_t>(std::min(count, bytes.size()));
    return static_cast<std::uint8_t>(std::accumulate(bytes.begin(), end, 0U));
}

Bytes BuildFrame(Request& request, int bank) {
    request.Data.resize(std::min(request.Data.size(), static_cast<std::size_t>(request.n) + 1));
    const bool carriesData = request.Command >= FirstCommandWithData;
    Bytes frame;
    frame.reserve(16);
    if (bank == 0) {
        frame = {request.Command, request.Addr0, request.Addr1, request.Addr2};
    } else {
        const auto lead = carriesData ? static_cast<std::uint8_t>(RoutedWriteOfOneByte + request.n) : RoutedRead;
        frame = {lead, request.Addr0, request.Addr1, request.Addr2, request.Command, BoardAddress(bank)};
    }
    if (carriesData) append(frame, request.Data);
    request.K = SumOf(frame, frame.size());
    frame.push_back(request.K);
    return frame;
}

bool ReplyIsComplete(const Request& request, int bytesReceived) {
    return !AnswersWithValue(request.Command) || bytesReceived > request.n + 1;
}

Judgement JudgeReply(const Request& request, const Bytes& received) {
    if (!AnswersWithValue(request.Command)) {
        const auto acknowledgement = static_cast<std::uint8_t>(request.K * 2);
        return {request.Data, received == Bytes{acknowledgement}};
    }
    const std::size_t width = std::min(static_cast<std::size_t>(request.n) + 1, received.size());
    Judgement judgement;
    judgement.data.assign(received.begin(), received.begin() + static_cast<std::ptrdiff_t>(width));
    judgement.good = !received.empty() && received.back() == SumOf(received, width);
    return judgement;
}

}  // namespace kestrel
