// Lists of parameters that a page subscribes to and gives back.
// The bank is set before each run, and the last one stays set.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

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
};

void Watch(const ParamRun& run);
void Release(const ParamRun& run);
void WatchAll(std::span<const ParamRun> runs);
void ReleaseAll(std::span<const ParamRun> runs);

/// While one lives, subscriptions may be given back and taken anew: what has more of them at its end than before loses
/// those again, such as what a page takes and never gives back.
class KeepSubscriptions {
  public:
    KeepSubscriptions();
    ~KeepSubscriptions();
    KeepSubscriptions(const KeepSubscriptions&) = delete;
    KeepSubscriptions& operator=(const KeepSubscriptions&) = delete;

  private:
    std::array<std::vector<std::uint8_t>, Banks> watchers_;
};

}  // namespace kestrel
