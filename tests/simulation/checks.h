// What must hold after every event of a simulated run: the hard rules, equality with the reference model, and a cause
// for every value that a board did not say.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "link/page.h"
#include "simulation/fault_line.h"
#include "simulation/reference_model.h"
#include "support/virtual_platform.h"

namespace kestrel::testing {

/// A check that did not hold. Not to be caught by the program.
struct CheckFailed {
    std::string check;
    std::string detail;
};
/// The rules of the program let the run go no further.
struct EndedByRules {
    std::string why;
};
[[noreturn]] void failCheck(const std::string& check, const std::string& detail);
inline void require(bool holds, const char* check) {
    if (!holds) failCheck(check, "");
}

/// What was counted in a run; the hazards are those that the rules of the link themselves contain.
struct Counts {
    long events = 0, frames = 0, accepted = 0, timeouts = 0, repeats = 0, boxes = 0, acts = 0;
    long overwrittenEdits = 0;  ///< (a) an edit overwritten by a reply for the same record that was under way
    long movedBanks = 0;        ///< (b) a reply filed after a page moved the cursor behind its frame
    long leftFrames = 0;        ///< (b) frames behind which a page moved the cursor, so that the reply may be dropped
    long lateReplies = 0;       ///< (c) a late reply met another request
    long blindReplies = 0;      ///< (d) spoiled bytes passed for a good reply
    long orphanWrites = 0;      ///< a page closed before its write went out
    long pagesCompared = 0;     ///< at rest, with a new one of their class
    long pagesExcused = 0;      ///< not compared, for one of the known causes
    void add(const Counts& other);
};

class Checks {
  public:
    /// Whose timer ran out; a page's timers, and any other, count as Other.
    enum class Role { Tick, Reply, SendLamp, ReceiveLamp, Reopen, Other };

    Checks(VirtualPlatform& platform, FaultLine& line);
    ~Checks();
    /// The one that listens, or null.
    static Checks* present();

    // What happens, told before the program does it.
    void beforeTimer(Role role);
    void beforeArrival(const Bytes& bytes);
    void beforeLoss();
    void beforeQuestion();  ///< of identification
    void sending(const Bytes& frame);
    // Round the program's own calls.
    void watched(int index);
    void released(int index);
    void written(int index, std::uint32_t value);
    void telling(const Page& page, int index, ParamValue value);
    void told();
    // What the runner does.
    void started();
    void searching() { searching_ = true; }
    void searched();
    bool isSearching() const { return searching_; }
    void blocked() { blockedUntil_ = platform_.now(); }
    /// After every event and every act.
    void afterEvent();
    /// Whether the newest value of the record is one that a board said of another, with its cause.
    bool isMisfiled(int bank, int index) const { return misfiled_.contains({bank, index}); }
    /// After a time-out the record at the cursor decides whether the frame goes again, until its board answers. A page
    /// that moved the cursor may so have a frame repeated to a board that does not know its address.
    bool repeatsAStrayFrame() const;
    /// Everything, not only what changed.
    void compareAll();

    Counts counts;
    std::uint64_t traceHash = 14695981039346656037ULL;
    void trace(std::uint64_t value);

  private:
    using Clock = ReferenceModel::Clock;
    struct Told {
        const Page* page;
        int index;
        ParamValue value;
    };

    void beginLinkEvent();
    void checkForm(const Bytes& frame) const;
    void checkOrigin(const Bytes& frame);
    void checkExchange() const;
    void checkClocks() const;
    void checkTold();
    void explain(const ReferenceModel::Told& told);
    void compareState() const;
    void compareFrames();
    void compareFlags();
    void compareRecord(int bank, int index) const;
    void load(int bank);
    std::uint32_t addressOf(int bank, int index) const;

    VirtualPlatform& platform_;
    FaultLine& line_;
    ReferenceModel model_;
    std::vector<std::vector<IndexRecord>> records_{3};
    std::vector<std::vector<std::uint8_t>> flags_{3};     ///< as they were after the last event
    std::vector<std::vector<std::uint8_t>> watchers_{3};  ///< counted here
    bool following_ = false;                              ///< the model runs beside the program
    bool loaded_ = false;
    bool searching_ = false;
    bool linkEvent_ = false;
    Role role_ = Role::Other;
    Micros last_ = 0;
    Micros lastTick_ = -1'000'000;
    Micros blockedUntil_ = -1;
    int sends_ = 0;                 ///< of the open exchange, since it began or last ran out of time
    bool left_ = false;             ///< a page has moved the bank since the newest frame
    int sentBank_ = 0;              ///< under which the newest frame was built
    std::pair<int, int> origin_{};  ///< the record that the newest request was copied from
    int bankBefore_ = 0;            ///< the cursor when the event began
    int indexBefore_ = 0;           ///< and where the scan stood
    int opened_ = 0;
    std::size_t filesWritten_ = 0;
    std::vector<ReferenceModel::Frame> sent_;
    std::vector<Told> told_;
    std::set<std::pair<int, int>> misfiled_;
    bool telling_ = false;
    int bankLeft_ = 0;  ///< by the last page that was told
};

}  // namespace kestrel::testing
