// The line to the simulated machine, with everything that goes wrong on the way: it spoils, holds back, adds and pulls.
// It remembers what the boards really said, and until when a wrong value could have a cause.
#pragma once

#include <functional>

#include "simulation/plan.h"
#include "support/line.h"

namespace kestrel::testing {

class FaultLine : public Line {
  public:
    explicit FaultLine(const Plan& plan);

    simulator::Machine machine;

    /// Called with every frame before it goes out.
    std::function<void(const Bytes&)> onSend;
    /// The record whose frame goes out next, for faults that need to know: its bank and number.
    std::function<std::pair<int, int>()> target;

    /// Faults of the line strike from now on, or no more; leaving off ends those that go on, and plugs all in.
    void strike(Micros now, bool on);
    /// One incident begins. `number` draws its details.
    void begin(Micros now, Fault incident, int number);

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
    /// Whether the boards' values changed behind the program's back, or a write was acknowledged without effect.
    bool boardsWereTampered() const { return tampered_; }

    void send(Micros now, const Bytes& frame) override;
    std::optional<Micros> nextEvent() const override;
    std::optional<Micros> nextArrival(Micros limit) override;
    Bytes take(Micros now) override;
    bool present() const override { return machine.portOpen(); }

  private:
    bool strikes(Fault fault);
    bool strikesOnce() const;
    Dice& of(Fault fault) { return chances_[static_cast<std::size_t>(fault)]; }
    void heard(const simulator::Exchange& exchange);
    void lie(const simulator::Exchange& exchange);
    void changeReply(const simulator::Exchange& exchange);
    void putAll(Dice& random);
    void addStream(Bytes& bytes);
    void spoiledIn(Micros wait);  ///< bytes that are no board's may lie about until then and some time more
    void pass(Micros now) { now_ = std::max(now_, now); }

    const Plan& plan_;
    std::vector<Dice> chances_;
    simulator::FaultPlan machineFaults_;
    bool striking_ = false;
    bool aimed_ = false;
    Micros now_ = 0;
    long frames_ = 0;
    long calm_ = 0;  ///< frames that went out before the faults began
    Said said_;
    Micros lateUntil_ = -1;
    Micros spoiledUntil_ = -1;
    bool tampered_ = false;
    std::pair<int, int> written_{};     ///< the record of the newest frame
    std::uint32_t before_ = 0;          ///< and what the board held then
    std::deque<std::uint8_t> changes_;  ///< by which the coming bytes are changed
    Bytes held_;                        ///< while the boards are busy
    Bytes stray_;                       ///< come at once
    Micros busyUntil_ = -1;
    Micros streamUntil_ = -1;
    Micros streamed_ = 0;
    Micros backAt_ = -1;  ///< when the cable is put back
    bool wasPresent_ = true;
};

}  // namespace kestrel::testing
