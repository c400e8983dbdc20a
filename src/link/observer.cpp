// Who listens to the link and the mirror.
#include "link/observer.h"

namespace kestrel {

template class Module<Listening>;

void SetObserver(LinkObserver* observer) { stateOf<Listening>().observer = observer; }

}  // namespace kestrel
