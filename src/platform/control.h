// The base of everything that stands on a page: flags, tooltip, the frame round it, the caption that names it.
// A control is a model; a view may be bound to it, and tests drive it without one.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>

#include "platform/property.h"
#include "platform/trouble.h"

namespace kestrel {

class Frame;
class Label;

/// Shows one control on a screen; abstract because the logic runs without a screen.
class ControlView {
  public:
    virtual ~ControlView() = default;
    /// Something of the control was assigned, perhaps the same value again: show it as it now is.
    virtual void controlChanged() = 0;
};

class Control : public PropertyOwner {
  public:
    using Handler = std::function<void()>;

    Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    ~Control() override = default;

    Property<bool> Enabled{*this, true};
    Property<bool> Visible{*this, true};
    Property<std::string> ToolTip{*this, {}};

    /// Enabled and visible, and so is every frame round it: a user's action on it is taken.
    bool usable() const;
    /// The user changed it and its page has not set it since: the board's answer is still out.
    bool waiting() const { return waiting_; }
    /// What a screen reader says of it: its own text, or the caption in its row and the unit behind it, or else the
    /// caption of its frame.
    virtual std::string accessibleName() const;

    /// A control whose position chooses what is shown, and is no setting of a board: it never waits for one.
    bool isSelector = false;

    void standIn(const Frame* frame) { frame_ = frame; }
    void namedBy(const Label* caption) { caption_ = caption; }
    void measuredIn(const Label* unit) { unit_ = unit; }
    const Frame* frame() const { return frame_; }
    void bind(ControlView* view) { view_ = view; }
    void unbind(const ControlView* view) {
        if (view_ == view) view_ = nullptr;
    }

    void assigned(const void* property, bool changed) override;

  protected:
    /// Carries out a user's change. What its page sets in the change itself is no answer of the board: the mark stays.
    template <class Change>
    void userChange(Change&& change) {
        waiting_ = !isSelector;
        userActing_ = true;
        const Reset reset{userActing_};
        change();
        show();
    }
    /// To be called when the page (not the user) sets what the control holds.
    void settled() {
        if (!userActing_) waiting_ = false;
    }
    /// To be called when what the user did goes to no board.
    void nothingSent() { waiting_ = false; }
    static void raise(const Handler& handler) {
        if (handler) handler();
    }
    void show() {
        if (view_) view_->controlChanged();
    }
    const Label* caption() const { return caption_; }

  private:
    struct Reset {
        bool& flag;
        ~Reset() { flag = false; }
    };
    ControlView* view_ = nullptr;
    const Frame* frame_ = nullptr;
    const Label* caption_ = nullptr;
    const Label* unit_ = nullptr;
    bool waiting_ = false;
    bool userActing_ = false;
};

/// Like controls of a page, with one handler for all that is given the index of the one that raised the event.
template <class T, std::size_t N>
class ControlArray {
  public:
    using IndexedHandler = std::function<void(int)>;

    /// An index outside the array is a run-time error.
    T& operator[](int index) { return items_[checked(index)]; }
    const T& operator[](int index) const { return items_[checked(index)]; }
    static constexpr int size() { return static_cast<int>(N); }
    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }

    void OnChange(const IndexedHandler& handler) { each(&T::OnChange, handler); }
    void OnClick(const IndexedHandler& handler) { each(&T::OnClick, handler); }
    void OnPositionChange(const IndexedHandler& handler) { each(&T::OnPositionChange, handler); }
    void OnPositionChangeUser(const IndexedHandler& handler) { each(&T::OnPositionChangeUser, handler); }
    void OnLostFocus(const IndexedHandler& handler) { each(&T::OnLostFocus, handler); }
    void OnKeyPress(const std::function<void(int, int)>& handler) {
        for (int i = 0; i < size(); ++i) (*this)[i].OnKeyPress([handler, i](int key) { handler(i, key); });
    }

  private:
    template <class Subscribe>
    void each(Subscribe subscribe, const IndexedHandler& handler) {
        for (int i = 0; i < size(); ++i) ((*this)[i].*subscribe)([handler, i] { handler(i); });
    }
    static std::size_t checked(int index) {
        if (index < 0 || index >= size())
            throw RunTimeError(error_number::SubscriptOutOfRange, "Subscript out of range");
        return static_cast<std::size_t>(index);
    }
    std::array<T, N> items_;
};

}  // namespace kestrel
