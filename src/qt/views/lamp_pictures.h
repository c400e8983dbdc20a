// The lamp pictures of the status bar: sending, receiving, trouble on the line.
// Each says by its shape which lamp it is, and by being filled that it is lit.
#pragma once

#include <QIcon>

namespace kestrel::qt {

/// Picture by its number: 1, 2, 3 are the send, receive and error lamp unlit, 4, 5, 6 the same lit. Any other number
/// gives no picture. Drawn in the colours of the look, at any size and scale.
QIcon lampPicture(int number);

}  // namespace kestrel::qt
