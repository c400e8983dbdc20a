// The signs of message boxes: a triangle for a warning, a disc for trouble.
// Both carry an exclamation mark, so that they are told by shape as well as by colour.
#pragma once

#include <QIcon>

namespace kestrel::qt {

QIcon warningSign();
QIcon troubleSign();

}  // namespace kestrel::qt
