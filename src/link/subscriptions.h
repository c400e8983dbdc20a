// Lists of parameters that a page subscribes to and gives back.
// The bank is set before each run, and the last one stays set.
#pragma once

#include <span>

#include "link/settings.h"

namespace kestrel {

/// A run of consecutive parameters of one board: one, a range, or all from one to another.
struct ParamRun {
    Board board;
    int first;
    int last;
    constexpr ParamRun(const Setting& only) : ParamRun(only, only) {}
    constexpr ParamRun(const SettingRange& all) : ParamRun(all.front(), all.back()) {}
    constexpr ParamRun(const Setting& from, const Setting& to)
        : board(from.board), first(from.number), last(to.number) {
        if (from.board != to.board || last < first) throw std::logic_error("a run that is none");
    }
    // TEMP
    constexpr ParamRun(int bank, int only) : board(static_cast<Board>(bank)), first(only), last(only) {}
    constexpr ParamRun(int bank, int from, int to) : board(static_cast<Board>(bank)), first(from), last(to) {}
};

void Watch(const ParamRun& run);
void Release(const ParamRun& run);
void WatchAll(std::span<const ParamRun> runs);
void ReleaseAll(std::span<const ParamRun> runs);

// TEMP
void WriteTwice(int bank, int parameter, int shadow, unsigned value);

}  // namespace kestrel
