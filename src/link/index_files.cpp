// The binary index files of the installation.
#include "link/index_files.h"

#include <string_view>

#include "link/identification.h"
#include "link/link_engine.h"
#include "link/observer.h"
#include "link/param_table.h"
#include "link/recheck.h"
#include "platform/errors.h"
#include "platform/module_state.h"
#include "platform/platform.h"

namespace kestrel {

struct IndexState {
    std::array<std::array<IdentRecord, IdentRecords>, Banks> ident{};
    BoardTables boards;
};
template class Module<IndexState>;

namespace {

constexpr std::size_t IdentityRecordSize = 5;
constexpr std::size_t ParameterRecordSize = 9;
constexpr std::size_t PreloadOffset = 5;

IndexState& state() { return stateOf<IndexState>(); }

/// The last `digits` digits of a number, with leading zeros.
std::string lastDigits(int number, std::size_t digits) {
    std::string text = std::to_string(number);
    if (text.size() < digits) text.insert(0, digits - text.size(), '0');
    return text.substr(text.size() - digits);
}

std::uint8_t byteAt(std::string_view record, std::size_t offset) { return static_cast<std::uint8_t>(record[offset]); }

/// What an identity and a parameter record have in common.
template <class Record>
Record headerOf(std::string_view bytes) {
    Record record;
    record.Addr2 = byteAt(bytes, 0);
    record.Addr1 = byteAt(bytes, 1);
    record.Command = byteAt(bytes, 2);
    record.Period = byteAt(bytes, 3);
    record.Addr0 = byteAt(bytes, 4);
    return record;
}

std::string readIndexFile(const std::string& name) { return platform().readFile(platform().programDirectory() / name); }

/// Calls `store` with the number and the bytes of each whole record, counting them in the bank's record count.
template <class Store>
void readRecords(const std::string& name, std::size_t recordSize, const Store& store) {
    const std::string bytes = readIndexFile(name);
    const std::size_t records = bytes.size() / recordSize;
    SetRecordCount(CurrentBank, 0);
    for (std::size_t i = 0; i < records; ++i) {
        const int number = RecordCount(CurrentBank) + 1;
        if (number > LargestRecordCount) throw RunTimeError(error_number::Overflow, "Overflow");
        SetRecordCount(CurrentBank, number);
        store(number, std::string_view(bytes).substr(i * recordSize, recordSize));
    }
}

void readIdentityFile(const std::string& name) {
    readRecords(name, IdentityRecordSize, [](int number, std::string_view bytes) {
        IdentTable(CurrentBank, number) = headerOf<IdentRecord>(bytes);
    });
}

void readParameterFile(const std::string& name) {
    readRecords(name, ParameterRecordSize, [](int number, std::string_view bytes) {
        auto record = headerOf<ParamRecord>(bytes);
        for (std::size_t i = 0; i < WrittenBytes; ++i) record.Value[i] = byteAt(bytes, PreloadOffset + i);
        ParamTable(CurrentBank, number) = record;
        ParamFlags(CurrentBank, number) = 0;
    });
}

[[noreturn]] void endWithoutFile(const std::string& name, const std::string& reason) {
    Message message;
    message.title = "ERROR";
    message.text = name + " not found !";
    message.detail = reason;
    ShowMessage(message);
    EndProcess(EndedByTrouble);
}

}  // namespace

IdentRecord& IdentTable(int bank, int index) {
    if (bank < 0 || bank >= Banks || index < 0 || index >= IdentRecords)
        throw RunTimeError(error_number::SubscriptOutOfRange, "Identity record " + std::to_string(index) + " of bank " +
                                                                  std::to_string(bank) + " is out of the table");
    return state().ident[static_cast<std::size_t>(bank)][static_cast<std::size_t>(index)];
}

const BoardTables& Boards() { return state().boards; }

void InitBoardTables() { state().boards = {{256, 292, 245}, {15, 15, 1}, {1, 0, 0}}; }

std::string IdentityFileName(int boardNumber) { return "W" + lastDigits(boardNumber, 4) + ".inx"; }

std::string ParameterFileName(int boardType, int software, int release) {
    return "W" + lastDigits(boardType, 4) + "A" + static_cast<char>('A' + software) + lastDigits(release, 2) + ".inx";
}

std::string ParameterFileName(const BoardIdentity& identity) {
    return ParameterFileName(identity.boardType, identity.software, identity.release);
}

void LoadIdentityFiles() {
    for (CurrentBank = 0; CurrentBank < Banks; ++CurrentBank) {
        const int number = Boards().boardNumber[static_cast<std::size_t>(CurrentBank)];
        readIdentityFile(IdentityFileName(number));
    }
}

void LoadParameterFile(const std::string& name) { readParameterFile(name); }

void LoadIndexFiles() {
    tell(&LinkObserver::readingIndexFiles);
    std::string parameterFile;
    try {
        platform().changeDirectory(platform().programDirectory());
        LoadIdentityFiles();
        for (CurrentBank = 0; CurrentBank < Banks; ++CurrentBank) {
            const BoardIdentity identity = IdentifyBoard(CurrentBank);
            if (!BoardPresent(CurrentBank)) continue;
            RememberIdentity(CurrentBank, identity);
            parameterFile = ParameterFileName(identity);
            LoadParameterFile(parameterFile);
        }
    } catch (const RunTimeError& error) {
        endWithoutFile(parameterFile, error.what());
    }
    Link().Timer2.Enabled = false;
    CurrentBank = 0;
    constexpr int ErrorLampOff = 3;
    SetLinkIndicator(ErrorLampOff);
}

}  // namespace kestrel
