// What a screen reader learns of the drawn views: role, name, value, state, and the actions on them.
// The toolkit's own widgets speak for themselves.
#pragma once

namespace kestrel::qt {

/// Makes the drawn views known to assistive technology; once a process.
void installAccessibility();

}  // namespace kestrel::qt
