// A user who does anything that can be done: opens and closes pages, moves every kind of control, changes language and
// port. What stands on a page is found from its layout, so a page that is added takes part by itself.
#pragma once

#include <string>
#include <vector>

#include "link/page.h"
#include "platform/movable.h"
#include "simulation/ledger.h"
#include "simulation/plan.h"

namespace kestrel::testing {

/// The controls of a window, in the order of its layout.
std::vector<Control*> controlsOf(Window& window);
/// What a page shows of its boards, a line a control: value labels, bars, switches, lamps, lists.
std::vector<std::string> shownBy(Window& window);
/// Gives the selectors of a page the positions of those of another page of its class.
struct SelectorPositions {
    explicit SelectorPositions(Window& window);
    void chooseIn(Window& window) const;
    bool operator==(const SelectorPositions&) const = default;

  private:
    std::vector<int> positions_;
};

class RandomUser {
  public:
    RandomUser(const Plan& plan, Ledger& ledger) : plan_(plan), ledger_(ledger) {}

    /// Does the act of this number. Its details come from the number alone, and from what is there to be acted on.
    void act(int number);
    /// Opens a page as the menu does, or by name where no entry does.
    static void open(const std::string& page);
    /// Takes the finger off, where it still is on something.
    void letGo();

  private:
    void moveAnything(Dice& random);
    void gesture(Movable& control, Page& page, Dice& random);
    void goOnWithGesture(Dice& random);
    /// What the finger is on, unless that has gone.
    Movable* underFinger() const;

    const Plan& plan_;
    Ledger& ledger_;
    Movable* finger_ = nullptr;
};

}  // namespace kestrel::testing
