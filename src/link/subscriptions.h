// Lists of parameters that a page subscribes to and gives back.
// The bank is set before each run, and the last one stays set.
#pragma once

#include <span>

namespace kestrel {

/// A run of consecutive parameters of one bank.
struct ParamRun {
    int bank;
    int first;
    int last;
    constexpr ParamRun(int inBank, int only) : bank(inBank), first(only), last(only) {}
    constexpr ParamRun(int inBank, int from, int to) : bank(inBank), first(from), last(to) {}
};

void WatchAll(std::span<const ParamRun> runs);
void ReleaseAll(std::span<const ParamRun> runs);

/// Writes the value to both parameters of the bank, in this order: the board keeps most settings twice.
void WriteTwice(int bank, int parameter, int shadow, unsigned value);

}  // namespace kestrel
