// What a widget writes when it paints itself: each text and the place that it takes.
// Sees what no size hint tells: a text that was shortened, runs over the edge or into the next one.
#pragma once

#include <QRectF>
#include <QString>
#include <QWidget>
#include <vector>

namespace kestrel::qt::testing {

struct DrawnText {
    QString text;
    QRectF place;  ///< in the widget's own pixels
};

/// The texts of the widget alone, without what stands in it.
std::vector<DrawnText> drawnTexts(QWidget& widget);

}  // namespace kestrel::qt::testing
