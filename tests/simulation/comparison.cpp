// Equality of the program with the reference model, which is given the same files, after every event.
// See checks.h.
#include <algorithm>
#include <cstring>

#include "link/link_engine.h"
#include "link/param_table.h"
#include "simulation/checks.h"
#include "simulation/say.h"
#include "simulator/exchange.h"

namespace kestrel::testing {

namespace {

constexpr std::uint8_t UnusedBits = 8 | 16 | 32 | 64;
constexpr std::array<const char*, Banks> ParameterFiles = {"W0256AP03.inx", "W0292AP07.inx", "W0245AB04.inx"};
constexpr std::array<const char*, Banks> IdentityFiles = {"W0256.inx", "W0292.inx", "W0245.inx"};
constexpr std::size_t ParameterSize = 9;
constexpr std::size_t IdentitySize = 5;

std::uint8_t byteOf(const std::string& text, std::size_t at) { return static_cast<std::uint8_t>(text[at]); }

std::string textOf(const std::vector<ReferenceModel::Frame>& frames) {
    std::string all;
    for (const auto& frame : frames)
        all +=
            say(frame.when, ":",
                simulator::hexOf({frame.bytes.begin(), frame.bytes.begin() + static_cast<std::ptrdiff_t>(frame.count)}),
                "; ");
    return all;
}

bool sameFrame(const ReferenceModel::Frame& one, const ReferenceModel::Frame& other) {
    return one.when == other.when && one.count == other.count &&
           std::equal(one.bytes.begin(), one.bytes.begin() + static_cast<std::ptrdiff_t>(one.count),
                      other.bytes.begin());
}

}  // namespace

void Checks::started() {
    linkEvent_ = false;
    for (int bank = 0; bank < Banks; ++bank) load(bank);
    model_.setCurrentBank(CurrentBank);
    model_.setLinkSetup(false);
    model_.startScan(platform_.now());
    loaded_ = true;
    compareAll();
}

void Checks::load(int bank) {
    const auto at = static_cast<std::size_t>(bank);
    const bool there = BoardPresent(bank);
    const std::string& file = platform_.file(there ? ParameterFiles[at] : IdentityFiles[at]);
    const std::size_t count = file.size() / (there ? ParameterSize : IdentitySize);
    for (std::size_t i = 0; there && i < count; ++i) {
        const std::size_t from = i * ParameterSize;
        records_[at].push_back(
            {byteOf(file, from),
             byteOf(file, from + 1),
             byteOf(file, from + 2),
             byteOf(file, from + 3),
             byteOf(file, from + 4),
             {byteOf(file, from + 5), byteOf(file, from + 6), byteOf(file, from + 7), byteOf(file, from + 8)}});
    }
    model_.load(bank, there, static_cast<int>(count), records_[at]);
    if (RecordCount(bank) != static_cast<int>(count)) failCheck("a bank has the records of its file", say(bank));
}

std::uint32_t Checks::addressOf(int bank, int index) const {
    const auto& records = records_[static_cast<std::size_t>(bank)];
    const auto at = static_cast<std::size_t>(index) - 1;
    if (index < 1 || at >= records.size()) return 0;
    return records[at].addr0 | records[at].addr1 * 256U | records[at].addr2 * 65536U;
}

void Checks::searched() {
    searching_ = false;
    blocked();
    if (!following_) return;
    opened_ = platform_.opened;
    model_.setPortThere(true);
    model_.portSearched(Link().ReplyData.at(0));
}

void Checks::compareState() const {
    const LinkState& link = Link();
    const bool same = CurrentBank == model_.currentBank() && link.ScanIndex == model_.scanIndex() &&
                      link.RetryCount == model_.retryCount() && link.LinkIdle == model_.idle() &&
                      link.Comm1->PortOpen() == model_.portOpen();
    if (!same)
        failCheck("the engine is where the model is",
                  say("bank ", CurrentBank, "/", model_.currentBank(), " index ", link.ScanIndex, "/",
                      model_.scanIndex(), " retries ", link.RetryCount, "/", model_.retryCount(), " idle ",
                      link.LinkIdle, "/", model_.idle(), " open ", link.Comm1->PortOpen(), "/", model_.portOpen()));
    require(link.Comm1->InBufferCount() == static_cast<int>(model_.unread()), "the unread bytes are the model's");
    require(platform_.opened - opened_ == model_.outputs().opened, "the port opens as in the model");
    for (int panel = 2; panel <= 4; ++panel)
        if (link.statusBar->Panels(panel).Picture != model_.picture(panel))
            failCheck("the lamps are the model's", say(panel));
    if (link.statusBar->Panels(1).Text.get() != model_.panelText())
        failCheck("panel 1 is the model's", link.statusBar->Panels(1).Text.get());
}

void Checks::compareFrames() {
    const auto& expected = model_.outputs().frames;
    if (!std::equal(sent_.begin(), sent_.end(), expected.begin(), expected.end(), sameFrame))
        failCheck("frames are the model's", textOf(sent_) + "not " + textOf(expected));
    for (const auto& frame : sent_)
        for (std::size_t i = 0; i < frame.count; ++i) trace(frame.bytes[i]);
}

void Checks::compareFlags() {
    const auto& told = model_.outputs().told;
    for (int bank = 0; bank < Banks; ++bank) {
        auto& before = flags_[static_cast<std::size_t>(bank)];
        const auto count = static_cast<std::size_t>(RecordCount(bank)) + 1;
        const std::uint8_t* now = &ParamFlags(bank, 0);
        if (std::memcmp(now, before.data(), count) == 0) continue;
        for (std::size_t i = 0; i < count; ++i) {
            if (now[i] == before[i]) continue;
            const auto index = static_cast<int>(i);
            const bool accepted = !told.empty() && told[0].bank == bank && told[0].index == index;
            const bool wrong = ((now[i] & flag::Pending) && !(now[i] & flag::Watched)) || (now[i] & UnusedBits) ||
                               ((now[i] & ~before[i] & flag::Valid) && !accepted) || now[i] != model_.flags(bank)[i];
            if (wrong)
                failCheck("flags change as their table says",
                          say(place(bank, index), " ", int{before[i]}, " to ", int{now[i]}, ", the model ",
                              int{model_.flags(bank)[i]}));
            before[i] = now[i];
        }
    }
}

void Checks::compareRecord(int bank, int index) const {
    const ParamRecord& record = ParamTable(bank, index);
    const auto& expected = model_.record(bank, index);
    const bool same = std::equal(expected.value.begin(), expected.value.end(), record.Value.begin()) &&
                      record.Period == expected.period && record.Watchers == expected.watchers &&
                      ParamFlags(bank, index) == model_.flags(bank)[index];
    if (!same)
        failCheck(
            "the mirror is the model's",
            say(place(bank, index), " value ", int{record.Value[0]}, "/", int{expected.value[0]}, " period ",
                int{record.Period}, "/", int{expected.period}, " watchers ", int{record.Watchers}, "/",
                int{expected.watchers}, " flags ", int{ParamFlags(bank, index)}, "/", int{model_.flags(bank)[index]}));
}

void Checks::compareAll() {
    for (int bank = 0; bank < Banks; ++bank)
        for (int index = 0; index <= RecordCount(bank); ++index) compareRecord(bank, index);
}

}  // namespace kestrel::testing
