// The mirror of the boards' parameters: what each operation makes of a record.
// A wrong bit here and a page waits for ever, shows a stale value as fresh, or a setting never leaves.
#include "link/param_table.h"

#include <gtest/gtest.h>

#include <limits>

#include "link/frames.h"
#include "link/index_files.h"
#include "link/recheck.h"
#include "platform/errors.h"
#include "shell/session.h"

namespace kestrel {
namespace {

class ParamTableTest : public ::testing::Test {
  protected:
    ParamTableTest() { SetBoardPresent(0, true); }
    const Session session;
};

void watch() { ParamWatch(7); }
void release() { ParamRelease(7); }
void write() { ParamWrite(7, 5); }
void withdraw() { ParamWithdraw(7); }

struct Image {
    int flags;
    int period;
    int watchers;
    bool operator==(const Image&) const = default;
};

struct Transition {
    const char* name;
    Image before;
    void (*operation)();
    Image after;
};

// Flags: 1 valid, 2 pending, 4 watched, 128 write due; 8 to 64 belong to nobody.
constexpr Transition Transitions[] = {
    {"first watch", {0, 0x03, 0}, watch, {6, 0x03, 1}},
    {"watch of a fresh record keeps it fresh and has it read again", {5, 0, 1}, watch, {7, 0, 2}},
    {"watch after a write whose page was closed sends the old value", {128, 0, 0}, watch, {134, 0, 1}},
    {"write without a subscriber", {0, 0, 0}, write, {134, 0, 0}},
    {"write makes a fresh record stale", {7, 0x33, 2}, write, {134, 0x33, 2}},
    {"write keeps the bits of nobody", {0x78, 0, 0}, write, {0x78 | 134, 0, 0}},
    {"one of two subscribers leaves", {7, 0x33, 2}, release, {7, 0x33, 1}},
    {"the last leaves: nothing is polled any more", {7, 0x33, 1}, release, {0, 0x03, 0}},
    {"the last leaves: the bits of nobody stay", {0x78 | 7, 0xF1, 1}, release, {0x78, 0x01, 0}},
    {"the last leaves before the write went out: it is held back", {134, 0x12, 1}, release, {128, 0x02, 0}},
    {"release without a subscriber", {0, 0x33, 0}, release, {0, 0x33, 0}},
    {"release of a write that nobody watches lets it go out", {134, 0x33, 0}, release, {134, 0x33, 0}},
    {"a write taken back is read instead", {0x78 | 134, 0x33, 1}, withdraw, {0x78 | 6, 0x33, 1}},
    {"a write that was held back is forgotten", {128, 0x02, 0}, withdraw, {0, 0x02, 0}},
    {"nothing is taken back of what has gone out", {7, 0x33, 1}, withdraw, {7, 0x33, 1}},
};

TEST_F(ParamTableTest, OperationsMoveARecordThroughItsLifeAndAnAbsentBoardTakesAndGivesBackWritesAlone) {
    for (const Transition& the : Transitions) {
        for (const bool present : {true, false}) {
            CurrentBank = present ? 0 : 1;
            ParamRecord& record = ParamTable(CurrentBank, 7);
            std::uint8_t& flags = ParamFlags(CurrentBank, 7);
            flags = static_cast<std::uint8_t>(the.before.flags);
            record.Period = static_cast<std::uint8_t>(the.before.period);
            record.Watchers = static_cast<std::uint8_t>(the.before.watchers);
            the.operation();
            const bool needsTheBoard = the.operation == watch || the.operation == release;
            const Image& expected = present || !needsTheBoard ? the.after : the.before;
            EXPECT_EQ((Image{flags, record.Period, record.Watchers}), expected) << the.name << ", present " << present;
        }
    }
}

TEST_F(ParamTableTest, AWriteThatIsHeldIsTakenBackAsWell) {
    ParamWrite(7, 5);
    HoldWrite(0, 7);
    ParamWrite(8, 5);
    HoldWrite(0, 8);
    ParamWithdraw(7);
    EXPECT_FALSE(IsHeld(0, 7));
    EXPECT_TRUE(IsHeld(0, 8));
}

TEST_F(ParamTableTest, ParameterZeroStopsTheProgramUnlessTheBoardIsAbsent) {
    EXPECT_THROW(ParamWatch(0), ProgrammingError);
    EXPECT_THROW(ParamWrite(0, 1), ProgrammingError);
    CurrentBank = 2;
    EXPECT_THROW(ParamWrite(0, 1), ProgrammingError);
    EXPECT_NO_THROW(ParamWatch(0)) << "presence is asked first";
}

TEST_F(ParamTableTest, NothingOutsideTheTableIsTouched) {
    struct Place {
        int bank, index;
    };
    for (const auto [bank, index] : {Place{0, -1}, Place{0, 33001}, Place{-1, 1}, Place{3, 1}}) {
        CurrentBank = bank;
        EXPECT_THROW(ParamWatch(index), RunTimeError) << bank << " " << index;
        EXPECT_THROW(ParamRelease(index), RunTimeError) << bank << " " << index;
        EXPECT_THROW(ParamWrite(index, 1), RunTimeError) << bank << " " << index;
        EXPECT_THROW(ParamWithdraw(index), RunTimeError) << bank << " " << index;
        EXPECT_THROW(ParamRead(index, bank), RunTimeError) << bank << " " << index;
        EXPECT_THROW(ParamIsFresh(index, bank), RunTimeError) << bank << " " << index;
        EXPECT_THROW(IdentTable(bank, index), RunTimeError) << bank << " " << index;
    }
    for (const int bank : {-1, 3}) EXPECT_THROW(BoardAddress(bank), RunTimeError);
    EXPECT_THROW(IdentTable(0, 21), RunTimeError);
    CurrentBank = 2;
    ParamTable(2, 33000).Command = 3;
    ParamWrite(33000, 0xFFFFFFFF);
    EXPECT_EQ(ParamRead(33000, 2), 4294967295) << "the last record of the last bank";
    SetBoardPresent(2, true);
    ParamTable(2, 1).Watchers = 255;
    EXPECT_THROW(ParamWatch(1), RunTimeError) << "one more would count as none";
}

TEST_F(ParamTableTest, AWriteFillsFourBytesAndARecordShowsItsOwnWidth) {
    struct Row {
        int command;
        std::int64_t read;
    };
    ParamWrite(7, 70000);
    for (const Row& row : {Row{0x00, 0x70}, Row{0x01, 4464}, Row{0x21, 4464}, Row{0x02, 70000}, Row{0x03, 70000}}) {
        ParamTable(0, 7).Command = static_cast<std::uint8_t>(row.command);
        EXPECT_EQ(ParamRead(7, 0), row.read) << row.command;
    }
    ParamWatch(7);
    ParamRelease(7);
    EXPECT_EQ(ParamRead(7, 0), 70000) << "the last value stays readable";
    EXPECT_FALSE(ParamIsFresh(7, 0));
    ParamTable(0, 7).Value.fill(255);
    ParamTable(0, 7).Command = 0x0F;
    EXPECT_EQ(ParamRead(7, 0), std::numeric_limits<ParamValue>::max())
        << "sixteen bytes are more than any number holds";
}

TEST_F(ParamTableTest, TheScanFindsTheNextPendingRecordWhereverItStands) {
    constexpr int End = 40;
    for (int at = 1; at < End; ++at) {
        ParamFlags(1, at) = 2;
        ParamFlags(0, at) = 0xFD;
        for (const int from : {0, 1, at - 1, at}) EXPECT_EQ(NextPending(1, from, End), from > at ? End : at);
        EXPECT_EQ(NextPending(1, at + 1, End), End);
        EXPECT_EQ(NextPending(1, 0, at), at) << "a record at the end is not looked at";
        EXPECT_EQ(NextPending(0, 0, End), End) << "only the pending bit counts";
        ParamFlags(1, at) = 0;
    }
    EXPECT_EQ(NextPending(0, 50, End), 40) << "a cursor that a page left beyond the end";
}

}  // namespace
}  // namespace kestrel
