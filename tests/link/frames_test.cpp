// The bytes on the line, as the boards expect and send them.
// A wrong byte here and no board answers, or a setting reaches the wrong place.
#include "link/frames.h"

#include <gtest/gtest.h>

#include <map>

namespace kestrel {
namespace {

const Bytes Thousand = {0xE8, 0x03, 0, 0};
const Bytes OneToFour = {1, 2, 3, 4};

struct RequestCase {
    const char* name;
    int bank, command;
    Bytes data, frame;
};

const RequestCase Requests[] = {
    {"direct read", 0, 0x01, Thousand, {0x01, 0x34, 0x12, 0, 0x47}},
    {"direct write", 0, 0x81, Thousand, {0x81, 0x34, 0x12, 0, 0xE8, 0x03, 0xB2}},
    {"routed read", 1, 0x01, Thousand, {0xF1, 0x34, 0x12, 0, 0x01, 0x49, 0x81}},
    {"routed write of one byte", 2, 0x80, {100, 0, 0, 0}, {0xF2, 0x34, 0x12, 0, 0x80, 0x56, 0x64, 0x72}},
    {"routed write of two bytes", 1, 0x81, Thousand, {0xF3, 0x34, 0x12, 0, 0x81, 0x49, 0xE8, 0x03, 0xEE}},
    {"routed write of four bytes", 1, 0x83, OneToFour, {0xF5, 0x34, 0x12, 0, 0x83, 0x49, 1, 2, 3, 4, 0x11}},
    {"70000 on two bytes is cut", 0, 0x81, {0x70, 0x11, 1, 0}, {0x81, 0x34, 0x12, 0, 0x70, 0x11, 0x48}},
    {"126 is the last command without data", 0, 126, OneToFour, {0x7E, 0x34, 0x12, 0, 0xC4}},
    {"127 carries data", 0, 127, OneToFour, {0x7F, 0x34, 0x12, 0, 1, 2, 3, 4, 0xCF}},
    {"routed 126", 2, 126, OneToFour, {0xF1, 0x34, 0x12, 0, 0x7E, 0x56, 0x0B}},
};

Request requestOf(int command, const Bytes& data) {
    Request request;
    request.Command = static_cast<std::uint8_t>(command);
    request.Addr0 = 0x34;
    request.Addr1 = 0x12;
    request.n = command & 15;
    request.Data = data;
    return request;
}

TEST(Frames, RequestsAreBuiltByteForByte) {
    for (const RequestCase& the : Requests) {
        Request request = requestOf(the.command, the.data);
        EXPECT_EQ(BuildFrame(request, the.bank), the.frame) << the.name;
        EXPECT_EQ(request.K, the.frame.back()) << the.name;
    }
}

struct ReplyCase {
    const char* name;
    int command;
    std::uint8_t checksum;  ///< of the request
    Bytes received;
    bool good;
    Bytes value;
};

const Bytes Written = {0xE8, 0x03};

const ReplyCase Replies[] = {
    {"two bytes", 0x01, 0x47, {0xE8, 0x03, 0xEB}, true, {0xE8, 0x03}},
    {"one byte is its own sum", 0x00, 0, {0x77, 0x77}, true, {0x77}},
    {"the sum of four times FF is FC", 0x03, 0, {255, 255, 255, 255, 0xFC}, true, {255, 255, 255, 255}},
    {"sum off by one", 0x01, 0, {0xE8, 0x03, 0xEC}, false, {0xE8, 0x03}},
    {"a byte between value and sum is dropped", 0x01, 0, {0xE8, 0x03, 0x99, 0xEB}, true, {0xE8, 0x03}},
    {"the last byte is the sum, whatever comes before", 0x01, 0, {0xE8, 0x03, 0xEB, 0x99}, false, {0xE8, 0x03}},
    {"acknowledgement", 0x81, 0xB2, {0x64}, true, Written},
    {"acknowledgement of 80", 0x81, 0x80, {0x00}, true, Written},
    {"acknowledgement of 0", 0x81, 0x00, {0x00}, true, Written},
    {"wrong acknowledgement", 0x81, 0xB2, {0x65}, false, Written},
    {"two bytes are no acknowledgement", 0x81, 0xB2, {0x64, 0x64}, false, Written},
    {"128 is acknowledged", 0x80, 0x72, {0xE4}, true, Written},
};

TEST(Frames, RepliesAreJudged) {
    for (const ReplyCase& the : Replies) {
        Request request = requestOf(the.command, Written);
        request.K = the.checksum;
        const Judgement judgement = JudgeReply(request, the.received);
        EXPECT_EQ(judgement.good, the.good) << the.name;
        EXPECT_EQ(judgement.data, the.value) << the.name;
    }
}

TEST(Frames, AReadWaitsForItsLastByteAndAnAcknowledgementDoesNot) {
    // The command, and the number of bytes from which on the reply can be judged.
    for (const auto& [command, bytes] :
         std::map<int, int>{{0x00, 2}, {0x01, 3}, {0x03, 5}, {0x7F, 17}, {0x80, 1}, {0x83, 1}}) {
        EXPECT_TRUE(ReplyIsComplete(requestOf(command, {}), bytes)) << command;
        EXPECT_EQ(ReplyIsComplete(requestOf(command, {}), bytes - 1), bytes == 1) << command;
    }
}

}  // namespace
}  // namespace kestrel
