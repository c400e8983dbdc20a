// A figure that is one of many: behind it stands a bar, as long as its share of the highest of them.
#pragma once

#include "platform/basic_controls.h"

namespace kestrel {

class Tally : public Label {
  public:
    Property<double> Share{*this, 0.0};  ///< of the highest, 0 to 1
};

}  // namespace kestrel
