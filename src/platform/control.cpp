// The base of everything that stands on a page.
#include "platform/control.h"

#include <algorithm>

#include "platform/basic_controls.h"
#include "platform/module_state.h"
#include "platform/movable.h"
#include "platform/outside.h"
#include "platform/window.h"

namespace kestrel {

/// Who has the word.
struct Speaker {
    Control* control = nullptr;
    int board = Control::NoBoard;
};
template class Module<Speaker>;

Control::~Control() {
    ForgetActs(this);
    if (Speaker* const here = stateInForce<Speaker>; here && here->control == this) here->control = nullptr;
}

Control::Speaking::Speaking(Control* control, int board)
    : speaker_(stateOf<Speaker>()), before_(speaker_.control), boardBefore_(speaker_.board) {
    speaker_ = {control, board};
}

Control::Speaking::~Speaking() { speaker_ = {before_, boardBefore_}; }

Control* Control::acting() { return stateOf<Speaker>().control; }

void Control::userAct(Handler act, Source source) {
    const void* const sender = this;  // the act may be the control's last
    if (source == Source::User) FinishGesturesBeside(*this);
    FromOutside(
        sender,
        [this, act = std::move(act)] {
            show();  // it waits no longer, whether it is taken or not
            const Speaking user(this);
            act();
        },
        source);
    if (ActWaits(sender)) show();
}

void Control::userChange(const Handler& change) {
    forgetNotTaken();
    heldBefore_ = held();
    textBefore_ = settledText();
    ++userChanges_;
    if (!waiting_) before_ = textBefore_;
    waiting_ = !isSelector;
    userActing_ = true;
    const struct Reset {
        bool& flag;
        ~Reset() { flag = false; }
    } reset{userActing_};
    change();
    show();
}

void Control::settled() {
    if (userActing_) return;
    const int board = stateOf<Speaker>().board;
    if (board != NoBoard) {
        board_ = board;
        unread_ = false;
        if (waiting_ && !changedFrom_) changedFrom_ = before_;
        if (changedFrom_ == text()) changedFrom_.reset();
    }
    waiting_ = false;
}

Standing Control::standing() const {
    if (unread()) return Standing::Unread;
    if (waiting_) return Standing::Waiting;
    if (notTaken_) return Standing::NotTaken;
    return window_ && !window_->oldSince(board_).empty() ? Standing::Old : Standing::Confirmed;
}

std::string Control::wantedText() const {
    if (waiting_) return text();
    return notTaken_ ? notTaken_->wanted : std::string();
}

void Control::refuse(const std::string& entered) {
    notTaken_ = NotTaken{.wanted = entered, .isWrongEntry = true};
    show();
}

bool Control::actWaits() const { return ActWaits(this); }

void Control::awaitValue() {
    unread_ = standsForValue();
    changedFrom_.reset();
    if (unread_) board_ = NoBoard;
    if (unread_) show();
}

void Control::tellNotTaken(const NotTaken& what) {
    if (standsForNoValue) return;  // its page gives a lost order up
    notTaken_ = what;
    show();
}

bool Control::usable() const {
    if (window_ && window_->closing()) return false;
    for (const Control* control = this; control; control = control->frame_)
        if (!control->Enabled || !control->Visible) return false;
    return true;
}

std::string Control::accessibleName() const {
    if (!caption_) return frame_ ? frame_->Caption.get() : std::string();
    return unit_ ? caption_->Caption.get() + " " + unit_->Caption.get() : caption_->Caption.get();
}

std::string Control::rowName() const { return caption_ ? caption_->Caption.get() : std::string(); }

std::string Control::columnName() const {
    std::string name;
    for (const Label* head : heads_)
        if (!head->Caption.get().empty()) name += (name.empty() ? "" : " ") + head->Caption.get();
    std::replace(name.begin(), name.end(), '\n', ' ');
    return name;
}

void Control::assigned(const void* property, bool /*changed*/) {
    if (property == valueProperty()) settled();
    if (property == &Enabled || property == &Visible) DropLockedGestures();
    show();
}

}  // namespace kestrel
