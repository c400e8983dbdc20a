// Speaks with the user for the link: after an interruption of the line, and when changes are left behind.
#pragma once

#include "link/attendant.h"

namespace kestrel {

class LineAttendant : public LinkAttendant {
  public:
    bool wantsHeldSent(const std::vector<PageChanges>& held) override;
    bool wantsToStartAnew() override;
    void startAnew() override;
    void tellLeft(const std::vector<PageChanges>& left) override;
};

}  // namespace kestrel
