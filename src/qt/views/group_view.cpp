// Shows a frame.
#include "qt/views/group_view.h"

#include <QVBoxLayout>
#include <algorithm>

#include "platform/window.h"
#include "qt/style/drawing.h"

namespace kestrel::qt {

namespace {

constexpr int Margin = 12;

}  // namespace

GroupView::GroupView(Frame& frame) : View(frame) {}

QFont GroupView::titleFont() const {
    QFont font = this->font();
    font.setWeight(QFont::DemiBold);
    return font;
}

int GroupView::titleHeight() const { return QFontMetrics(titleFont()).height(); }

void GroupView::setContents(QWidget* contents, bool grows) {
    auto* box = new QVBoxLayout(this);
    const int above = title_.isEmpty() ? GridStep : GridStep + titleHeight() + 4;
    box->setContentsMargins(Margin, above, Margin, GridStep);
    box->addWidget(contents, 0, grows ? Qt::Alignment() : Qt::AlignTop);
}

void GroupView::showState() {
    const QString title = toQt(model().Caption);
    if (title == title_) return;
    title_ = title;
    if (layout()) {
        QMargins margins = layout()->contentsMargins();
        margins.setTop(title_.isEmpty() ? GridStep : GridStep + titleHeight() + 4);
        layout()->setContentsMargins(margins);
    }
    updateGeometry();
    update();
    QAccessibleEvent event(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

QSize GroupView::minimumSizeHint() const {
    const QSize contents = layout() ? layout()->totalMinimumSize() : QSize();
    const int height = model().Height / TwipsPerPixel;
    return contents.expandedTo({QFontMetrics(titleFont()).horizontalAdvance(title_) + 2 * Margin, height});
}

void GroupView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    drawShape(brush, rect(), CornerRadius + 2, colors().panel, colors().line);
    if (title_.isEmpty()) return;
    brush.setFont(titleFont());
    brush.setPen(textColor(*this));
    brush.drawText(QRect(Margin, GridStep, width() - 2 * Margin, titleHeight()),
                   static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), title_);
}

QString GroupView::spokenName() const { return title_; }

}  // namespace kestrel::qt
