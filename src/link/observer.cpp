// Who listens to the link and the mirror.
// See observer.h.
#include "link/observer.h"

namespace kestrel {

void SetObserver(LinkObserver* observer) { observerInForce = observer; }

}  // namespace kestrel
