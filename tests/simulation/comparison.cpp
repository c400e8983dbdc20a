// Equality of the program with the reference model, which is given the same files, after every event.
#include <cstring>

#include "link/changes.h"
#include "link/link_engine.h"
#include "simulation/checks.h"
#include "simulator/exchange.h"

namespace kestrel::testing {

namespace {

constexpr std::uint8_t UnusedBits = 8 | 16 | 32 | 64;
constexpr std::array<const char*, Banks> ParameterFiles = {"W0256AP03.inx", "W0292AP07.inx", "W0245AB04.inx"};
constexpr std::array<const char*, Banks> IdentityFiles = {"W0256.inx", "W0292.inx", "W0245.inx"};
constexpr std::size_t ParameterSize = 9;
constexpr std::size_t IdentitySize = 5;
static_assert(sizeof(reference::IndexRecord) == ParameterSize, "a record of the model is one of the file");

std::string textOf(const std::vector<reference::Frame>& frames) {
    std::string all;
    for (const auto& frame : frames)
        all += say(frame.when, ":", simulator::hexOf({frame.bytes.begin(), frame.bytes.begin() + frame.count}), "; ");
    return all;
}

}  // namespace

void Checks::started() {
    linkEvent_ = false;
    for (int bank = 0; bank < Banks; ++bank) load(bank);
    model_.currentBank = CurrentBank;
    model_.setup = false;
    model_.startScan(platform_.now());
    loaded_ = true;
    home_ = line_.plugged();
    compareAll();
}

/// The tables have been emptied: the boards that are there now are asked as at the start.
void Checks::readingIndexFiles() {
    if (!loaded_) return;
    loaded_ = false;
    model_.startAnew();
    ledger.startsAnew();
}

void Checks::load(int bank) {
    const auto at = static_cast<std::size_t>(bank);
    const bool there = BoardPresent(bank);
    const std::string& file = platform_.file(there ? ParameterFiles[at] : IdentityFiles[at]);
    const std::size_t count = file.size() / (there ? ParameterSize : IdentitySize);
    std::vector<reference::IndexRecord> records(there ? count : 0);
    if (there) std::memcpy(records.data(), file.data(), count * ParameterSize);
    model_.load(bank, there, static_cast<int>(count), records);
    same("a bank has the records of its file", RecordCount(bank), static_cast<int>(count));
}

void Checks::loadIdentities() {
    for (std::size_t bank = 0; bank < Banks; ++bank) {
        const std::string& file = platform_.file(IdentityFiles[bank]);
        auto& records = model_.identities[bank];
        records.resize(file.size() / IdentitySize);
        for (std::size_t i = 0; i < records.size(); ++i)
            std::copy_n(&file[i * IdentitySize], IdentitySize, reinterpret_cast<char*>(&records[i]));
    }
    model_.isUsers = IsChange;
}

/// The number of the identity record that the program asks for.
int Checks::questionAsked() const {
    const Request& request = Link().RequestBytes;
    for (const int number : reference::Recheck::questions) {
        const auto& record =
            model_.identities[static_cast<std::size_t>(CurrentBank)][static_cast<std::size_t>(number) - 1];
        const bool isIt =
            record.addr0 == request.Addr0 && record.addr1 == request.Addr1 && record.addr2 == request.Addr2;
        if (isIt) return number;
    }
    require(false, "a board is asked for what it says of itself");
    return 0;
}

std::uint32_t Checks::addressOf(int bank, int index) const {
    const auto& record = model_.banks[static_cast<std::size_t>(bank)].file[static_cast<std::size_t>(index)];
    return record.addr0 | record.addr1 * 256U | record.addr2 * 65536U;
}

void Checks::portOpened() {
    searching_ = false;
    blocked();
    if (!following_) return;
    opened_ = platform_.opened;
    model_.portThere = true;
    model_.portSearched(Link().Comm1->PortOpen());
}

void Checks::compareState() const {
    const LinkState& link = Link();
    same("the bank is the model's", CurrentBank, model_.currentBank);
    same("the scan stands where the model's does", link.ScanIndex, model_.scanIndex);
    same("bad replies are counted as in the model", link.RetryCount, model_.retryCount);
    same("the link is idle when the model is", link.LinkIdle, model_.idle);
    same("the port is open when the model's is", link.Comm1->PortOpen(), model_.portOpen);
    same("the unread bytes are the model's", link.Comm1->InBufferCount(), static_cast<int>(model_.unread.size()));
    same("the port opens as in the model", platform_.opened - opened_, model_.outputs.opened);
    for (int panel = 2; panel <= 4; ++panel)
        same("the lamps are the model's", link.statusBar->Panels(panel).Picture.get(),
             model_.pictures[static_cast<std::size_t>(panel) - 2]);
    same("panel 1 is the model's", link.statusBar->Panels(1).Text.get(), model_.panelText);
}

void Checks::compareFrames() {
    const auto& expected = model_.outputs.frames;
    if (sent_ != expected) same("frames are the model's", textOf(sent_), textOf(expected));
    for (const auto& frame : sent_)
        for (std::size_t i = 0; i < frame.count; ++i) trace(frame.bytes[i]);
}

void Checks::compareFlags() const {
    for (int bank = 0; bank < Banks; ++bank) {
        const auto& model = model_.banks[static_cast<std::size_t>(bank)];
        const bool equal =
            std::memcmp(&ParamFlags(bank, 0), model.flags.data(), static_cast<std::size_t>(model.recordCount) + 1) == 0;
        for (int index = 0; !equal && index <= model.recordCount; ++index) compareRecord(bank, index);
    }
}

void Checks::compareRecord(int bank, int index) const {
    const ParamRecord& record = ParamTable(bank, index);
    const auto& model = model_.banks[static_cast<std::size_t>(bank)];
    const auto& [value, period, watchers] = model.records[static_cast<std::size_t>(index)];
    const int flags = model.flags[static_cast<std::size_t>(index)];
    const int now = ParamFlags(bank, index);
    const bool possible = (!(now & flag::Pending) || (now & flag::Watched)) && !(now & UnusedBits);
    require(possible, "flags have one of their states", Place{bank, index}, " flags ", now);
    const bool equal = std::equal(value.begin(), value.end(), record.Value.begin()) && record.Period == period &&
                       record.Watchers == watchers && now == flags;
    require(equal, "the mirror is the model's", Place{bank, index}, " value ", int{record.Value[0]}, "/", int{value[0]},
            " period ", int{record.Period}, "/", int{period}, " watchers ", int{record.Watchers}, "/", int{watchers},
            " flags ", now, "/", flags);
}

void Checks::compareAll() const {
    for (int bank = 0; bank < Banks; ++bank)
        for (int index = 0; index <= RecordCount(bank); ++index) compareRecord(bank, index);
}

}  // namespace kestrel::testing
