// The lamp pictures of the status bar.
// See lamp_pictures.h.
#include "platform/qt/lamp_pictures.h"

#include <QPainter>
#include <QPixmap>

namespace kestrel::qt {

namespace {
constexpr int LampKinds = 3;
constexpr int Side = 32;
}  // namespace

QIcon lampPicture(int number) {
    QPixmap picture(Side, Side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::gray, 2));
    if (number > LampKinds) painter.setBrush(number == 2 * LampKinds ? Qt::red : Qt::green);
    painter.drawEllipse(4, 4, Side - 8, Side - 8);
    return QIcon(picture);
}

}  // namespace kestrel::qt
