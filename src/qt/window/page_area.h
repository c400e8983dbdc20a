// The area of the frame window in which pages stand, with its painted background.
// Keeps every page where the user can reach its title bar.
#pragma once

#include <QMdiArea>
#include <QPixmap>
#include <QSvgRenderer>
#include <memory>

namespace kestrel::qt {

class PageArea : public QMdiArea {
  public:
    /// Without a picture the background is plain.
    explicit PageArea(std::unique_ptr<QSvgRenderer> picture);

    /// The nearest place to `wanted` at which a page of this size has its title bar in the area.
    QPoint reachable(QPoint wanted, QSize size) const;
    /// The place nearest to its own at which this page covers least of the others: beside them where there is room.
    QPoint besideOthers(const QMdiSubWindow& page) const;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    const QPixmap& background();

    std::unique_ptr<QSvgRenderer> picture_;
    QPixmap painted_;
};

}  // namespace kestrel::qt
