// The mirror by the names of the catalogue: what pages read, write and are told, without a number or a bank.
// All of these work in the parameter's own bank; those that write leave CurrentBank there.
#pragma once

#include "catalogue/parameters.h"
#include "link/param_table.h"

namespace kestrel {

constexpr int BankOf(Board board) { return static_cast<int>(board); }

inline bool IsCurrent(Board board) { return CurrentBank == BankOf(board); }

/// Whether what a page is being told of, parameter n in CurrentBank, is this one.
inline bool Arrived(int n, const Setting& setting) { return n == setting.number && IsCurrent(setting.board); }
/// Which of the range it is, or -1.
inline int ArrivedAt(int n, const SettingRange& range) { return IsCurrent(range.board()) ? range.indexOf(n) : -1; }

inline ParamValue ParamRead(const Setting& setting) { return ParamRead(setting.number, BankOf(setting.board)); }
inline bool ParamIsFresh(const Setting& setting) { return ParamIsFresh(setting.number, BankOf(setting.board)); }
/// Whether the mirror holds the board's values of all of them.
bool AllAreFresh(const SettingRange& range);

void ParamWrite(const Setting& setting, std::uint32_t value);
/// To the parameter and then to its copy. Throws std::logic_error where it has none.
void WriteTwice(const Setting& setting, std::uint32_t value);

}  // namespace kestrel
