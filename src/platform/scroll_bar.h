// A bar: a number between two limits that is moved by gestures or typed where its figure stands.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/movable.h"

namespace kestrel {

/// How a bar's value is written and typed in the page's own scale: (value + offset) / 10 to the power of decimals.
struct BarScale {
    int offset = 0;
    int decimals = 0;                                                          ///< 0 to 3
    std::string unit = {};                                                     ///< of the figure, or empty
    std::optional<std::int64_t> (*parse)(const std::string& typed) = nullptr;  ///< of values that are no plain numbers
    std::string (*words)(std::int64_t value) = nullptr;  ///< for values that have a name, such as "OFF"
};

/// A horizontal bar. Value is kept inside Min..Max; a change raises the change event at once, whoever made it.
class ScrollBar : public Movable {
  public:
    /// A range of more steps is too fine for a trough under a finger: it is typed and stepped alone.
    static constexpr int MostSteps = 1000;

    Property<int> Min{*this, 0};
    Property<int> Max{*this, 255};
    Property<int> LargeChange{*this, 1};
    BoundedProperty Value{*this, Min, Max, 0};
    BarScale scale;

    /// A value in the page's scale, such as "12.5", or its name.
    std::string textOf(int value) const;
    /// The same without names, as it is typed.
    std::string numberOf(int value) const;
    /// The value that a typed text stands for, or nothing where it is no number of the scale or out of Min..Max.
    std::optional<int> valueOf(const std::string& typed) const;
    Objection objectionTo(const std::string& typed) const;
    bool hasTrough() const { return !isWide() && !isTypedAlone; }
    bool isTypedAlone = false;
    bool isWide() const { return static_cast<long long>(Max) - Min > MostSteps; }

    /// The range and large step given at design time.
    void design(int lowest, int highest, int largeStep);
    void OnChange(Handler handler) { onChange_ = std::move(handler); }
    /// The page drops what was moved: this value stands there again, and no answer of a board is awaited.
    void putBack(int value);
    void assigned(const void* property, bool changed) override;

    /// The label that shows what the board has of it, or null.
    Label* figure() const { return figure_; }
    void figuredBy(Label* figure) { figure_ = figure; }

    /// What the user is typing in place of the figure; what the board tells meanwhile does not take it away.
    const std::optional<std::string>& typed() const { return typed_; }
    /// It reads so now; nothing goes out before one of those below.
    void UserType(const std::string& text);
    /// Hands it over. False, and it stays, where it is no value of the bar.
    bool UserEnter();
    /// The same of a user who turns away; what is no value is told and dropped.
    void UserLeave();
    void UserDropTyped();
    void UserDrop() override;

    std::string text() const override { return textOf(Value); }
    std::string boardsText() const override;
    std::optional<EntryLimits> entryLimits() const override {
        return EntryLimits{numberOf(Min), numberOf(Max), scale.unit};
    }

  protected:
    int value() const override { return Value; }
    int bounded(long long value) const override;
    bool moveTo(int value) override;
    int pace(int stepsBefore) const override;
    /// What the limits do to the value says nothing of the board.
    const void* valueProperty() const override { return isClipping_ ? nullptr : &Value; }
    void show() override;

  private:
    Handler onChange_;
    Label* figure_ = nullptr;
    std::optional<std::string> typed_;
    bool isClipping_ = false;
};

}  // namespace kestrel
