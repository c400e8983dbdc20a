// What a widget writes when it paints itself.
// Sees what no size hint tells: a text that was shortened, runs over the edge or into the next one.
#pragma once

#include <QWidget>

namespace kestrel::qt::testing {

/// Expects that what the widget itself writes, without what stands in it, is whole and lies inside it.
void expectTextsWhole(QWidget& widget);

}  // namespace kestrel::qt::testing
