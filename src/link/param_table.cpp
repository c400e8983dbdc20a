// The mirror of the numbered parameters.
#include "link/param_table.h"

#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "link/changes.h"
#include "link/first_values.h"
#include "link/observer.h"
#include "link/recheck.h"
#include "platform/errors.h"
#include "platform/module_state.h"

namespace kestrel {

int CurrentBank = 0;

constexpr std::size_t TableSize = static_cast<std::size_t>(Banks) * ParamRecords;

struct ParamState {
    ParamState() { CurrentBank = 0; }

    std::vector<ParamRecord> records = std::vector<ParamRecord>(TableSize);
    std::vector<std::uint8_t> flags = std::vector<std::uint8_t>(TableSize);
    std::array<bool, Banks> present{};
    std::array<int, Banks> recordCount{};
};
template class Module<ParamState>;

namespace {

ParamState& state() { return stateOf<ParamState>(); }

[[noreturn]] void outOfRange(const char* what, int number, int highest) {
    throw ProgrammingError(std::string(what) + " " + std::to_string(number) + " is out of 0.." +
                           std::to_string(highest));
}

std::size_t checkedBank(int bank) {
    if (bank < 0 || bank >= Banks) outOfRange("Bank", bank, Banks - 1);
    return static_cast<std::size_t>(bank);
}

std::size_t position(int bank, int index) {
    const std::size_t base = checkedBank(bank);
    if (index < 0 || index >= ParamRecords) outOfRange("Parameter", index, ParamRecords - 1);
    return base * ParamRecords + static_cast<std::size_t>(index);
}

void refuseZero(int index) {
    if (index == 0) throw ProgrammingError("Parameter number 0 was used");
}

void watch(int index) {
    if (!BoardPresent(CurrentBank)) return;
    refuseZero(index);
    ParamRecord& record = ParamTable(CurrentBank, index);
    if (record.Watchers == std::numeric_limits<std::uint8_t>::max())
        throw RunTimeError(error_number::Overflow, "Parameter " + std::to_string(index) + " has too many subscribers");
    ParamFlags(CurrentBank, index) |= flag::Watched | flag::Pending;
    ++record.Watchers;
}

void release(int index) {
    if (!BoardPresent(CurrentBank)) return;
    ParamRecord& record = ParamTable(CurrentBank, index);
    if (record.Watchers == 1) {
        std::uint8_t& flags = ParamFlags(CurrentBank, index);
        flags = static_cast<std::uint8_t>(flags & ~(flag::Valid | flag::Pending | flag::Watched));
        record.Period &= 15;
    }
    if (record.Watchers > 0) --record.Watchers;
}

}  // namespace

ParamRecord& ParamTable(int bank, int index) { return state().records[position(bank, index)]; }

std::uint8_t& ParamFlags(int bank, int index) { return state().flags[position(bank, index)]; }

bool BoardPresent(int bank) { return state().present[checkedBank(bank)]; }

void SetBoardPresent(int bank, bool present) { state().present[checkedBank(bank)] = present; }

int RecordCount(int bank) { return state().recordCount[checkedBank(bank)]; }

void SetRecordCount(int bank, int count) { state().recordCount[checkedBank(bank)] = count; }

void StoreValue(ParamRecord& record, std::uint32_t value) {
    for (std::size_t i = 0; i < WrittenBytes; ++i) record.Value[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

ParamValue ValueOf(const std::uint8_t* bytes, int highest) {
    constexpr ParamValue Largest = std::numeric_limits<ParamValue>::max();
    ParamValue value = 0;
    for (int i = highest; i >= 0; --i) {
        if (value > (Largest - bytes[i]) / 256) return Largest;
        value = value * 256 + bytes[i];
    }
    return value;
}

void ParamWrite(int index, std::uint32_t value) {
    refuseZero(index);
    StoreValue(ParamTable(CurrentBank, index), value);
    std::uint8_t& flags = ParamFlags(CurrentBank, index);
    flags = static_cast<std::uint8_t>((flags | flag::WriteDue | flag::Watched | flag::Pending) & ~flag::Valid);
    DropHeldWrite(CurrentBank, index);
    NoteWrite(CurrentBank, index, value);
    tell(&LinkObserver::recordWritten, index, value);
}

void ParamWithdraw(int index) {
    tell(&LinkObserver::withdrawingRecord, index);
    std::uint8_t& flags = ParamFlags(CurrentBank, index);
    flags = static_cast<std::uint8_t>(flags & ~flag::WriteDue);
    DropHeldWrite(CurrentBank, index);
    ForgetChange(CurrentBank, index);
}

ParamValue ParamRead(int index, int bank) {
    const ParamRecord& record = ParamTable(bank, index);
    return ValueOf(record.Value.data(), ValueNibble(record.Command));
}

bool ParamIsFresh(int index, int bank) { return (ParamFlags(bank, index) & flag::Valid) != 0; }

void ParamWatch(int index) {
    watch(index);
    NoteSubscribed(CurrentBank, index);
    tell(&LinkObserver::recordWatched, index);
}

void ParamRelease(int index) {
    release(index);
    tell(&LinkObserver::recordReleased, index);
}

int NextPending(int bank, int index, int end) {
    constexpr std::uint64_t PendingInEachByte = 0x0202020202020202ULL;
    if (index >= end) return end;
    position(bank, end - 1);
    const std::uint8_t* const flags = &state().flags[position(bank, index)] - index;
    for (; index + 8 <= end; index += 8) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, flags + index, sizeof eight);
        if (eight & PendingInEachByte) break;
    }
    while (index < end && !(flags[index] & flag::Pending)) ++index;
    return index;
}

}  // namespace kestrel
