// The plain kinds of control: labels, frames, bars, buttons, text boxes, lists, progress.
// Stepped switches and toggles stand in switches.h, lamps and gauges in displays.h.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/movable.h"

namespace kestrel {

class Label : public Control {
  public:
    enum class Role {
        Caption,  ///< names what stands beside it; as wide as its text
        Value,    ///< shows a value; of a fixed size, so that a new value lays nothing out anew
        Key,      ///< a click zone that looks like a key of a keypad
        Unit,     ///< stands behind what it tells more of: two bars of one row are told apart by their units
    };
    Property<std::string> Caption{*this, {}};
    Property<int> ForeColor{*this, DefaultColor};  ///< red + 256 * green + 65536 * blue, or DefaultColor
    Property<bool> Chosen{*this, false};           ///< of a key: the one that is pressed
    Role role = Role::Caption;
    std::string widest;  ///< of a value: the longest text that it will show

    static constexpr int DefaultColor = -1;

    /// Makes it a value label that has room for such a text.
    void showsValue(const std::string& longest) {
        role = Role::Value;
        widest = longest;
    }
    std::string accessibleName() const override;
    std::string text() const override { return Caption; }
    /// Labels that are click zones.
    void OnClick(Handler handler) { onClick_ = std::move(handler); }
    bool isClickable() const { return static_cast<bool>(onClick_); }
    void UserClick();

  protected:
    const void* valueProperty() const override { return role == Role::Value ? &Caption : nullptr; }

  private:
    Handler onClick_;
};

/// A titled group; its flags rule what stands in it without touching the flags of its contents.
class Frame : public Control {
  public:
    Property<std::string> Caption{*this, {}};
    Property<int> Height{*this, 0};  ///< twips; at least so high, or 0: as high as its contents
    std::string accessibleName() const override { return Caption; }
};

/// How a bar's value is written and typed in the page's own scale: (value + offset) / 10 to the power of decimals.
struct BarScale {
    int offset = 0;
    int decimals = 0;  ///< 0 to 3
};

/// A horizontal bar. Value is kept inside Min..Max; a change raises the change event at once, whoever made it.
class ScrollBar : public Movable {
  public:
    Property<int> Min{*this, 0};
    Property<int> Max{*this, 255};
    Property<int> LargeChange{*this, 1};
    BoundedProperty Value{*this, Min, Max, 0};
    BarScale scale;

    /// A value in the page's scale, such as "12.5".
    std::string textOf(int value) const;
    /// The value that a typed text stands for, or nothing where it is no number of the scale or out of Min..Max.
    std::optional<int> valueOf(const std::string& typed) const;

    /// The range and large step given at design time.
    void design(int lowest, int highest, int largeStep);
    void OnChange(Handler handler) { onChange_ = std::move(handler); }
    /// The page drops what was moved: this value stands there again, and no answer of a board is awaited.
    void putBack(int value);
    void assigned(const void* property, bool changed) override;
    std::string text() const override { return textOf(Value); }

  protected:
    int value() const override { return Value; }
    int bounded(long long value) const override;
    bool moveTo(int value) override;
    /// What the limits do to the value says nothing of the board.
    const void* valueProperty() const override { return isClipping_ ? nullptr : &Value; }

  private:
    Handler onChange_;
    bool isClipping_ = false;
};

class CommandButton : public Control {
  public:
    Property<std::string> Caption{*this, {}};
    void OnClick(Handler handler) { onClick_ = std::move(handler); }
    void UserClick();
    std::string accessibleName() const override { return Caption; }

  private:
    Handler onClick_;
};

/// Typing changes only the text; Enter and leaving the box are told to the page, which commits or puts back.
class TextBox : public Control {
  public:
    static constexpr int EnterKey = 13;

    Property<std::string> Text{*this, {}};
    int maxLength = 32;  ///< characters that can be typed

    void OnKeyPress(std::function<void(int key)> handler) { onKeyPress_ = std::move(handler); }
    void OnLostFocus(Handler handler) { onLostFocus_ = std::move(handler); }
    /// The page refuses what was typed: this text stands there again, and no answer of a board is awaited.
    void putBack(const std::string& text);
    void UserType(const std::string& typed);
    void UserEnter();
    void UserLeave();
    std::string text() const override { return Text; }
    /// Typing alone sets nothing.
    std::string held() const override { return settled_; }
    void UserRestore(const std::string& held) override;
    void assigned(const void* property, bool changed) override;

  protected:
    const void* valueProperty() const override { return &Text; }
    std::string settledText() const override { return settled_; }

  private:
    std::string settled_;  ///< the text as the page has set it
    bool isTyping_ = false;
    std::function<void(int)> onKeyPress_;
    Handler onLostFocus_;
};

/// A table of texts with column heads.
class ListView : public Control {
  public:
    Property<std::vector<std::string>> ColumnHeads{*this, {}};
    Property<std::vector<std::vector<std::string>>> Rows{*this, {}};
};

class ProgressBar : public Control {
  public:
    Property<int> Max{*this, 100};
    Property<int> Value{*this, 0};
};

/// A drawing on which controls may stand at the places of its named elements.
class Picture : public Control {
  public:
    explicit Picture(std::string drawing) : drawing_(std::move(drawing)) {}
    /// Stem of the drawing's file among the installation's pictures.
    const std::string& drawing() const { return drawing_; }

  private:
    std::string drawing_;
};

}  // namespace kestrel
