// All process-wide state of a program that has a line and no window.
#include "ctl/session.h"

namespace kestrel::ctl {

Session::Session() = default;
Session::~Session() = default;

}  // namespace kestrel::ctl
