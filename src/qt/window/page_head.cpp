// The thin line under a page's title.
#include "qt/window/page_head.h"

#include <QPainter>

#include "platform/window.h"
#include "qt/style/palette.h"

namespace kestrel::qt {

PageHead::PageHead(QWidget& page) : QWidget(&page) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void PageHead::show(int come, bool isOld) {
    if (come == come_ && isOld == isOld_) return;
    come_ = come;
    isOld_ = isOld;
    setVisible(isOld || come < Window::AllCame);
    raise();
    update();
}

void PageHead::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), colors().line);
    const int width = isOld_ ? this->width() : this->width() * come_ / Window::AllCame;
    painter.fillRect(0, 0, width, height(), isOld_ ? colors().waiting : colors().accent);
}

}  // namespace kestrel::qt
