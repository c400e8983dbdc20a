// What the drawn views draw alike: shapes on whole pixels, the focus ring, the waiting mark, arrows, figures.
// All sizes are in the widget's own pixels.
#pragma once

#include <QPainter>
#include <QPainterPath>
#include <QRectF>
#include <QString>

#include "qt/style/palette.h"
#include "qt/views/view.h"

namespace kestrel::qt {

inline constexpr double CornerRadius = 4.0;

/// A painter that draws smooth edges on the widget.
class Brush : public QPainter {
  public:
    explicit Brush(QWidget& widget);
};

/// Text colour of a widget by its state.
QColor textColor(const QWidget& widget);

/// A filled shape with an edge of one pixel that lies inside the rectangle. Width 0 draws no edge.
void drawShape(QPainter& painter, const QRectF& shape, double radius, const QColor& fill, const QColor& edge,
               double width = 1.0);

/// What stands for a figure that has not been read.
QString dash();
/// The shape of what has not been read: nothing in it, and an edge of dashes.
void drawUnread(QPainter& painter, const QRectF& shape, double radius = CornerRadius);
void drawUnread(QPainter& painter, const QPainterPath& shape);

/// The mark of where a control stands: its change waits, or was not taken, or its value is old; or was changed here.
void drawStanding(QPainter& painter, const ViewBase& view, const QRectF& shape, double radius = CornerRadius);
/// Colour of a figure by where it stands.
QColor standingColor(const ViewBase& view);
/// The mark and the focus ring of a view, round the shape that it draws.
void drawMarks(QPainter& painter, const ViewBase& view, const QRectF& shape, double radius = CornerRadius);

/// In which a figure is written that is old.
QFont oldFont(const QFont& font);

enum class Arrow { Left, Right, Up, Down };
void drawArrow(QPainter& painter, const QRectF& place, Arrow direction, const QColor& color);

/// Width of a text whose figures all take the same room.
int figuresWidth(const QFontMetrics& metrics, const QString& text);
/// Draws it at the right end of the place, in the middle of its height.
void drawFigures(QPainter& painter, const QRectF& place, const QString& text);

}  // namespace kestrel::qt
