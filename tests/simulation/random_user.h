// A user who does anything that can be done: opens and closes pages, moves every kind of control, changes language and
// port. What stands on a page is found from its layout, so a page that is added takes part by itself.
#pragma once

#include <string>
#include <vector>

#include "link/page.h"
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
    explicit RandomUser(const Plan& plan) : plan_(plan) {}

    /// Does the act of this number. Its details come from the number alone, and from what is there to be acted on.
    void act(int number);
    /// Opens a page as the menu does, or by name where no entry does.
    static void open(const std::string& page);

  private:
    void moveAnything(Dice& random) const;
    const Plan& plan_;
};

}  // namespace kestrel::testing
