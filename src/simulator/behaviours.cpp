// Who listens to which board.
// A subject passes over parameters that are not its own.
#include "simulator/behaviours.h"

namespace kestrel::simulator {

void Behaviours::written(Board board, int parameter) {
    if (board == Board::Master) clock_.written(parameter);
}

}  // namespace kestrel::simulator
