// A user who does anything that can be done.
#include "simulation/random_user.h"

#include <algorithm>
#include <array>

#include "link/loaded_pages.h"
#include "platform/displays.h"
#include "platform/outside.h"
#include "platform/switches.h"
#include "shell/main_window.h"
#include "shell/windows.h"
#include "support/layouts.h"

namespace kestrel::testing {

namespace {

int within(Dice& random, int low, int high, int now) {
    const auto kind = random.between(0, 5);
    if (kind == 0) return low;
    if (kind == 1) return high;
    if (kind < 4) return now + (kind == 2 ? 1 : -1);
    return static_cast<int>(random.between(low, high));
}

std::string typed(Dice& random) {
    if (random.chance(0.3)) return random.of(std::array{"", "-1", "99999999999", "abc", "1.5", "12,5", " 7 ", "0"});
    return std::to_string(random.between(0, 70'000));
}

/// One act on the control. False where it is of no kind that a user acts on.
bool use(Control& control, Dice& random) {
    if (auto* bar = dynamic_cast<ScrollBar*>(&control)) {
        bar->UserMove(within(random, bar->Min, bar->Max, bar->Value));
    } else if (auto* stepped = dynamic_cast<SteppedSwitch*>(&control)) {
        stepped->UserMove(within(random, 0, stepped->top(), stepped->Position));
    } else if (auto* toggle = dynamic_cast<ToggleSwitch*>(&control)) {
        toggle->UserClick();
    } else if (auto* button = dynamic_cast<CommandButton*>(&control)) {
        button->UserClick();
    } else if (auto* box = dynamic_cast<TextBox*>(&control)) {
        box->UserType(typed(random));
        if (random.chance(0.6)) box->UserEnter();
        if (random.chance(0.6)) box->UserLeave();
    } else if (auto* label = dynamic_cast<Label*>(&control); label && label->isClickable()) {
        label->UserClick();
    } else {
        return false;
    }
    return true;
}

std::string stateOf(const Control& control) {
    if (const auto* label = dynamic_cast<const Label*>(&control))
        return label->role == Label::Role::Value ? label->Caption.get() : std::string();
    if (const auto* bar = dynamic_cast<const ScrollBar*>(&control)) return "bar " + std::to_string(bar->Value.get());
    if (const auto* stepped = dynamic_cast<const SteppedSwitch*>(&control))
        return "at " + std::to_string(stepped->Position.get());
    if (const auto* toggle = dynamic_cast<const ToggleSwitch*>(&control)) return toggle->Active ? "on" : "off";
    if (const auto* led = dynamic_cast<const Led*>(&control)) return led->Active ? "lit" : "dark";
    if (const auto* list = dynamic_cast<const ListView*>(&control)) {
        std::string all;
        for (const auto& row : list->Rows.get())
            for (const auto& cell : row) all += cell + "|";
        return all;
    }
    return {};
}

}  // namespace

std::vector<Control*> controlsOf(Window& window) {
    std::vector<Control*> controls;
    eachControl(window.Arrange(), [&](Control& control) { controls.push_back(&control); });
    return controls;
}

std::vector<std::string> shownBy(Window& window) {
    std::vector<std::string> shown;
    for (const Control* control : controlsOf(window))
        shown.push_back(control->isSelector || control->waiting() ? "" : stateOf(*control));
    return shown;
}

SelectorPositions::SelectorPositions(Window& window) {
    for (Control* control : controlsOf(window)) {
        if (!control->isSelector) continue;
        if (auto* stepped = dynamic_cast<SteppedSwitch*>(control)) positions_.push_back(stepped->Position);
        if (auto* bar = dynamic_cast<ScrollBar*>(control)) positions_.push_back(bar->Value);
    }
}

void SelectorPositions::chooseIn(Window& window) const {
    std::size_t next = 0;
    for (Control* control : controlsOf(window)) {
        if (!control->isSelector) continue;
        if (auto* stepped = dynamic_cast<SteppedSwitch*>(control)) stepped->UserMove(positions_.at(next++));
        if (auto* bar = dynamic_cast<ScrollBar*>(control)) bar->UserMove(positions_.at(next++));
    }
}

void RandomUser::open(const std::string& page) {
    for (const MenuRow& row : MenuTree())
        if (row.page && row.page == page) return MDIForm1().entry(row.name).UserClick();
    FromOutside(nullptr, [page] { ShowPage(page); });
}

void RandomUser::moveAnything(Dice& random) {
    Page& page = *random.of(LoadedPages());
    const std::vector<Control*> controls = controlsOf(page);
    constexpr int Tries = 8;
    for (int i = 0; i < Tries && !controls.empty(); ++i) {
        Control& control = *random.of(controls);
        auto* const movable = dynamic_cast<Movable*>(&control);
        if (movable && random.chance(0.15)) return gesture(*movable, page, random);
        ledger_.letsGo(control);
        if (use(control, random)) return;
    }
}

/// Quick steps, after which the page may be closed at once; or the finger goes down and stays over the coming acts.
void RandomUser::gesture(Movable& control, Page& page, Dice& random) {
    if (control.actWaits()) return;
    if (finger_ || random.chance(0.4)) {
        ledger_.letsGo(control);
        for (auto steps = random.between(1, 4); steps > 0; --steps)
            control.UserStepBy(static_cast<int>(random.between(-9, 9)));
        if (!plan_.stay && random.chance(0.2)) page.UserClose();
        return;
    }
    finger_ = &control;
    ledger_.holds(control);
    control.UserHold(random.between(-32'768, 32'767));
}

void RandomUser::goOnWithGesture(Dice& random) {
    if (random.chance(0.3)) return letGo();
    if (random.chance(0.5)) {
        if (!finger_->actWaits()) ledger_.holds(*finger_);
        return finger_->UserHold(finger_->shownValue() + random.between(-40, 40));
    }
    if (random.chance(0.5)) {
        ledger_.commits(*finger_);
        finger_->UserSettle();
    } else {
        random.chance(0.5) ? finger_->UserDrop() : finger_->UserFinish();
    }
    finger_ = nullptr;
}

Movable* RandomUser::underFinger() const {
    for (Page* page : LoadedPages()) {
        const std::vector<Control*> controls = controlsOf(*page);
        if (std::find(controls.begin(), controls.end(), finger_) != controls.end()) return finger_;
    }
    return nullptr;
}

void RandomUser::letGo() {
    finger_ = underFinger();
    if (!finger_) return;
    ledger_.commits(*finger_);
    finger_->UserCommit();
    finger_ = nullptr;
}

void RandomUser::act(int number) {
    auto random = chanceOf(plan_.seed, Chance::Act, static_cast<std::uint32_t>(number));
    finger_ = underFinger();
    if (finger_) goOnWithGesture(random);
    const auto kind = plan_.stay ? random.between(34, 87) : random.between(0, 99);
    if (kind < 22 || LoadedPages().empty()) {
        open(random.of(plan_.pages));
    } else if (kind < 34) {
        random.of(LoadedPages())->UserClose();
    } else if (kind < 88) {
        moveAnything(random);
    } else if (kind < 92) {  // a storm of opening and closing
        for (int i = 0; i < 10; ++i) {
            open(random.of(plan_.pages));
            if (!LoadedPages().empty() && random.chance(0.7)) random.of(LoadedPages())->UserClose();
        }
    } else if (kind < 98 || random.chance(0.8)) {
        MDIForm1().smnuLingue(static_cast<int>(random.between(0, 4))).UserClick();
    } else {
        MDIForm1().mnuCox(static_cast<int>(random.between(1, MainWindow::PortEntries))).UserClick();
    }
}

}  // namespace kestrel::testing
