// How groups are laid out and drawn.
#include "qt/style/group_box_style.h"

#include <QPainter>

#include "qt/style/drawing.h"

namespace kestrel::qt {

namespace {

constexpr int Margin = 12;
constexpr int UnderTitle = 4;

QFont titleFont(QFont font) {
    font.setWeight(QFont::DemiBold);
    return font;
}

}  // namespace

int groupBoxWidth(const QFont& font, const QString& title) {
    return QFontMetrics(titleFont(font)).size(Qt::TextShowMnemonic, title).width() + 2 * Margin;
}

QRect groupBoxPart(const QStyleOptionGroupBox& box, QStyle::SubControl part) {
    const QRect inside = box.rect.adjusted(Margin, GridStep, -Margin, -GridStep);
    const int title = box.text.isEmpty() ? 0 : box.fontMetrics.height();
    switch (part) {
        case QStyle::SC_GroupBoxContents:
            return inside.adjusted(0, title == 0 ? 0 : title + UnderTitle, 0, 0);
        case QStyle::SC_GroupBoxLabel:
            return {inside.left(), inside.top(), inside.width(), title};
        default:
            return box.rect;
    }
}

void drawGroupBox(const QStyleOptionGroupBox& box, QPainter& painter) {
    drawShape(painter, box.rect, CornerRadius + 2, colors().panel, colors().line);
    painter.setFont(titleFont(painter.font()));
    painter.setPen(box.state & QStyle::State_Enabled ? colors().text : colors().disabledText);
    painter.drawText(groupBoxPart(box, QStyle::SC_GroupBoxLabel),
                     static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic), box.text);
}

}  // namespace kestrel::qt
