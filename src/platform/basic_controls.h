// The plain kinds of control: labels, frames, bars, buttons, text boxes, lists, progress.
// Stepped switches and toggles stand in switches.h, lamps and gauges in displays.h.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/scroll_bar.h"

namespace kestrel {

class Label : public Control {
  public:
    enum class Role {
        Caption,  ///< names what stands beside it; as wide as its text
        Value,    ///< shows a value; of a fixed size, so that a new value lays nothing out anew
        Key,      ///< a click zone that looks like a key of a keypad
        Heading,  ///< names what stands below it
        Unit,     ///< stands behind what it tells more of: two bars of one row are told apart by their units
    };
    Property<std::string> Caption{*this, {}};
    Property<int> ForeColor{*this, DefaultColor};  ///< red + 256 * green + 65536 * blue, or DefaultColor
    Property<bool> Chosen{*this, false};           ///< of a key: the one that is pressed
    Role role = Role::Caption;
    std::string widest;                     ///< of a value: the longest text that it will show
    Property<std::string> Unit{*this, {}};  ///< of a value: what stands behind it, such as "°C"
    std::string widestUnit;                 ///< the longest text of that; else that of the moment

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

    /// The bar whose figure it is, or null.
    ScrollBar* bar() const { return bar_; }
    void figureOf(ScrollBar* bar);
    void followBar() { show(); }
    /// A figure stands where its bar does.
    bool unread() const override { return Control::unread() || (bar_ && bar_->unread()); }
    Standing standing() const override;
    std::string boardsText() const override { return Caption; }
    std::string wantedText() const override;
    const std::optional<NotTaken>& notTaken() const override { return bar_ ? bar_->notTaken() : Control::notTaken(); }
    const std::optional<std::string>& changedFrom() const override {
        return bar_ ? bar_->changedFrom() : Control::changedFrom();
    }
    std::optional<EntryLimits> entryLimits() const override;

  protected:
    const void* valueProperty() const override { return role == Role::Value ? &Caption : nullptr; }

  private:
    Handler onClick_;
    ScrollBar* bar_ = nullptr;
};

/// A titled group; its flags rule what stands in it without touching the flags of its contents.
class Frame : public Control {
  public:
    Property<std::string> Caption{*this, {}};
    Property<int> Height{*this, 0};  ///< twips; at least so high, or 0: as high as its contents
    std::string accessibleName() const override { return Caption; }
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
    /// What stands in it is not shown, nor told in words: only how much there is.
    Property<bool> Concealed{*this, false};

    /// It stands for a whole number from 0 to `highest`, of which so many leading figures count.
    void takesNumbers(std::size_t figures, std::uint32_t highest);
    bool isNumeric() const { return figures_ > 0; }
    Objection objectionTo(const std::string& typed) const;
    std::optional<EntryLimits> entryLimits() const override;
    /// What was entered is none of its numbers: it is told, and what the page puts there stays.
    void tellRefused(const std::string& entered) { refuse(entered); }

    void OnKeyPress(std::function<void(int key)> handler) { onKeyPress_ = std::move(handler); }
    void OnLostFocus(Handler handler) { onLostFocus_ = std::move(handler); }
    /// The page refuses what was typed: this text stands there again, and no answer of a board is awaited.
    void putBack(const std::string& text);
    void UserType(const std::string& typed);
    void UserEnter();
    void UserLeave();
    std::string text() const override;
    /// Typing alone sets nothing.
    std::string held() const override { return settled_; }
    void UserRestore(const std::string& held) override;
    void assigned(const void* property, bool changed) override;

  protected:
    const void* valueProperty() const override { return &Text; }
    std::string settledText() const override { return settled_; }

  private:
    void commit(const Handler& change);

    std::string settled_;  ///< the text as the page has set it
    bool isTyping_ = false;
    std::size_t figures_ = 0;
    std::uint32_t highest_ = 0;
    std::function<void(int)> onKeyPress_;
    Handler onLostFocus_;
};

/// A table of texts with column heads.
class ListView : public Control {
  public:
    Property<std::vector<std::string>> ColumnHeads{*this, {}};
    Property<std::vector<std::vector<std::string>>> Rows{*this, {}};
    /// Heads and rows as other programs take a table: a line each, with tabs between.
    std::string asTable() const;
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
