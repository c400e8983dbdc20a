// The lamp pictures of the status bar.
// See lamp_pictures.h.
#include "platform/qt/lamp_pictures.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>

#include "platform/qt/drawing.h"

namespace kestrel::qt {

namespace {

constexpr int Lamps = 3;
enum Lamp { Send, Receive, Error };

/// An arrow up for sending, one down for receiving, an exclamation mark for trouble; in a square of side 1 round 0.
QPainterPath markOf(Lamp lamp) {
    QPainterPath mark;
    if (lamp == Error) {
        mark.addRoundedRect(-0.06, -0.27, 0.12, 0.32, 0.06, 0.06);
        mark.addEllipse(QPointF(0, 0.2), 0.075, 0.075);
        return mark;
    }
    const double up = lamp == Send ? -1 : 1;
    mark.moveTo(0, up * 0.28);
    mark.lineTo(-0.24, up * 0.0);
    mark.lineTo(-0.08, up * 0.0);
    mark.lineTo(-0.08, up * -0.26);
    mark.lineTo(0.08, up * -0.26);
    mark.lineTo(0.08, up * 0.0);
    mark.lineTo(0.24, up * 0.0);
    mark.closeSubpath();
    return mark;
}

class LampEngine : public QIconEngine {
  public:
    LampEngine(Lamp lamp, bool lit) : lamp_(lamp), lit_(lit) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const double side = std::min(rect.width(), rect.height());
        QRectF disc(0, 0, side - 1, side - 1);
        disc.moveCenter(QRectF(rect).center());
        const QColor light = lamp_ == Error ? colors().alarm : colors().lit;
        drawShape(*painter, disc, disc.width() / 2, lit_ ? light : Qt::transparent, lit_ ? light : colors().outline,
                  std::max(1.5, side / 12));
        painter->translate(disc.center());
        painter->scale(side, side);
        painter->fillPath(markOf(lamp_), lit_ ? (lamp_ == Error ? colors().field : colors().onLit) : colors().outline);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return result;
    }
    QIconEngine* clone() const override { return new LampEngine(*this); }

  private:
    Lamp lamp_;
    bool lit_;
};

}  // namespace

QIcon lampPicture(int number) {
    if (number < 1 || number > 2 * Lamps) return {};
    return QIcon(new LampEngine(static_cast<Lamp>((number - 1) % Lamps), number > Lamps));
}

}  // namespace kestrel::qt
