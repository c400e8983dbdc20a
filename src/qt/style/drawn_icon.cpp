// Icons that are drawn when they are shown.
#include "qt/style/drawn_icon.h"

#include <QIconEngine>
#include <QPainter>
#include <algorithm>
#include <utility>

namespace kestrel::qt {

namespace {

class DrawnIcon : public QIconEngine {
  public:
    explicit DrawnIcon(std::function<void(QPainter&)> draw) : draw_(std::move(draw)) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        const double side = std::min(place.width(), place.height());
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(QRectF(place).center());
        painter->scale(side, side);
        draw_(*painter);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return result;
    }
    QIconEngine* clone() const override { return new DrawnIcon(*this); }

  private:
    std::function<void(QPainter&)> draw_;
};

}  // namespace

QIcon drawnIcon(std::function<void(QPainter&)> draw) { return QIcon(new DrawnIcon(std::move(draw))); }

}  // namespace kestrel::qt
