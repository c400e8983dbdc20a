// What every view of a control shares: its tie to the model, the flags, the waiting mark, what a screen reader learns.
// A view shows the model as it is and passes the user's actions on; it keeps no state of the board.
#pragma once

#include <QAccessible>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <optional>

#include "platform/control.h"
#include "qt/io/deliver.h"
#include "qt/io/text.h"

namespace kestrel::qt {

class ViewBase : public ControlView {
  public:
    /// The numbers that a control can take, for screen readers.
    struct Span {
        int lowest = 0;
        int highest = 0;
        int value = 0;
        int step = 1;
    };

    ViewBase(Control& control, QWidget& widget);
    ~ViewBase() override { release(); }
    ViewBase(const ViewBase&) = delete;
    ViewBase& operator=(const ViewBase&) = delete;

    void controlChanged() final;
    /// Lets go of the model, which may be destroyed from now on.
    void release();
    bool bound() const { return control_ != nullptr; }
    bool shows(const Control& control) const { return control_ == &control; }
    /// It is where the user finds the control, although another shows more of it.
    virtual bool standsFor(const Control& control) const { return shows(control); }
    QWidget& widget() const { return widget_; }
    /// Null once the view has let go of it.
    const Control* shown() const { return control_; }
    Standing standing() const { return control_ ? control_->standing() : Standing::Confirmed; }
    /// It stands for a value of a board that has not come yet: nothing of the model is shown, and no act begins.
    bool unread() const { return control_ && control_->unread(); }
    bool changed() const { return control_ && control_->changedFrom(); }
    bool old() const { return standing() == Standing::Old; }
    /// What it tells under the pointer: about itself, where it stands, what may be entered.
    QString tip() const;

    /// The user closes the page: what is typed and not entered is dropped.
    virtual void dropTyping() {}
    /// The caption that names the control may have changed.
    virtual void renamed() {}

    virtual QAccessible::Role spokenRole() const = 0;
    /// What stands in its widget only draws it, and is told by the view itself.
    virtual bool isOnePiece() const { return false; }
    /// Its caption, or else its tooltip, or else the title of the frame that it stands in.
    virtual QString spokenName() const;
    QString spokenValue() const;
    QString spokenDescription() const;
    virtual std::optional<Span> span() const { return std::nullopt; }
    /// A screen reader sets the number.
    virtual void moveTo(int /*value*/) {}
    virtual std::optional<bool> checked() const { return std::nullopt; }
    virtual bool canPress() const { return false; }
    virtual void press() {}

  protected:
    Control& control() const { return *control_; }
    virtual QString valueInWords() const { return {}; }
    /// A text of the model as the view shows it.
    virtual QString inWords(const std::string& text) const { return toQt(text); }
    /// What it tells of itself, apart from where it stands.
    virtual QString ownTip() const;
    bool showTip(const QHelpEvent& event) const;
    /// Whether the event begins an act of the user.
    static bool beginsAct(const QEvent& event);
    /// How the widget takes room; it keeps its place while it is hidden, so that nothing jumps.
    void setPolicy(QSizePolicy::Policy horizontal, QSizePolicy::Policy vertical);
    /// Shows what the model holds now; cheap when nothing changed, and lays nothing out anew for a value.
    virtual void showState() = 0;
    /// Repaints, and tells a screen reader that the value is another one.
    void valueShown();

  private:
    void showFlags();
    void showStanding();
    QString standingInWords() const;
    QString wantedInWords() const;

    Control* control_;
    QWidget& widget_;
    bool hidden_ = false;
    Standing shown_ = Standing::Confirmed;
    bool shownChanged_ = false;
};

/// A view of a Model that is a Base widget.
template <class Model, class Base = QWidget>
class View : public Base, public ViewBase {
  public:
    explicit View(Model& model) : ViewBase(model, *this) {}

  protected:
    Model& model() const { return static_cast<Model&>(control()); }
    /// Carries a user's action to the model, unless the view has let go of it. Returns whether it is done: it may have
    /// to wait for the end of an exchange, and where it closes the page the view is gone.
    template <class Action>
    bool act(Action&& action) {
        const QPointer<QWidget> here(this);
        if (bound()) deliver([&] { action(model()); });
        return here && (!bound() || !model().actWaits());
    }
    bool event(QEvent* event) override {
        if (event->type() == QEvent::ToolTip && bound()) return this->showTip(static_cast<QHelpEvent&>(*event));
        if (!unread() || !beginsAct(*event)) return Base::event(event);
        // A key or the wheel goes on to the page, which scrolls; a click has met its control and goes no further.
        event->setAccepted(event->type() != QEvent::KeyPress && event->type() != QEvent::Wheel);
        return true;
    }
    void changeEvent(QEvent* event) override {
        Base::changeEvent(event);
        if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) this->updateGeometry();
        if (event->type() == QEvent::EnabledChange && bound()) showState();
    }
};

/// Whether the user leaves the widget. A menu, a box and another program are no leaving: the typing can go on after
/// them.
bool isLeaving(const QWidget& widget, const QFocusEvent& event);

/// Whether the key writes a character; with Alt or Ctrl it is a command and writes none.
bool writes(const QKeyEvent& event);

/// Height of a row with something to press in it, from the widget's font; at least 32.
int rowHeight(const QWidget& widget);
/// Height of a row that only shows.
int textHeight(const QWidget& widget);
/// The step of the grid on which everything stands.
inline constexpr int GridStep = 8;

}  // namespace kestrel::qt
