// The thin line under a page's title: it runs while the page's first values come, and stands whole in the colour of
// what is unconfirmed while they are old.
#pragma once

#include <QWidget>

namespace kestrel::qt {

class PageHead : public QWidget {
  public:
    /// Lies over the upper edge of the page, which gives it its width.
    explicit PageHead(QWidget& page);

    static constexpr int Height = 3;
    /// `come`: the part of the first values that has come, in hundredths.
    void show(int come, bool isOld);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    int come_ = 0;
    bool isOld_ = false;
};

}  // namespace kestrel::qt
