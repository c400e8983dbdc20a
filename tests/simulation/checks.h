// What must hold after every event of a simulated run: the hard rules, equality with the reference model, and a cause
// for every value that a board did not say.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

#include "link/observer.h"
#include "link/page.h"
#include "link/param_table.h"
#include "platform/timer.h"
#include "simulation/fault_line.h"
#include "simulation/ledger.h"
#include "simulation/reference_model.h"
#include "simulation/require.h"
#include "support/virtual_platform.h"

namespace kestrel::testing {

using Clock = reference::Model::Clock;
/// The timers of the link that the model has too.
std::array<const Timer*, reference::Model::ClockCount> linkTimers();

class Checks : public LinkObserver {
  public:
    Checks(VirtualPlatform& platform, FaultLine& line);
    ~Checks() override;
    Checks(const Checks&) = delete;
    Checks& operator=(const Checks&) = delete;

    // What happens, told before the program does it.
    void beforeTimer(Clock clock);  ///< ClockCount: any other timer
    void beforeArrival(const Bytes& bytes);
    void beforeLoss();
    void sending(const Bytes& frame);
    // What the program does.
    void searchingPort() override { searching_ = true; }
    void portOpened() override;
    void readingIndexFiles() override;
    void startedAnew() override { started(); }
    void askingIdentity() override;
    void exchangeGivenUp() override;
    void recordWatched(int index) override;
    void recordReleased(int index) override;
    void recordWritten(int index, std::uint32_t value) override;
    void withdrawingRecord(int index) override;
    void loadingPage(const Page& page) override { ledger.opens(page); }
    void tellingPage(const Page& page, int index, ParamValue value) override;
    void pageTold(const Page& page) override;
    // What the runner does.
    void started();
    bool isSearching() const { return searching_; }
    /// The machine on which the program last started.
    std::size_t home() const { return home_; }
    void blocked() { blockedUntil_ = platform_.now(); }
    /// After every event and every act.
    void afterEvent();
    /// Whether the newest value of the record is one that a board said of another, with its cause.
    bool isMisfiled(int bank, int index) const { return misfiled_.contains({bank, index}); }
    /// A reply that was filed under a board that is not there is not followed by a better one.
    bool isMisfiledForGood() const {
        return std::any_of(misfiled_.begin(), misfiled_.end(), [](const auto& at) { return !BoardPresent(at.first); });
    }
    /// Everything, not only what changed.
    void compareAll() const;

    Counts counts{};
    Ledger ledger;
    std::uint64_t traceHash = 14695981039346656037ULL;

  private:
    struct Told {
        const Page* page;
        int index;
        ParamValue value;
    };

    bool beginLinkEvent();
    std::uint32_t addressOf(int bank, int index) const;
    void checkOrigin(const simulator::Frame& frame);
    void checkExchange() const;
    void checkClocks() const;
    void checkTold();
    void storedOverAnEdit(int bank, int index, ParamValue value);
    void explain(int bank, int index, ParamValue value);
    void compareState() const;
    void compareFrames();
    void compareFlags() const;
    void compareRecord(int bank, int index) const;
    bool isShort() const;
    void load(int bank);
    void loadIdentities();
    int questionAsked() const;
    void trace(std::int64_t value);

    VirtualPlatform& platform_;
    FaultLine& line_;
    reference::Model model_;
    bool following_ = false;  ///< the model runs beside the program
    bool loaded_ = false;
    bool searching_ = false;
    std::size_t home_ = 0;
    bool linkEvent_ = false;
    Clock clock_ = Clock::ClockCount;  ///< of this event
    Micros last_ = 0;
    Micros blockedUntil_ = -1;
    int sends_ = 0;  ///< of the open exchange, since it began or last ran out of time
    bool wasIdle_ = true;
    Micros begun_ = 0;              ///< when the open exchange began
    bool left_ = false;             ///< a page has moved the bank since the newest frame
    int sentBank_ = 0;              ///< under which the newest frame was built
    std::pair<int, int> origin_{};  ///< the record that the newest request was copied from
    int indexBefore_ = 0;           ///< where the scan stood when the event began
    int opened_ = 0;
    long interruptions_ = 0;
    std::size_t filesWritten_ = 0;
    std::vector<reference::Frame> sent_;
    std::vector<Told> told_;
    std::set<std::pair<int, int>> misfiled_;
    int bankLeft_ = 0;  ///< by the last page that was told
};

}  // namespace kestrel::testing
