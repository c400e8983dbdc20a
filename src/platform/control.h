// The base of everything that stands on a page: flags, tooltip, the frame round it, the caption that names it.
// A control is a model; a view may be bound to it, and tests drive it without one.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/errors.h"
#include "platform/outside.h"
#include "platform/property.h"
#include "platform/standing.h"

namespace kestrel {

class Frame;
class Label;
class Window;
struct Speaker;

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
    ~Control() override;

    Property<bool> Enabled{*this, true};
    Property<bool> Visible{*this, true};
    Property<std::string> ToolTip{*this, {}};

    /// Enabled and visible, and so is every frame round it: a user's action on it is taken.
    bool usable() const;
    /// It stands for a value of a board, and since its page was opened the page has not set it from one that came: it
    /// shows nothing that the board has, and refuses the user's acts.
    virtual bool unread() const { return unread_; }
    /// The user changed it and its page has not set it since: the board's answer is still out.
    bool waiting() const { return waiting_; }
    /// The last change was lost on its way; until the user acts on the control again.
    virtual const std::optional<NotTaken>& notTaken() const { return notTaken_; }
    /// All of this in one word; what is more urgent to know hides the rest.
    virtual Standing standing() const;
    /// What the board has, in words: of a control that waits, what stood there before the change.
    virtual std::string boardsText() const { return waiting_ ? before_ : text(); }
    /// What the user wants of a control that waits or whose change was not taken.
    virtual std::string wantedText() const;
    /// What stood there when the page was opened, where a change of the user's has been confirmed since.
    virtual const std::optional<std::string>& changedFrom() const { return changedFrom_; }
    /// An act of the user on it waits for the end of an exchange.
    bool actWaits() const;
    /// What it shows, in words; empty where it has none.
    virtual std::string text() const { return {}; }
    /// What may be entered into it; nothing where it is not typed into.
    virtual std::optional<EntryLimits> entryLimits() const { return std::nullopt; }
    /// What a screen reader says of it: its own text, or the caption in its row and the unit behind it, or else the
    /// caption of its frame.
    virtual std::string accessibleName() const;

    /// It stands for a value of a board.
    bool standsForValue() const { return valueProperty() && !isSelector && !standsForNoValue; }
    /// What the user has set it to, in a form that UserRestore takes; empty where he can set nothing.
    virtual std::string held() const { return {}; }
    /// The user sets it to that again, by the act that he would do for it.
    virtual void UserRestore(const std::string& /*held*/) {}
    /// What it held and showed when the user's last change of it began, and how many there have been.
    const std::string& heldBefore() const { return heldBefore_; }
    const std::string& textBefore() const { return textBefore_; }
    int userChanges() const { return userChanges_; }

    /// A control whose position chooses what is shown, and is no setting of a board: it never waits for one.
    bool isSelector = false;
    /// An act on it is an order that the boards carry out at once or never, or it shows the page's own state: it stands
    /// for no value of a board.
    bool standsForNoValue = false;

    /// Its page has been opened: where it stands for a value, that has yet to come.
    void awaitValue();
    void tellNotTaken(const NotTaken& what);
    /// The board that last told its value has fallen silent or has been heard again.
    void followBoard() { show(); }
    /// The board that last told its value, or NoBoard.
    int board() const { return board_; }
    static constexpr int NoBoard = -1;
    /// What the user has asked for on this control and still has to be done, such as after a question.
    void carryOn(const Handler& act) { userAct(act, Source::Continued); }
    /// The control on which the user acts at this moment; null when the boards speak or a timer runs out.
    static Control* acting();

    void standIn(const Frame* frame) { frame_ = frame; }
    void standOn(Window* window) { window_ = window; }
    const Window* window() const { return window_; }
    void namedBy(const Label* caption) { caption_ = caption; }
    bool isNamed() const { return caption_ != nullptr; }
    const Label* caption() const { return caption_; }
    void measuredIn(const Label* unit) { unit_ = unit; }
    /// The captions above its column.
    void headedBy(const std::vector<const Label*>& heads) { heads_ = heads; }
    /// The caption of its row, and those above its column; empty where it has none.
    std::string rowName() const;
    std::string columnName() const;
    const Frame* frame() const { return frame_; }
    void bind(ControlView* view) { view_ = view; }
    void unbind(const ControlView* view) {
        if (view_ == view) view_ = nullptr;
    }

    void assigned(const void* property, bool changed) override;

    /// In force while one speaks: the user on this control, or with null a board or a timer.
    class Speaking {
      public:
        explicit Speaking(Control* control, int board = NoBoard);
        ~Speaking();
        Speaking(const Speaking&) = delete;
        Speaking& operator=(const Speaking&) = delete;

      private:
        Speaker& speaker_;
        Control* const before_;
        const int boardBefore_;
    };

  protected:
    /// The property that holds the value of a board, or null where the control has none.
    virtual const void* valueProperty() const { return nullptr; }
    /// Takes an act of the user; it is carried out between exchanges.
    void userAct(Handler act, Source source = Source::User);
    bool takesActs() const { return usable() && !unread(); }
    /// Carries out a user's change. What its page sets in the change itself is no answer of the board: the mark stays.
    void userChange(const Handler& change);
    /// What it showed before the user began to change it.
    virtual std::string settledText() const { return text(); }
    /// To be called when what the user did goes to no board.
    void nothingSent() { waiting_ = false; }
    static void raise(const Handler& handler) {
        if (handler) handler();
    }
    virtual void show() {
        if (view_) view_->controlChanged();
    }
    /// The user acts on it again.
    void forgetNotTaken() { notTaken_.reset(); }
    /// What the user entered is no value of the control: it is told, and the value stays.
    void refuse(const std::string& entered);

  private:
    /// The page, not the user, has set what the control holds.
    void settled();

    ControlView* view_ = nullptr;
    const Frame* frame_ = nullptr;
    Window* window_ = nullptr;
    const Label* caption_ = nullptr;
    const Label* unit_ = nullptr;
    std::vector<const Label*> heads_;
    std::optional<NotTaken> notTaken_;
    std::string heldBefore_;
    std::string textBefore_;
    int userChanges_ = 0;
    std::string before_;  ///< the first of the changes that wait
    std::optional<std::string> changedFrom_;
    int board_ = NoBoard;
    bool unread_ = false;
    bool waiting_ = false;
    bool userActing_ = false;
};

/// Like controls of a page, with one handler for all that is given the index of the one that raised the event.
template <class T, std::size_t N>
class ControlArray {
  public:
    using IndexedHandler = std::function<void(int)>;

    /// An index outside the array is a programming error.
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
            throw ProgrammingError("Control " + std::to_string(index) + " of " + std::to_string(N) + " was used");
        return static_cast<std::size_t>(index);
    }
    std::array<T, N> items_;
};

}  // namespace kestrel
