// Shows a drawing, and controls that stand on the places of its named elements and are scaled with it.
// A lamp whose place has a name in the drawing carries its own there; while it is lit, what the drawing has for that is
// shown: its path, its device. Controls whose place is not in the drawing stand below one another at its left edge, so
// that none is lost.
#pragma once

#include <QPixmap>
#include <QSvgRenderer>
#include <memory>
#include <vector>

#include "platform/basic_controls.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class CanvasView : public View<Picture> {
  public:
    explicit CanvasView(Picture& picture);

    /// Puts a widget on the element of the drawing with this name.
    void place(QWidget* widget, const QString& element);

    QAccessible::Role spokenRole() const override { return QAccessible::Graphic; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    void renamed() override { update(); }

  protected:
    void showState() override {}
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

  private:
    struct Placed {
        QWidget* widget;
        QString element;
    };
    /// The part of the widget that the drawing takes.
    QRectF drawn() const;
    QRectF placeOf(const QString& element) const;
    void arrange();
    /// The drawing with what belongs to the lamps that are lit.
    void drawLit();
    void paintNames(QPainter& painter) const;

    QByteArray source_;
    std::unique_ptr<QSvgRenderer> drawing_;
    std::vector<Placed> placed_;
    QPixmap rendered_;
};

}  // namespace kestrel::qt
