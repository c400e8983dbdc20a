// What the drawn views draw alike.
#include "qt/style/drawing.h"

#include <algorithm>

namespace kestrel::qt {

Brush::Brush(QWidget& widget) : QPainter(&widget) {
    setRenderHint(Antialiasing);
    setFont(widget.font());
}

QColor textColor(const QWidget& widget) { return widget.isEnabled() ? colors().text : colors().disabledText; }

void drawShape(QPainter& painter, const QRectF& shape, double radius, const QColor& fill, const QColor& edge,
               double width) {
    painter.setBrush(fill);
    painter.setPen(width > 0 ? QPen(edge, width) : QPen(Qt::NoPen));
    const double inset = width / 2;
    painter.drawRoundedRect(shape.adjusted(inset, inset, -inset, -inset), radius, radius);
}

QString dash() { return QStringLiteral("–"); }

void drawUnread(QPainter& painter, const QRectF& shape, double radius) {
    QPainterPath path;
    path.addRoundedRect(shape.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    drawUnread(painter, path);
}

void drawUnread(QPainter& painter, const QPainterPath& shape) {
    QPen edge(colors().outline, 1.0);
    edge.setDashPattern({3, 3});
    painter.setBrush(Qt::NoBrush);
    painter.setPen(edge);
    painter.drawPath(shape);
}

namespace {

/// A disc for what is on its way.
void drawDisc(QPainter& painter, const QPointF& centre) {
    painter.setPen(QPen(colors().panel, 1.0));
    painter.setBrush(colors().waiting);
    painter.drawEllipse(centre, 4.5, 4.5);
}

/// A warning sign for what got lost.
void drawWarning(QPainter& painter, const QPointF& centre) {
    constexpr double Reach = 6.5;
    const QPointF sign[] = {centre + QPointF(0, -Reach), centre + QPointF(Reach, Reach * 0.75),
                            centre + QPointF(-Reach, Reach * 0.75)};
    painter.setPen(QPen(colors().panel, 1.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(colors().alarm);
    painter.drawPolygon(sign, 3);
    painter.fillRect(QRectF(centre.x() - 0.75, centre.y() - 3, 1.5, 4), colors().panel);
    painter.fillRect(QRectF(centre.x() - 0.75, centre.y() + 2, 1.5, 1.5), colors().panel);
}

/// A filled corner for what was changed and confirmed since the page was opened.
void drawChanged(QPainter& painter, const QPointF& corner) {
    constexpr double Side = 8;
    const QPointF triangle[] = {corner + QPointF(1, 1), corner + QPointF(Side, 1), corner + QPointF(1, Side)};
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors().accent);
    painter.drawPolygon(triangle, 3);
}

}  // namespace

void drawStanding(QPainter& painter, const ViewBase& view, const QRectF& shape, double radius) {
    switch (view.standing()) {
        case Standing::Waiting:
            drawShape(painter, shape, radius, Qt::transparent, colors().waiting, 2.0);
            return drawDisc(painter, shape.topRight() + QPointF(-2, 2));
        case Standing::NotTaken:
            drawShape(painter, shape, radius, Qt::transparent, colors().alarm, 2.0);
            return drawWarning(painter, shape.topRight() + QPointF(-4, 3));
        case Standing::Old:
            drawUnread(painter, shape, radius);
            break;
        default:
            break;
    }
    if (view.changed()) drawChanged(painter, shape.topLeft());
}

QColor standingColor(const ViewBase& view) {
    switch (view.standing()) {
        case Standing::Waiting:
            return readableText(colors().waiting);
        case Standing::NotTaken:
            return readableText(colors().alarm);
        case Standing::Unread:
        case Standing::Old:
            return colors().quietText;
        case Standing::Confirmed:
            break;
    }
    return textColor(view.widget());
}

QFont oldFont(const QFont& font) {
    QFont italic = font;
    italic.setItalic(true);
    return italic;
}

void drawMarks(QPainter& painter, const ViewBase& view, const QRectF& shape, double radius) {
    if (view.widget().hasFocus())
        drawShape(painter, shape.adjusted(-3, -3, 3, 3), radius + 3, Qt::transparent, colors().accent, 2.0);
    drawStanding(painter, view, shape, radius);
}

void drawArrow(QPainter& painter, const QRectF& place, Arrow direction, const QColor& color) {
    const double reach = std::clamp(std::min(place.width(), place.height()) / 6.0, 3.0, 5.0);
    painter.save();
    painter.translate(place.center());
    constexpr int Turn[] = {180, 0, 270, 90};
    painter.rotate(Turn[static_cast<int>(direction)]);
    painter.setPen(QPen(color, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    const QPointF line[] = {{-reach / 2, -reach}, {reach / 2, 0}, {-reach / 2, reach}};
    painter.drawPolyline(line, 3);
    painter.restore();
}

namespace {

bool isFigure(QChar letter) { return letter >= u'0' && letter <= u'9'; }

int figureWidth(const QFontMetrics& metrics) {
    int widest = 0;
    for (char16_t figure = u'0'; figure <= u'9'; ++figure)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(figure)));
    return widest;
}

}  // namespace

int figuresWidth(const QFontMetrics& metrics, const QString& text) {
    const int figure = figureWidth(metrics);
    int width = 0;
    for (const QChar letter : text) width += isFigure(letter) ? figure : metrics.horizontalAdvance(letter);
    return width;
}

void drawFigures(QPainter& painter, const QRectF& place, const QString& text) {
    const QFontMetrics metrics = painter.fontMetrics();
    const int figure = figureWidth(metrics);
    const double base = place.center().y() + (metrics.ascent() - metrics.descent()) / 2.0;
    double x = place.right() - figuresWidth(metrics, text);
    for (const QChar letter : text) {
        const int own = metrics.horizontalAdvance(letter);
        const int room = isFigure(letter) ? figure : own;
        painter.drawText(QPointF(x + (room - own) / 2.0, base), letter);
        x += room;
    }
}

}  // namespace kestrel::qt
