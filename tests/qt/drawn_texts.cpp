// A paint device that keeps the texts and forgets all else.
#include "drawn_texts.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPaintEngine>
#include <vector>

namespace kestrel::qt::testing {

namespace {

struct DrawnText {
    QString text;
    QRectF place;  ///< in the widget's own pixels
    QRectF clip;   ///< beyond which nothing of it is seen; empty: nowhere
};

class TextEngine : public QPaintEngine {
  public:
    TextEngine() : QPaintEngine(AllFeatures) {}
    bool begin(QPaintDevice* /*device*/) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState& now) override {
        if (now.state() & DirtyTransform) transform_ = now.transform();
    }
    void drawPixmap(const QRectF& /*to*/, const QPixmap& /*pixmap*/, const QRectF& /*from*/) override {}
    void drawPath(const QPainterPath& /*path*/) override {}
    void drawPolygon(const QPointF* /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override {}
    void drawTextItem(const QPointF& at, const QTextItem& item) override {
        const QRectF box(at.x(), at.y() - item.ascent(), item.width(), item.ascent() + item.descent());
        if (!item.text().trimmed().isEmpty())
            texts.push_back({item.text(), transform_.mapRect(box), transform_.mapRect(painter()->clipBoundingRect())});
    }

    std::vector<DrawnText> texts;

  private:
    QTransform transform_;
};

/// A picture on which nothing is ever painted.
class TextDevice : public QImage {
  public:
    explicit TextDevice(const QWidget& like) : QImage(like.size(), Format_RGB32) {}
    QPaintEngine* paintEngine() const override { return &engine_; }
    const std::vector<DrawnText>& texts() const { return engine_.texts; }

  private:
    mutable TextEngine engine_;
};

}  // namespace

void expectTextsWhole(QWidget& widget) {
    TextDevice device(widget);
    widget.render(&device, QPoint(), QRegion(), QWidget::RenderFlags());
    const std::vector<DrawnText>& texts = device.texts();
    const QRectF room = QRectF(widget.rect()).adjusted(-0.5, -0.5, 0.5, 0.5);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const QString& text = texts[i].text;
        EXPECT_FALSE(text.contains(QChar(0x2026))) << "shortened: " << text.toStdString();
        EXPECT_TRUE(room.contains(texts[i].place)) << "over the edge: " << text.toStdString();
        const QRectF clip = texts[i].clip.adjusted(-1, -1, 1, 1);
        EXPECT_TRUE(texts[i].clip.isEmpty() || clip.contains(texts[i].place)) << "cut off: " << text.toStdString();
        for (std::size_t k = 0; k < i; ++k)
            EXPECT_FALSE(texts[k].place.adjusted(1, 1, -1, -1).intersects(texts[i].place))
                << "one over the other: " << text.toStdString() << ", " << texts[k].text.toStdString();
    }
}

}  // namespace kestrel::qt::testing
