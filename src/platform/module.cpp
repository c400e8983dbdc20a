// A call of a module that has no state.
#include "platform/module_state.h"

namespace kestrel {

void refuseWithoutSession() { throw ProgrammingError("There is no session"); }

}  // namespace kestrel
