// What runs when: lanes below one another, each with a wait and the time that it runs then, all from the same start.
#pragma once

#include <string>
#include <vector>

#include "platform/control.h"

namespace kestrel {

class TimeLine : public Control {
  public:
    struct Lane {
        std::string name;
        int delay = 0;  ///< tenths of a second
        int time = 0;   ///< tenths of a second; 0: it does not run
        bool operator==(const Lane&) const = default;
        int end() const { return time > 0 ? delay + time : 0; }
    };
    Property<std::vector<Lane>> Lanes{*this, {}};
    Property<int> End{*this, 50};  ///< tenths of a second, where the scale ends

    /// What runs, such as "Valve 0.5 - 5.0 s".
    std::string text() const override;
};

}  // namespace kestrel
