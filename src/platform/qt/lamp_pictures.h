// The lamp pictures of the status bar.
// Pictures 1 to 3 are the send, receive and error lamps off, 4 to 6 the same lamps on.
#pragma once

#include <QIcon>

namespace kestrel::qt {

QIcon lampPicture(int number);

}  // namespace kestrel::qt
