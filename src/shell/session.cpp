// All process-wide state of a running program.
#include "shell/session.h"

namespace kestrel {

Session::Session() = default;
Session::~Session() = default;

}  // namespace kestrel
