// The process-wide state of every program that has a line.
#include "link/line_session.h"

namespace kestrel {

// Here, where no module's struct is known: each is made and taken down in the module's own file.
BoardsOnTheLine::BoardsOnTheLine() = default;
BoardsOnTheLine::~BoardsOnTheLine() = default;
LineSession::LineSession() = default;
LineSession::~LineSession() = default;

}  // namespace kestrel
