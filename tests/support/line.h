// What stands on the other end of the serial line in a test.
// Either a script that answers each frame, or a whole simulated machine.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <vector>

#include "platform/serial_control.h"
#include "simulator/machine.h"

namespace kestrel::testing {

using Micros = std::int64_t;

/// The far end of a line; abstract because a script and a machine answer in different ways.
class Line {
  public:
    virtual ~Line() = default;
    /// The program sends these bytes from `now` on.
    virtual void send(Micros now, const Bytes& bytes) = 0;
    /// When something may next come out, or nothing.
    virtual std::optional<Micros> nextEvent() const = 0;
    /// When bytes next come out, or the device comes or goes, if that is by `limit`. What the far end does by itself
    /// until then may have happened on return; nothing is sent to it before.
    virtual std::optional<Micros> nextArrival(Micros limit) {
        const auto next = nextEvent();
        return next && *next <= limit ? next : std::nullopt;
    }
    /// What has arrived at the program by `now`.
    virtual Bytes take(Micros now) = 0;
    /// Whether the device is there.
    virtual bool present() const { return true; }
    /// How often another device has taken its place: a port that was open is lost by that.
    virtual long changes() const { return 0; }
};

/// Answers by a function of the frame: pieces of bytes, each some microseconds after the frame was sent.
class ScriptedLine : public Line {
  public:
    struct Piece {
        Micros after;
        Bytes bytes;
    };
    using Answer = std::function<std::vector<Piece>(const Bytes& frame)>;

    struct Sent {
        Micros when;
        Bytes frame;
    };
    std::vector<Sent> sent;  ///< every frame that went out
    Answer answer = [](const Bytes&) { return std::vector<Piece>{}; };
    bool there = true;

    void send(Micros now, const Bytes& bytes) override;
    std::optional<Micros> nextEvent() const override;
    Bytes take(Micros now) override;
    bool present() const override { return there; }
    /// Bytes that arrive by themselves.
    void inject(Micros when, const Bytes& bytes) { insert(when, bytes); }

  private:
    void insert(Micros when, const Bytes& bytes);
    std::deque<std::pair<Micros, Bytes>> coming_;
};

/// A simulated machine, switched on at time 0.
class MachineLine : public Line {
  public:
    explicit MachineLine(const simulator::MachineOptions& options) : machine(options) {}
    simulator::Machine machine;

    void send(Micros now, const Bytes& bytes) override { machine.send(now, bytes); }
    std::optional<Micros> nextEvent() const override { return machine.nextEvent(); }
    std::optional<Micros> nextArrival(Micros limit) override;
    Bytes take(Micros now) override {
        machine.advance(now);
        return machine.takeOutput(now);
    }
    bool present() const override { return machine.portOpen(); }

  private:
    bool wasPresent_ = true;
};

}  // namespace kestrel::testing
