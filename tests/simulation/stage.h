// The machine under the program in a simulated run: tells the checks which timer is about to fire, lets chance answer
// the message boxes, and lays out the installation.
#pragma once

#include <array>
#include <memory>
#include <string>

#include "simulation/checks.h"
#include "simulation/plan.h"
#include "support/virtual_platform.h"

namespace kestrel::testing {

class Stage : public VirtualPlatform {
  public:
    explicit Stage(const Plan& plan);

    std::unique_ptr<TimerBackend> makeTimer(std::function<void()> onExpiry) override;
    Message::Answer showMessage(const Message& message) override;

    /// One of the computer's incidents begins, where it is one of the port or the disk. False: it is another.
    bool begin(const std::string& incident, Dice& random);
    bool diskIsSpoiled() const { return diskIsSpoiled_; }

    Checks* checks = nullptr;  ///< who is told; to be set before the program starts
    bool started = false;      ///< from now on events go on under a box
    std::string lastBox;

  private:
    Message::Answer answerTo(const Message& message);
    void changeIndexFiles(std::uint64_t seed);

    Dice answers_;
    std::array<bool, reference::Model::ClockCount> known_{};  ///< the link's timers that have been made
    bool boxOpen_ = false;
    bool diskIsSpoiled_ = false;
};

}  // namespace kestrel::testing
