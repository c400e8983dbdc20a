// All process-wide state of a running program.
#include "shell/session.h"

namespace kestrel {

// Here, where no module's struct is known: each is made and taken down in the module's own file.
BoardsOnTheLine::BoardsOnTheLine() = default;
BoardsOnTheLine::~BoardsOnTheLine() = default;
Session::Session() = default;
Session::~Session() = default;

}  // namespace kestrel
