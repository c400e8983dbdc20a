// What bars and stepped switches share: a number that the user moves by gestures.
// While a gesture lasts the value under the finger shows; one change goes out at its end.
#pragma once

#include <optional>

#include "platform/control.h"
#include "platform/timer.h"

namespace kestrel {

/// A drag or a held button lasts until it is let go; steps that follow each other quickly are one gesture. A control
/// that is locked or goes takes its gesture along. An interruption of the line ends none: what is handed over after it
/// is an act like any other.
class Movable : public Control {
  public:
    /// Steps that come within this time of each other belong together; milliseconds.
    static constexpr int SettleMs = 250;

    Movable();
    ~Movable() override;

    bool isMoving() const { return preview_.has_value(); }
    /// The value under the finger, or one that waits for the end of an exchange, or the control's own.
    int shownValue() const;

    /// A whole gesture by itself.
    void UserMove(int value);
    /// It lasts until it is ended by one of those below.
    void UserHold(long long value);
    /// It ends when no other step follows within SettleMs.
    void UserStepTo(long long value);
    void UserStepBy(int amount);
    /// A key or an arrow is held: the gesture goes on by this, faster the longer it is held where the range is wide.
    void UserStepOn(int amount);
    /// What was held ends as a step does.
    void UserSettle();
    /// The end: the value goes out, after the message box where one stands.
    void UserCommit();
    virtual void UserDrop();
    /// The user turns away: steps that were made count, what is still held does not.
    void UserFinish();
    std::string held() const override { return std::to_string(value()); }
    void UserRestore(const std::string& held) override;
    bool isHeld() const { return isMoving() && !settle_.Enabled; }

  protected:
    virtual int value() const = 0;
    virtual int bounded(long long value) const = 0;
    /// The user's change. False where it is none.
    virtual bool moveTo(int value) = 0;
    /// How many steps are made at once after so many without a rest.
    virtual int pace(int /*stepsBefore*/) const { return 1; }
    /// From here to end() it is open: a lock drops it.
    void open();
    void end();

  private:
    void preview(long long value);

    std::optional<int> preview_;
    std::optional<int> handedOver_;
    int stepsOn_ = 0;  ///< without a rest
    Timer settle_{SettleMs};
};

/// Closing is not committing: the user closes this page, or with null the program, and turns away from its gestures.
void FinishGestures(const Window* page = nullptr);
/// The user acts on another control of the page: he has turned away from what he moved before.
void FinishGesturesBeside(const Control& acting);
/// A message box takes the hand away: what is held is dropped.
void DropHeldGestures();
/// Something has been locked or hidden.
void DropLockedGestures();

}  // namespace kestrel
