// What is counted in a run; the words for each stand where they are printed.
#pragma once

#include <array>
#include <cstddef>

namespace kestrel::testing {

enum Count : std::size_t {
    Events,
    Acts,
    Boxes,
    Frames,
    Accepted,
    TimeOuts,
    Repeats,
    OverwrittenEdits,
    MovedBanks,
    LeftFrames,
    LateReplies,
    BlindReplies,
    OrphanWrites,
    PagesCompared,
    PagesExcused,
    // How what was wanted ended.
    Confirmed,
    Replaced,
    ToldNotTaken,
    Dropped,
    LostKeys,
    BoardLied,
    FalseReplies,
    SlowReplies,
    CountKinds
};
using Counts = std::array<long, CountKinds>;

}  // namespace kestrel::testing
