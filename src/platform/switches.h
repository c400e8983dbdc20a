// Stepped and two-state switches.
// A stepped switch keeps the position it was given even when no label stands for it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/movable.h"

namespace kestrel {

/// What slider and rotary switches share: a position among labelled ones.
class SteppedSwitch : public Movable {
  public:
    Property<int> Position{*this, 0};
    Property<std::string> PositionLabels{*this, "0,1"};  ///< comma-separated; their number is that of the positions

    /// The labels, each without blanks round it; an empty last one (a list that ends in a comma) does not count.
    std::vector<std::string> labels() const;
    /// The highest position that a label stands for.
    int top() const;

    /// The highest position that the user is offered, where that is not the top.
    std::optional<int> highestOffered;

    /// Raised by every change of the position, whoever made it.
    void OnPositionChange(Handler handler) { onPositionChange_ = std::move(handler); }
    /// Raised by the user's changes alone, after the position-change event.
    void OnPositionChangeUser(Handler handler) { onPositionChangeUser_ = std::move(handler); }
    /// The page drops what was moved: this position stands there again, and no answer of a board is awaited.
    void putBack(int position);
    void assigned(const void* property, bool changed) override;
    std::string text() const override;

  protected:
    int value() const override { return Position; }
    int bounded(long long position) const override;
    /// The user has the labelled positions alone.
    bool moveTo(int position) override;
    const void* valueProperty() const override { return &Position; }

  private:
    Handler onPositionChange_;
    Handler onPositionChangeUser_;
};

class SliderSwitch : public SteppedSwitch {};
class RotarySwitch : public SteppedSwitch {};

/// A two-state toggle: a user's click turns it over, then the click event is raised.
class ToggleSwitch : public Control {
  public:
    Property<bool> Active{*this, false};

    void OnClick(Handler handler) { onClick_ = std::move(handler); }
    void UserClick();
    /// "1" or "0"; the view has words for them.
    std::string text() const override { return Active ? "1" : "0"; }
    std::string held() const override { return text(); }
    void UserRestore(const std::string& held) override {
        if (held != text()) UserClick();
    }

  protected:
    const void* valueProperty() const override { return &Active; }

  private:
    Handler onClick_;
};

/// An eye: while it is on, what stands concealed beside it is shown.
class RevealSwitch : public ToggleSwitch {
  public:
    RevealSwitch() { isSelector = true; }
    /// What it does and of what, since there is one beside every box.
    std::string accessibleName() const override { return ToolTip.get() + ": " + ToggleSwitch::accessibleName(); }
};

/// A toggle with a lamp in it.
class LedSwitch : public ToggleSwitch {};

}  // namespace kestrel
