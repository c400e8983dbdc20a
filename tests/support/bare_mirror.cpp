// Pages over a mirror without a line.
#include "support/bare_mirror.h"

#include "language/language_files.h"
#include "link/param_table.h"
#include "support/world.h"

namespace kestrel::testing {

namespace {

constexpr int Used = 1500;  // more than any page names
constexpr int Highest = 3;  // number of the last value byte

void notify(int bank, int parameter) {
    CurrentBank = bank;
    const ParamRecord& record = ParamTable(bank, parameter);
    NotifyPages(parameter, Bytes(record.Value.begin(), record.Value.begin() + Highest + 1), Highest);
}

void becomesFresh(int bank, int parameter) {
    std::uint8_t& flags = ParamFlags(bank, parameter);
    flags = static_cast<std::uint8_t>((flags | flag::Valid) & ~(flag::Pending | flag::WriteDue));
}

}  // namespace

BareMirror::BareMirror() {
    platform.install(InstallationDirectory());
    LoadLanguage("English.lng");
    for (int bank = 0; bank < Banks; ++bank) {
        SetBoardPresent(bank, true);
        for (int n = 1; n < Used; ++n) ParamTable(bank, n).Command = Highest;
    }
}

void BareMirror::arrive(int bank, int parameter, std::uint32_t value) {
    StoreValue(ParamTable(bank, parameter), value);
    becomesFresh(bank, parameter);
    notify(bank, parameter);
}

void BareMirror::deliver(int bank, int parameter) {
    becomesFresh(bank, parameter);
    notify(bank, parameter);
}

Writes BareMirror::deliverAll() {
    Writes delivered;
    for (Writes now = due(); !now.empty(); now = due())
        for (const BoardValue& write : now) {
            delivered.push_back(write);
            deliver(write.bank, write.parameter);
        }
    return delivered;
}

Writes BareMirror::due() const {
    Writes found;
    for (int bank = 0; bank < Banks; ++bank)
        for (int n = 1; n < Used; ++n)
            if (ParamFlags(bank, n) & flag::WriteDue)
                found.push_back(
                    {bank, n, static_cast<std::uint32_t>(ValueOf(ParamTable(bank, n).Value.data(), Highest))});
    return found;
}

}  // namespace kestrel::testing
