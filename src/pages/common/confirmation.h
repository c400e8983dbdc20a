// The one question before data are destroyed.
// Its words are the same wherever it is asked.
#pragma once

#include <functional>

#include "platform/control.h"

namespace kestrel {

/// Asks whether data may be erased for good; on Yes alone the act of the control on which the user asked for it goes
/// on.
void ConfirmClearing(Control& asker, const std::function<void()>& clear);

}  // namespace kestrel
