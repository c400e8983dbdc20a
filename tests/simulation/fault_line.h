// The line to the simulated machine of a run, or to two of them: aims the machines' faults, and remembers what the
// boards really said, and until when a wrong value could have a cause.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "simulation/plan.h"
#include "support/line.h"

namespace kestrel::testing {

class FaultLine : public Line {
  public:
    explicit FaultLine(const Plan& plan);

    /// Called with every frame before it goes out, and when a board has made up its mind about one.
    std::function<void(const Bytes&)> onSend;
    std::function<void(const simulator::Exchange&)> onHeard;

    /// The number of the machine on the port that the program uses: the cables of the two ports may be changed over.
    std::size_t plugged() const;
    simulator::Machine& machine() const { return machines_[plugged()]->machine; }
    std::uint32_t memory(int bank, int parameter) const {
        return machine().value(static_cast<simulator::Board>(bank), parameter);
    }
    void setLatency(Micros latency);

    /// The plan's faults strike from now on, or no more; those that go on come to their end.
    void strike(bool on);
    /// One of the machine's incidents begins.
    void begin(Micros now, const std::string& incident);
    /// The program takes nothing for so long: what was on its way stays so.
    void standStill(Micros now, Micros length);

    /// What a board made of the newest frame; `frame` counts frames from 1 and is 0 before the first.
    struct Said {
        long frame = 0;
        int bank = 0;
        std::uint32_t address = 0;
        bool write = false;
        std::uint32_t value = 0;
    };
    const Said& said() const { return said_; }
    long framesSent() const { return frames_; }
    /// Whether a wrong value now has a cause in a reply that came late, or in bytes that were spoiled or added.
    bool lateMayBe() const { return now_ <= lateUntil_; }
    bool spoiledMayBe() const { return now_ <= spoiledUntil_; }
    /// Whether a board may have forgotten or changed what it held.
    bool memoryUpsetSince(Micros time) const { return upset_ >= time; }

    void send(Micros now, const Bytes& frame) override;
    std::optional<Micros> nextEvent() const override { return machines_[plugged()]->nextEvent(); }
    std::optional<Micros> nextArrival(Micros limit) override { return machines_[plugged()]->nextArrival(limit); }
    Bytes take(Micros now) override;
    bool present() const override { return machine().portOpen(); }
    long changes() const override { return changes_; }

  private:
    bool isAimedAt(const Bytes& frame) const;
    void heard(const simulator::Exchange& exchange);
    void mark(std::string_view struck);

    const Plan& plan_;
    std::vector<std::unique_ptr<MachineLine>> machines_;
    long changes_ = 0;  ///< of the cables
    simulator::FaultPlan faults_;
    bool striking_ = false;
    Micros now_ = 0;
    long frames_ = 0;
    long calm_ = 0;  ///< frames that went out before the faults began
    Said said_;
    Micros lateUntil_ = -1;
    Micros spoiledUntil_ = -1;
    Micros upset_ = -1;
};

}  // namespace kestrel::testing
