// Shows a frame.
#include "qt/views/group_view.h"

#include <QVBoxLayout>

#include "platform/window.h"
#include "qt/style/group_box_style.h"

namespace kestrel::qt {

void GroupView::setContents(QWidget* contents, bool grows) {
    auto* box = new QVBoxLayout(this);
    box->setContentsMargins(0, 0, 0, 0);
    box->addWidget(contents, 0, grows ? Qt::Alignment() : Qt::AlignTop);
}

void GroupView::showState() {
    const QString caption = toQt(model().Caption).replace(u'&', QStringLiteral("&&"));
    if (caption != title()) setTitle(caption);
}

QSize GroupView::minimumSizeHint() const {
    return QGroupBox::minimumSizeHint().expandedTo({groupBoxWidth(font(), title()), model().Height / TwipsPerPixel});
}

}  // namespace kestrel::qt
